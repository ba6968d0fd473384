// The report of a log: the company's introduction, details with lines for signing, chart, cumulative figures, the
// figures of its bands, its intervals, the parts that were chosen, the closing words, and where all of it comes from.
// It is laid out for a paper when it is made; what it says is in ReportTables.
#pragma once

#include "model/clsFile.h"
#include "model/clsLog.h"
#include "reports/IntervalPages.h"
#include "reports/PageFrame.h"
#include "reports/PagedDocument.h"
#include "reports/PlacedPage.h"
#include "reports/ReportParts.h"
#include "reports/ReportTables.h"
#include "views/HPDComparison.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrane {

enum class ReportForm { Default, Cumulative, CumulativeAndIntervals, CumulativeAndCriteria };

struct ReportSubject {
    const clsFile& file;
    const clsInsData& data;
    const clsLog& log;
    std::string Modification{}; // in what the log is not as it was measured; empty when it is
    bool ShowsLegend = true;    // of the chart
    bool ShowsNote = true;
    std::optional<HPDComparison> Comparison{}; // with a protector, for the part of that name
    const clsLog* Opened = nullptr;            // the log that log is a zoomed range of; null when log is the opened one
};

// Whether a form lists the intervals of a log. The default form lists them when the settings say so; a log without
// intervals has no list.
bool includesIntervals(const clsLog& log, ReportForm form);

// Says when the log in view shows other intervals than the opened log, or leaves some out of its figures; else empty.
std::string modificationOf(const clsLog& opened, const clsLog& inView);

inline bool isModified(const clsLog& opened, const clsLog& inView) {
    return !modificationOf(opened, inView).empty();
}

// How much of a text is printed.
struct TextLimits {
    std::size_t Paragraphs, LinesOfOne;
};

class Report : public PagedDocument {
public:
    // metrics must outlive the report and must be those of the device on which it is drawn.
    Report(const ReportSubject& subject, ReportForm form, const PageMetrics& metrics, const ReportParts& parts = {});

    const std::string& Title() const override { return title_; }

    std::size_t pageCount() const override;
    void drawPage(PageDevice& device, std::size_t page) override;

private:
    // Captions with texts beside them, which may take several lines.
    struct Block {
        std::string Heading; // may be empty
        std::vector<std::pair<std::string, std::vector<std::string>>> Lines;
        double Indent = 0; // of the texts
        double Height = 0;
    };

    void newPage();
    void place(double x, const std::string& text, const PageFont& font, PageAlign align = PageAlign::Left);
    void placeIntroduction(const ReportSubject& subject);
    void placeDetails(const std::vector<DetailLine>& lines);
    Block ownWords(const std::string& text) const;
    Block words(const std::string& text, const TextLimits& most) const;
    Block provenance(const ReportSubject& subject) const;
    void placeNote(const Session& session);
    void placeLast(const Block& block);
    void placeLines(const Block& block);
    void addParts(const ReportSubject& subject, const ReportParts& parts);
    std::size_t pagesOfParts() const;
    void drawPart(PageDevice& device, std::size_t page) const;
    void draw(PageDevice& device, const PlacedPage& page) const;
    double heightOf(const ReportTable& table) const;
    void placeChart(const ReportSubject& subject, double below, double last);
    double heightForPlot(double width, double height) const;
    void placeTable(const ReportTable& table);
    void placeCriteria(const clsLog& log);
    void placeCaptions(const ReportTable& table, const std::vector<double>& ends, double left);

    const PageMetrics& metrics_;
    const std::string title_;
    PageFrame frame_;
    const double line_;
    std::vector<PlacedPage> pages_;
    std::size_t pagesBeforeIntervals_ = 0; // of pages_; the others follow the intervals
    bool sharesLastPage_ = false;          // the first of the others is drawn on the last page of the intervals
    double top_ = 0;                       // of what is placed next
    double detailsTop_ = 0;
    double tableTop_ = 0;   // of the last table or of its last part
    double tableRight_ = 0; // 0 when there is no table on this page
    ChartOnPage chart_;
    std::optional<IntervalPages> intervals_;
    std::vector<std::unique_ptr<PagedDocument>> parts_; // behind the intervals
};

} // namespace kestrane
