#include "printing/PdfFile.h"

#include "platform/AtomicFile.h"
#include "platform/Calendar.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"
#include "printing/QtPage.h"

#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cerrno>
#include <exception>

namespace kestrane {

namespace {

constexpr std::size_t kTail = 1024; // bytes at the end of the file, which contain the trailer

struct Cancelled {};

// Passes on what the toolkit writes, and keeps an error until the toolkit has finished.
class SinkDevice : public QIODevice {
public:
    explicit SinkDevice(const FileSink& sink) : sink_(sink) { open(WriteOnly); }

    bool isSequential() const override { return true; }

    bool hasFailed() const { return error_ != nullptr; }

    void raiseError() const {
        if (error_) std::rethrow_exception(error_);
    }

    std::size_t written() const { return written_; }

    const std::string& tail() const { return tail_; }

protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char* data, qint64 size) override {
        if (error_) return -1;
        const std::string_view bytes(data, static_cast<std::size_t>(size));
        try {
            sink_(bytes);
        } catch (...) {
            error_ = std::current_exception();
            return -1;
        }
        written_ += bytes.size();
        tail_ += bytes.substr(bytes.size() - std::min(bytes.size(), kTail));
        if (tail_.size() > kTail) tail_.erase(0, tail_.size() - kTail);
        return size;
    }

private:
    const FileSink& sink_;
    std::exception_ptr error_;
    std::size_t written_ = 0;
    std::string tail_;
};

// A text in PDF's notation: UTF-16, high byte first, as hexadecimal digits.
std::string pdfText(const std::string& text) {
    std::string digits = "<FEFF";
    constexpr const char* kDigits = "0123456789ABCDEF";
    for (const QChar c : QString::fromStdString(text)) {
        for (int shift = 12; shift >= 0; shift -= 4)
            digits += kDigits[c.unicode() >> shift & 0xF];
    }
    return digits + ">";
}

// The reference or number behind a word in the trailer; empty when the word is not there.
std::string trailerEntry(const std::string& trailer, const std::string& word) {
    const std::size_t at = trailer.rfind(word);
    if (at == std::string::npos) return {};
    const std::size_t begin = trailer.find_first_not_of(" \n", at + word.size());
    const std::size_t end = trailer.find_first_of("/\n>", begin);
    return begin == std::string::npos || end == std::string::npos ? std::string() : trailer.substr(begin, end - begin);
}

std::string tenDigits(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(10 - std::min<std::size_t>(digits.size(), 10), '0') + digits;
}

// The toolkit writes no author. So the file's information is written again, in an update at the end of the file, as the
// PDF format allows.
std::string informationUpdate(const SinkDevice& file, const Session& session, const std::string& title) {
    const std::string& end = file.tail();
    const std::string root = trailerEntry(end, "/Root ");
    const std::string info = trailerEntry(end, "/Info ");
    const std::string size = trailerEntry(end, "/Size ");
    const std::string before = trailerEntry(end + "\n", "startxref");
    const std::string object = info.substr(0, info.find(' '));
    if (root.empty() || object.empty() || size.empty() || before.empty()) return {};
    const std::string author =
        session.Options.CompanyName.empty() ? session.brand.CompanyName : session.Options.CompanyName;
    const std::string program = pdfText(session.LoadText(Text::ProgramAndVersion));
    std::string update = "\n";
    const std::size_t objectAt = file.written() + update.size();
    update += object + " 0 obj\n<<\n/Title " + pdfText(title) + "\n/Author " + pdfText(author) + "\n/Creator " +
              program + "\n/Producer " + program +
              "\n/CreationDate (D:" + formatDate(session.clock.now(), "yyyymmddhhnnss") + ")\n>>\nendobj\n";
    const std::size_t tableAt = file.written() + update.size();
    return update + "xref\n" + object + " 1\n" + tenDigits(objectAt) + " 00000 n \ntrailer\n<<\n/Size " + size +
           "\n/Info " + info + "\n/Root " + root + "\n/Prev " + before + "\n>>\nstartxref\n" + std::to_string(tableAt) +
           "\n%%EOF\n";
}

void writeDocument(const Session& session, PagedDocument& document, const Paper& paper, const FileSink& sink,
                   const PageProgress& progress) {
    SinkDevice file(sink);
    bool isWhole = false;
    {
        QPdfWriter pdf(&file);
        pdf.setResolution(static_cast<int>(kPaperDots));
        pdf.setPageLayout(paper.layout());
        QPainter painter;
        if (!painter.begin(&pdf)) raiseSystemError(EIO);
        QtPage page(paper, session.locale, painter, 1, [&] { pdf.newPage(); });
        isWhole = drawPages(document, page, [&](std::size_t drawn, std::size_t pages) {
            return !file.hasFailed() && (!progress || progress(drawn, pages));
        });
    }
    file.raiseError();
    if (!isWhole) throw Cancelled();
    sink(informationUpdate(file, session, document.Title()));
}

} // namespace

bool writePdf(const Session& session, PagedDocument& document, const Paper& paper, const std::string& path,
              const PageProgress& progress) {
    try {
        writeFileAtomically(path,
                            [&](const FileSink& sink) { writeDocument(session, document, paper, sink, progress); });
        return true;
    } catch (const Cancelled&) {
        return false;
    }
}

} // namespace kestrane
