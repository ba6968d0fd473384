#include "reports/Report.h"

#include "model/Captions.h"
#include "model/Session.h"
#include "reports/PageText.h"
#include "reports/Provenance.h"
#include "views/HistoryTable.h"
#include "views/LogTabs.h"
#include "views/LogWarnings.h"
#include "views/TimeChart.h"

#include <algorithm>
#include <ranges>

namespace kestrane {

namespace {

constexpr double kChartHeight = 0.33; // as a part of the page's height
constexpr double kLeastChartHeight = 0.25;
constexpr double kChartHeightInLandscape = 0.66;
constexpr double kMiddleGap = 0.5;
constexpr double kRoomToSign = 0.8; // cm, above a dotted line
constexpr std::size_t kMostValueLines = 3;
constexpr double kRemarkLines = 1.25;
constexpr double kProvenanceHead = 1.5;         // lines
constexpr std::size_t kMostProvenanceLines = 8; // of one value
constexpr double kLeastPlotHeight = 5;          // cm
constexpr double kLeastForDetails = 16;         // cm, with the chart below them
constexpr double kLeastForDetailsInLandscape = 10;
constexpr TextLimits kOwnWords{100, 20}; // of the company
constexpr TextLimits kNote{10'000, 10'000};
constexpr double kCaptionLines = 3.5; // of a table: heading, captions, and the space around them

// The end of the title, or the title of a log without a name.
std::string kindOf(const clsLog& log) {
    const std::string kind = log.ModeText() + " " + log.session().LoadText(Text::ReportWord);
    return log.Name.empty() ? kind : " - " + kind;
}

// The right edge of each column of a table, measured from the left edge of the table.
std::vector<double> columnEnds(const ReportTable& table, const PageMetrics& metrics) {
    const double gap = metrics.textWidth("WW", kCaptionFont);
    std::vector<double> ends;
    double end = 0;
    for (std::size_t column = 0; column < table.Captions.size(); ++column) {
        double widest = metrics.textWidth(table.Captions[column], kCaptionFont);
        for (const std::vector<std::string>& row : table.Rows)
            widest = std::max(widest, metrics.textWidth(row[column], kBodyFont));
        const std::string_view least = column == 0 ? table.NameWidth : kLevelWidth;
        end += std::max(metrics.textWidth(least, kBodyFont), widest + gap);
        ends.push_back(end);
    }
    return ends;
}

// The levels of the log's bands, behind that of all of them; nothing when no band has one.
std::optional<ChartData> bandsOf(const clsLog& log) {
    if (!log.IsOctaveLog()) return std::nullopt;
    ChartChoice allBands;
    allBands.Choice.Parameter = eLeq;
    auto chart = chartOfTab(log, eTabCumulativeGraph, allBands);
    if (!chart) return std::nullopt;
    const std::vector<float>& levels = chart->Series.front().Values;
    const bool hasBands = levels.size() > 1 && !std::all_of(levels.begin() + 1, levels.end(), isNullValue);
    return hasBands ? std::move(chart) : std::nullopt;
}

// The chart of the rows; of a log without rows that of its bands or its cumulative figures, when there is one.
ChartData chartOf(const clsLog& log) {
    if (log.LogIntervals.Count() == 0) {
        if (auto bands = bandsOf(log)) return *std::move(bands);
        if (auto bars = chartOfTab(log, eTabCumulativeGraph, {})) return *std::move(bars);
    }
    return fullLogChart(&log, {});
}

} // namespace

bool includesIntervals(const clsLog& log, ReportForm form) {
    if (log.LogIntervals.Count() == 0 || form == ReportForm::Cumulative || form == ReportForm::CumulativeAndCriteria)
        return false;
    return form == ReportForm::CumulativeAndIntervals || log.session().Options.PrintIntervals;
}

std::string modificationOf(const clsLog& opened, const clsLog& inView) {
    const std::int64_t rows = inView.LogIntervals.Count();
    const auto words = [&](Text::Id text, std::int64_t part, std::int64_t whole) {
        return ReplaceText(ReplaceText(inView.session().LoadText(text), "^", std::to_string(part)), "*",
                           std::to_string(whole));
    };
    std::string text;
    if (rows != opened.LogIntervals.Count()) text = words(Text::ModifiedByZoom, rows, opened.LogIntervals.Count());
    if (const std::int64_t left = rows - inView.LogIntervals.IncludedCount(); left > 0)
        text += (text.empty() ? "" : "; ") + words(Text::ModifiedByExclusion, left, rows);
    return text;
}

Report::Report(const ReportSubject& subject, ReportForm form, const PageMetrics& metrics, const ReportParts& parts) :
    metrics_(metrics),
    title_(subject.log.Name + kindOf(subject.log)),
    frame_(subject.log.session(),
           {title_, subject.file.ShortenedFileName(), !subject.Modification.empty(), false, kindOf(subject.log)},
           metrics),
    line_(metrics.lineHeight(kBodyFont)) {
    const clsLog& log = subject.log;
    newPage();
    placeIntroduction(subject);
    placeDetails(detailLines(subject.data, log));
    const ReportTable figures = cumulativeTable(log);
    const Block closing = ownWords(log.session().Options.ReportClosing);
    const Block origin = provenance(subject);
    const double last = closing.Height + origin.Height;
    const bool isAllOnOnePage = !log.IsOctaveLog() && !includesIntervals(log, form) && parts.empty();
    placeChart(subject, heightOf(figures), isAllOnOnePage ? last + 2 * line_ : 0);
    placeTable(figures);
    if (log.IsOctaveLog()) placeTable(frequencyTable(log));
    placeNote(log.session());
    if (form == ReportForm::CumulativeAndCriteria || parts.contains(ReportPart::Criteria)) placeCriteria(log);
    pagesBeforeIntervals_ = pages_.size();
    if (includesIntervals(log, form)) intervals_.emplace(log, frame_.body(), metrics);
    addParts(subject, parts);
    if (intervals_ || !parts_.empty()) newPage(); // the last page of the intervals, or the one behind all of them
    sharesLastPage_ = intervals_ && parts_.empty() && intervals_->bottom() + line_ + last <= frame_.body().Bottom;
    if (sharesLastPage_) top_ = intervals_->bottom() + line_;
    placeLast(closing);
    placeLast(origin);
    if (!intervals_ && parts_.empty()) pagesBeforeIntervals_ = pages_.size();
    std::size_t before = pagesBeforeIntervals_ + (intervals_ ? intervals_->count() : 0);
    for (const auto& part : parts_) {
        part->placeWithin(before, pageCount());
        before += part->pageCount();
    }
}

void Report::newPage() {
    pages_.emplace_back();
    top_ = frame_.body().Top;
    tableRight_ = 0;
}

void Report::place(double x, const std::string& text, const PageFont& font, PageAlign align) {
    if (!text.empty()) pages_.back().Texts.push_back({x, top_, text, font, align});
}

void Report::placeDetails(const std::vector<DetailLine>& lines) {
    const PageArea& body = frame_.body();
    double widest = 0;
    for (const DetailLine& line : lines)
        widest = std::max(widest, metrics_.textWidth(line.Caption, kBodyFont));
    const double left = body.Left + widest + metrics_.textWidth("X", kBodyFont);
    const double right = metrics_.isLandscape() ? metrics_.width() / 2 - kMiddleGap / 2 : body.Right;
    double above = top_; // where the last text ends
    for (const DetailLine& line : lines) {
        if (line.HasSpaceAbove && !metrics_.isLandscape()) top_ += line_;
        if (line.IsToSign) top_ = std::max(top_, above + kRoomToSign);
        place(body.Left, line.Caption, kBodyFont);
        for (const std::string& text :
             wrappedText(metrics_, printableText(line.Value), right - left, kBodyFont, kMostValueLines)) {
            place(left, text, kBodyFont);
            top_ += line_;
        }
        if (!line.Value.empty()) above = top_;
    }
    top_ += line_;
}

// What is modified stands in front of everything, then the company's own words. The details go to the next page when
// these leave too little room.
void Report::placeIntroduction(const ReportSubject& subject) {
    const Session& session = subject.log.session();
    if (!subject.Modification.empty()) {
        const std::string words = captioned(session, session.LoadText(Text::ModifiedReport), subject.Modification);
        placeLines(ownWords(withReason(session, words, subject.log.CutReason)));
    }
    placeLines(ownWords(logWarnings(subject.log)));
    placeLines(ownWords(session.Options.ReportIntroduction));
    const double least = metrics_.isLandscape() ? kLeastForDetailsInLandscape : kLeastForDetails;
    if (top_ + least > frame_.body().Bottom) newPage();
    detailsTop_ = top_;
}

// Paragraphs over the width of the page, with a blank line behind the last.
Report::Block Report::ownWords(const std::string& text) const {
    return words(text, kOwnWords);
}

Report::Block Report::words(const std::string& text, const TextLimits& most) const {
    Block block;
    for (const std::string& paragraph : paragraphsOf(text, most.Paragraphs)) {
        block.Lines.emplace_back(std::string(),
                                 wrappedText(metrics_, paragraph, frame_.body().width(), kBodyFont, most.LinesOfOne));
        block.Height += static_cast<double>(block.Lines.back().second.size()) * line_;
    }
    if (block.Lines.empty()) return block;
    block.Lines.emplace_back(std::string(), std::vector<std::string>(1));
    block.Height += line_;
    return block;
}

Report::Block Report::provenance(const ReportSubject& subject) const {
    const PageArea& body = frame_.body();
    Block block{subject.log.session().LoadText(Text::Provenance), {}, 0, kProvenanceHead * line_};
    const std::vector<DetailLine> lines = provenanceLines(subject.file, subject.data, subject.log);
    for (const DetailLine& line : lines)
        block.Indent = std::max(block.Indent, metrics_.textWidth(line.Caption + "X", kBodyFont));
    for (const DetailLine& line : lines) {
        block.Lines.emplace_back(line.Caption,
                                 wrappedText(metrics_, printableText(line.Value), body.width() - block.Indent,
                                             kBodyFont, kMostProvenanceLines));
        block.Height += static_cast<double>(block.Lines.back().second.size()) * line_;
    }
    return block;
}

// A note that the chart shows in part only, or that has no chart, stands below the figures, whole.
void Report::placeNote(const Session& session) {
    if (!chart_.HasFootnote || chart_.Data->Footnote.empty()) return;
    const auto page = std::ranges::find_if(pages_, [](const PlacedPage& each) { return each.Chart.has_value(); });
    if (page != pages_.end() && !metrics_.cutsNote(chart_, page->Chart->Width, page->Chart->Height)) return;
    Block note = words(chart_.Data->Footnote, kNote);
    note.Heading = session.LoadText(Text::StepNote);
    note.Height += kProvenanceHead * line_;
    placeLast(note);
    tableRight_ = 0;
}

// Places a block below everything on the page when there is room for it, else on the next page.
void Report::placeLast(const Block& block) {
    if (block.Lines.empty()) return;
    const PageArea& body = frame_.body();
    for (const PlacedPage::Words& text : pages_.back().Texts)
        top_ = std::max(top_, text.Top + 2 * line_);
    if (top_ + block.Height > body.Bottom) newPage();
    if (!block.Heading.empty()) {
        place(body.Left, block.Heading, kCaptionFont);
        pages_.back().Rules.push_back({body.Left, top_ + 1.25 * line_, body.width()});
        top_ += kProvenanceHead * line_;
    }
    placeLines(block);
}

void Report::placeLines(const Block& block) {
    const PageArea& body = frame_.body();
    for (const auto& [caption, texts] : block.Lines) {
        if (top_ + line_ > body.Bottom) newPage();
        place(body.Left, caption, kBodyFont);
        for (const std::string& text : texts) {
            if (top_ + line_ > body.Bottom) newPage();
            place(body.Left + block.Indent, text, kBodyFont);
            top_ += line_;
        }
    }
}

double Report::heightOf(const ReportTable& table) const {
    const double lines = kCaptionLines + (table.Remark.empty() ? 0 : kRemarkLines);
    return (lines + static_cast<double>(table.Rows.size())) * line_;
}

// Places the chart beside the details in landscape, else below them, as high as leaves room on the page for a table of
// the height below and, where the chart does not get too low, for what comes last.
void Report::placeChart(const ReportSubject& subject, double below, double last) {
    chart_ = {std::make_shared<ChartData>(chartOf(subject.log)), subject.ShowsLegend, subject.ShowsNote, {}};
    if (chart_.Data->RowCount == 0) return; // there is nothing to draw
    const PageArea& body = frame_.body();
    if (metrics_.isLandscape()) {
        const double left = metrics_.width() / 2 + kMiddleGap / 2;
        const double width = body.Right - left;
        const double height = std::min(kChartHeightInLandscape * metrics_.height(), body.Bottom - detailsTop_);
        pages_.back().Chart = {left, detailsTop_, width,
                               std::min(heightForPlot(width, height), body.Bottom - detailsTop_)};
        return;
    }
    const double least = kLeastChartHeight * metrics_.height();
    const double room = body.Bottom - top_ - 2 * line_ - below;
    const auto heightIn = [&](double space) {
        return heightForPlot(body.width(), std::min({kChartHeight * metrics_.height(), space, body.height()}));
    };
    double height = heightIn(room - last >= least ? room - last : std::max(room, least));
    const bool isTableBehind = top_ + height + line_ + below > body.Bottom; // on the next page
    if (isTableBehind) height = std::max(height, heightIn(body.Bottom - top_));
    if (top_ + height > body.Bottom) newPage();
    pages_.back().Chart = {body.Left, top_, body.width(), height};
    top_ += height + line_;
}

// The height of a box, or more where its plot would be too low: a legend with many entries takes its own room.
double Report::heightForPlot(double width, double height) const {
    const double missing = kLeastPlotHeight - metrics_.plotHeight(chart_, width, height);
    return missing <= 0 ? height : std::min(height + missing, frame_.body().height());
}

// Places a table. It is kept in one piece when there is room for it: below the last one (in landscape never), beside
// it, or on the next page. A table longer than a page continues beside itself and then on the next page.
void Report::placeTable(const ReportTable& table) {
    const PageArea& body = frame_.body();
    const std::vector<double> ends = columnEnds(table, metrics_);
    const double width = std::max(
        {ends.back(), metrics_.textWidth(table.Heading, kCaptionFont), metrics_.textWidth(table.Remark, kCaptionFont)});
    const double height = heightOf(table);
    double left = body.Left;
    const auto hasRoomBeside = [&] { return tableRight_ > 0 && tableRight_ + kMiddleGap + width <= body.Right; };
    const auto goBeside = [&] {
        left = tableRight_ + kMiddleGap;
        top_ = tableTop_;
    };
    const auto begin = [&] {
        tableTop_ = top_;
        tableRight_ = left + width;
        placeCaptions(table, ends, left);
    };
    const bool isNeverBelow = metrics_.isLandscape() && top_ > body.Top;
    if (isNeverBelow || top_ + height > body.Bottom) {
        if (hasRoomBeside() && tableTop_ + height <= body.Bottom) {
            goBeside();
        } else if (isNeverBelow || top_ + std::min(height, body.height()) > body.Bottom) {
            newPage();
        }
    }
    begin();
    for (const std::vector<std::string>& row : table.Rows) {
        if (top_ + line_ > body.Bottom) {
            if (hasRoomBeside()) {
                goBeside();
            } else {
                newPage();
                left = body.Left;
            }
            begin();
        }
        place(left, row.front(), kBodyFont);
        for (std::size_t column = 1; column < row.size(); ++column)
            place(left + ends[column], row[column], kBodyFont, PageAlign::Right);
        top_ += line_;
    }
    top_ += line_;
}

void Report::placeCaptions(const ReportTable& table, const std::vector<double>& ends, double left) {
    place(left, table.Heading, kCaptionFont);
    if (!table.Remark.empty()) {
        top_ += kRemarkLines * line_;
        place(left, table.Remark, kCaptionFont);
    }
    top_ += 2 * line_;
    place(left, table.Captions.front(), kCaptionFont);
    for (std::size_t column = 1; column < table.Captions.size(); ++column)
        place(left + ends[column], table.Captions[column], kCaptionFont, PageAlign::Right);
    top_ += 1.25 * line_;
    pages_.back().Rules.push_back({left, top_, ends.back()});
    top_ += 0.25 * line_;
}

// The criteria have a page of their own when there is a level to judge by.
void Report::placeCriteria(const clsLog& log) {
    const ReportTable table = criteriaReportTable(log);
    if (table.Rows.empty()) return;
    newPage();
    placeTable(table);
}

void Report::addParts(const ReportSubject& subject, const ReportParts& parts) {
    for (const ReportPartRow& row : reportPartRows()) {
        if (!parts.contains(row.Part) || row.Pages == nullptr || !row.IsOf(subject)) continue;
        if (auto pages = row.Pages(subject, metrics_)) parts_.push_back(std::move(pages));
    }
}

std::size_t Report::pagesOfParts() const {
    std::size_t pages = 0;
    for (const auto& part : parts_)
        pages += part->pageCount();
    return pages;
}

std::size_t Report::pageCount() const {
    return pages_.size() + (intervals_ ? intervals_->count() : 0) + pagesOfParts() - (sharesLastPage_ ? 1 : 0);
}

void Report::drawPart(PageDevice& device, std::size_t page) const {
    for (const auto& part : parts_) {
        if (page < part->pageCount()) return part->drawPage(device, page);
        page -= part->pageCount();
    }
}

void Report::drawPage(PageDevice& device, std::size_t page) {
    const std::size_t afterIntervals = pagesBeforeIntervals_ + (intervals_ ? intervals_->count() : 0);
    const std::size_t afterParts = afterIntervals + pagesOfParts();
    if (page >= afterIntervals && page < afterParts) return drawPart(device, page - afterIntervals);
    frame_.drawHead(device);
    const std::size_t resumed = afterParts - (sharesLastPage_ ? 1 : 0); // where pages_ goes on
    if (page >= pagesBeforeIntervals_ && page < afterIntervals) intervals_->draw(device, page - pagesBeforeIntervals_);
    if (page < pagesBeforeIntervals_) {
        draw(device, pages_[page]);
    } else if (page >= resumed) {
        draw(device, pages_[pagesBeforeIntervals_ + page - resumed]);
    }
    frame_.drawFoot(device, page, pageCount());
}

void Report::draw(PageDevice& device, const PlacedPage& page) const {
    page.drawWords(device);
    if (page.Chart) device.chart(chart_, *page.Chart);
}

} // namespace kestrane
