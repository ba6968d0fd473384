// The report of an exposure assessment: each group has pages of its own, with room to sign at the end. It is laid out
// for a paper when it is made; its words are in AssessmentTables.
#pragma once

#include "reports/AssessmentTables.h"
#include "reports/PageFrame.h"
#include "reports/PagedDocument.h"
#include "reports/PlacedPage.h"

#include <string>
#include <vector>

namespace kestrane {

class AssessmentReport : public PagedDocument {
public:
    // metrics must outlive the report, and be those of the device that it is drawn on.
    AssessmentReport(const AssessmentSubject& subject, const PageMetrics& metrics);

    const std::string& Title() const override { return title_; }

    std::size_t pageCount() const override { return pages_.size(); }

    void drawPage(PageDevice& device, std::size_t page) override;

private:
    void newPage();
    void makeRoom(double height); // on the next page where there is none
    void place(double x, const std::string& text, const PageFont& font);
    void placeOwnWords(const std::string& text);
    void placeBlock(const ReportBlock& block);
    void placeHeading(const std::string& text);
    void placeLines(const ReportBlock& block);
    void placeTable(const ReportBlock& block);
    void placeCaptions(const ReportBlock& block, const std::vector<double>& widths);
    std::vector<double> widthsOf(const ReportBlock& block) const;
    void placeSign(const ReportBlock& block);

    const PageMetrics& metrics_;
    const std::string title_;
    PageFrame frame_;
    const double line_;
    std::vector<PlacedPage> pages_;
    double top_ = 0; // of what is placed next
};

} // namespace kestrane
