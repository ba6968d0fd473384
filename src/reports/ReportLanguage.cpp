#include "reports/ReportLanguage.h"

#include "model/Speaking.h"

#include <utility>

namespace kestrane {

namespace {

class TranslatedDocument : public PagedDocument {
public:
    TranslatedDocument(Session& session, std::unique_ptr<PagedDocument> document) :
        session_(session), document_(std::move(document)), language_(session.texts.Shown().Code) {}

    const std::string& Title() const override { return document_->Title(); }

    std::string Language() const override { return language_; }

    std::size_t pageCount() const override { return document_->pageCount(); }

    void drawPage(PageDevice& device, std::size_t page) override {
        const Speaking language = inLanguageOfReports(session_);
        document_->drawPage(device, page);
    }

private:
    Session& session_;
    const std::unique_ptr<PagedDocument> document_;
    const std::string language_;
};

} // namespace

std::unique_ptr<PagedDocument> inReportLanguage(Session& session,
                                                const std::function<std::unique_ptr<PagedDocument>()>& layOut) {
    const Speaking language = inLanguageOfReports(session);
    return std::make_unique<TranslatedDocument>(session, layOut());
}

} // namespace kestrane
