#include "reports/AssessmentReport.h"

#include "reports/PageText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::size_t kMostLines = 1000;     // of one text, so that a list of samples is there whole
constexpr std::size_t kMostParagraphs = 100; // of the company's own words
constexpr double kRoomToSign = 0.9;          // above a line to sign on
constexpr double kSignWidth = 8;
constexpr double kHeadingLines = 2.5; // a heading stays with so many lines of what it is of

std::string titleOf(const AssessmentSubject& subject) {
    const std::string kind = subject.session.LoadText(Text::AssessmentReportTitle);
    return subject.assessment.Title.empty() ? kind : subject.assessment.Title + " - " + kind;
}

std::string fileNameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

AssessmentReport::AssessmentReport(const AssessmentSubject& subject, const PageMetrics& metrics) :
    metrics_(metrics),
    title_(titleOf(subject)),
    frame_(subject.session, {title_, fileNameOf(subject.path), false}, metrics),
    line_(metrics.lineHeight(kBodyFont)) {
    for (std::size_t group = 0; group < subject.assessment.Groups.size(); ++group) {
        newPage();
        if (group == 0) placeOwnWords(subject.session.Options.ReportIntroduction);
        for (const ReportBlock& block : groupBlocks(subject, group))
            placeBlock(block);
    }
    if (pages_.empty()) {
        newPage();
        for (const ReportBlock& block : blocksWithoutGroup(subject))
            placeBlock(block);
    }
    if (!subject.session.Options.ReportClosing.empty()) top_ += line_;
    placeOwnWords(subject.session.Options.ReportClosing);
}

void AssessmentReport::newPage() {
    pages_.emplace_back();
    top_ = frame_.body().Top;
}

void AssessmentReport::makeRoom(double height) {
    if (top_ + height > frame_.body().Bottom && top_ > frame_.body().Top) newPage();
}

void AssessmentReport::place(double x, const std::string& text, const PageFont& font) {
    if (!text.empty()) pages_.back().Texts.push_back({x, top_, text, font});
}

// What the company says in all of its reports.
void AssessmentReport::placeOwnWords(const std::string& text) {
    ReportBlock block;
    for (std::string& paragraph : paragraphsOf(text, kMostParagraphs))
        block.Rows.push_back({{}, std::move(paragraph)});
    placeLines(block);
    if (!block.Rows.empty()) top_ += line_;
}

void AssessmentReport::placeBlock(const ReportBlock& block) {
    switch (block.Kind) {
    case ReportBlock::Kind::Heading:
        return placeHeading(block.Text);
    case ReportBlock::Kind::Lines:
        return placeLines(block);
    case ReportBlock::Kind::Table:
        return placeTable(block);
    case ReportBlock::Kind::Sign:
        return placeSign(block);
    }
}

void AssessmentReport::placeHeading(const std::string& text) {
    top_ += line_;
    makeRoom((1.25 + kHeadingLines) * line_);
    place(frame_.body().Left, text, kCaptionFont);
    top_ += 1.25 * line_;
}

// The captions are on the left, and their texts in a column beside the longest of them. A text without a caption begins
// at the margin.
void AssessmentReport::placeLines(const ReportBlock& block) {
    const PageArea& body = frame_.body();
    double widest = 0;
    for (const auto& row : block.Rows)
        widest = std::max(widest, metrics_.textWidth(row[0], kBodyFont));
    for (const auto& row : block.Rows) {
        const double left = row[0].empty() ? body.Left : body.Left + widest + metrics_.textWidth("XX", kBodyFont);
        const std::vector<std::string> lines =
            wrappedText(metrics_, printableText(row[1]), body.Right - left, kBodyFont, kMostLines);
        makeRoom(static_cast<double>(lines.size()) * line_);
        place(body.Left, row[0], kBodyFont);
        for (const std::string& line : lines) {
            makeRoom(line_);
            place(left, line, kBodyFont);
            top_ += line_;
        }
    }
}

// Each column is as wide as its longest cell. When that is too much for the page, the widest columns share what the
// others leave.
std::vector<double> AssessmentReport::widthsOf(const ReportBlock& block) const {
    const double gap = metrics_.textWidth("XX", kBodyFont);
    std::vector<double> widths;
    for (std::size_t column = 0; column < block.Captions.size(); ++column) {
        double widest = metrics_.textWidth(block.Captions[column], kCaptionFont);
        for (const auto& row : block.Rows)
            widest = std::max(widest, metrics_.textWidth(row[column], kBodyFont));
        widths.push_back(widest + gap);
    }
    double rest = frame_.body().width();
    double share = rest; // of each of those that are too wide
    std::vector<double> rising = widths;
    std::ranges::sort(rising);
    for (std::size_t column = 0; column < rising.size(); ++column) {
        share = rest / static_cast<double>(rising.size() - column);
        if (rising[column] > share) break;
        rest -= rising[column];
        share = frame_.body().width();
    }
    for (double& width : widths)
        width = std::min(width, share);
    return widths;
}

void AssessmentReport::placeCaptions(const ReportBlock& block, const std::vector<double>& widths) {
    double left = frame_.body().Left;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        place(left, fittedText(metrics_, block.Captions[column], widths[column], kCaptionFont), kCaptionFont);
        left += widths[column];
    }
    top_ += 1.25 * line_;
    pages_.back().Rules.push_back({frame_.body().Left, top_, left - frame_.body().Left});
    top_ += 0.25 * line_;
}

void AssessmentReport::placeTable(const ReportBlock& block) {
    const std::vector<double> widths = widthsOf(block);
    const double gap = metrics_.textWidth("X", kBodyFont);
    placeCaptions(block, widths);
    for (const auto& row : block.Rows) {
        std::vector<std::vector<std::string>> cells;
        std::size_t most = 1;
        for (std::size_t column = 0; column < row.size(); ++column) {
            cells.push_back(
                wrappedText(metrics_, printableText(row[column]), widths[column] - gap, kBodyFont, kMostLines));
            most = std::max(most, cells.back().size());
        }
        // A row stays together where that is possible; one that is longer than a page goes on over the next ones.
        const auto breakPage = [&](std::size_t lines) {
            if (top_ + static_cast<double>(lines) * line_ <= frame_.body().Bottom) return;
            newPage();
            placeCaptions(block, widths);
        };
        breakPage(most);
        for (std::size_t line = 0; line < most; ++line) {
            breakPage(1);
            double left = frame_.body().Left;
            for (std::size_t column = 0; column < cells.size(); ++column) {
                if (line < cells[column].size()) place(left, cells[column][line], kBodyFont);
                left += widths[column];
            }
            top_ += line_;
        }
    }
}

// A caption and a line to write on for each, all on the same page.
void AssessmentReport::placeSign(const ReportBlock& block) {
    makeRoom(static_cast<double>(block.Rows.size()) * (kRoomToSign + line_) + line_);
    double widest = 0;
    for (const auto& row : block.Rows)
        widest = std::max(widest, metrics_.textWidth(row[0], kBodyFont));
    const double left = frame_.body().Left + widest + metrics_.textWidth("XX", kBodyFont);
    for (const auto& row : block.Rows) {
        top_ += kRoomToSign;
        place(frame_.body().Left, row[0], kBodyFont);
        pages_.back().Rules.push_back({left, top_ + line_, kSignWidth});
        top_ += line_;
    }
}

void AssessmentReport::drawPage(PageDevice& device, std::size_t page) {
    frame_.drawHead(device);
    pages_[page].drawWords(device);
    frame_.drawFoot(device, page, pages_.size());
}

} // namespace kestrane
