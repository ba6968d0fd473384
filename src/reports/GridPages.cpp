#include "reports/GridPages.h"

#include "reports/PageText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kNarrowest = 3; // cm; a column that is broken into lines is not narrower
constexpr std::size_t kMostLines = 12;
constexpr double kCaptionLines = 1.5;
constexpr double kNoteLines = 2;
constexpr std::size_t kMostMeasured = 5000; // the number of rows that are measured

} // namespace

GridPages::GridPages(const Session& session, const PageHeading& heading, PageGrid grid, const PageMetrics& metrics) :
    title_(heading.Title),
    grid_(std::move(grid)),
    metrics_(metrics),
    frame_(session, heading, metrics),
    line_(metrics.lineHeight(kBodyFont)) {
    hasCaptions_ = std::any_of(grid_.Captions.begin(), grid_.Captions.end(),
                               [](const std::string& caption) { return !caption.empty(); });
    measureColumns();
    fitColumns();
    planPages();
}

void GridPages::measureColumns() {
    const double gap = metrics_.textWidth("XX", kBodyFont);
    const std::size_t step = grid_.Rows / kMostMeasured + 1;
    for (std::size_t column = 0; column < grid_.Captions.size(); ++column) {
        double widest = metrics_.textWidth(grid_.Captions[column], kCaptionFont);
        std::size_t longest = 0; // a text shorter than this is not measured
        for (std::size_t row = 0; row < grid_.Rows; row += step) {
            const std::string cell = grid_.Cell(row, column);
            if (cell.size() < longest || (cell.size() == longest && row > 0)) continue;
            longest = cell.size();
            widest = std::max(widest, metrics_.textWidth(printableText(cell), kBodyFont));
        }
        columns_.push_back({widest + gap, false});
    }
}

void GridPages::fitColumns() {
    const double room = frame_.body().width();
    double total = 0;
    for (const Column& column : columns_)
        total += column.Width;
    if (total <= room) return;
    const auto widest = std::max_element(columns_.begin(), columns_.end(),
                                         [](const Column& a, const Column& b) { return a.Width < b.Width; });
    const double rest = total - widest->Width;
    if (rest + kNarrowest <= room) *widest = {room - rest, true};
    for (Column& column : columns_) {
        if (column.Width > room / 2) column = {room / 2, true};
    }
}

std::vector<GridPages::Part> GridPages::columnGroups() const {
    std::vector<Part> groups;
    std::size_t first = 1;
    do {
        double room = frame_.body().width() - columns_.front().Width;
        std::size_t end = first;
        while (end < columns_.size() && (end == first || columns_[end].Width <= room))
            room -= columns_[end++].Width;
        groups.push_back({first, end, 0, 0});
        first = end;
    } while (first < columns_.size());
    return groups;
}

void GridPages::planPages() {
    const double room =
        frame_.body().height() / line_ - (hasCaptions_ ? kCaptionLines : 0) - (grid_.Note.empty() ? 0 : kNoteLines) - 1;
    for (Part part : columnGroups()) {
        do {
            double left = room;
            std::size_t row = part.EndRow;
            part.FirstRow = row;
            do {
                left -= row < grid_.Rows ? static_cast<double>(linesOf(row++)) : 0;
            } while (row < grid_.Rows && static_cast<double>(linesOf(row)) <= left);
            part.EndRow = row;
            pages_.push_back(part);
        } while (part.EndRow < grid_.Rows);
    }
}

std::vector<std::string> GridPages::cellLines(std::size_t row, std::size_t column) const {
    const std::string text = printableText(grid_.Cell(row, column));
    if (!columns_[column].IsBroken) return {fittedText(metrics_, text, columns_[column].Width, kBodyFont)};
    const double room = columns_[column].Width - metrics_.textWidth("XX", kBodyFont);
    return wrappedText(metrics_, text, room, kBodyFont, kMostLines);
}

std::size_t GridPages::linesOf(std::size_t row) const {
    std::size_t lines = 1;
    for (std::size_t column = 0; column < columns_.size(); ++column) {
        if (columns_[column].IsBroken) lines = std::max(lines, cellLines(row, column).size());
    }
    return lines;
}

double GridPages::drawRow(PageDevice& device, const Part& part, std::size_t row, double top) const {
    double left = frame_.body().Left;
    for (std::size_t column = 0; column < part.EndColumn; ++column) {
        if (column > 0 && column < part.FirstColumn) continue;
        double lineTop = top;
        for (const std::string& line : cellLines(row, column)) {
            if (!line.empty()) device.text(left, lineTop, line, kBodyFont);
            lineTop += line_;
        }
        left += columns_[column].Width;
    }
    return static_cast<double>(linesOf(row)) * line_;
}

void GridPages::drawPage(PageDevice& device, std::size_t page) {
    const Part& part = pages_[page];
    const PageArea& body = frame_.body();
    frame_.drawHead(device);
    double top = body.Top;
    double width = 0;
    if (!grid_.Note.empty()) {
        device.text(body.Left, top, grid_.Note, kCaptionFont);
        top += kNoteLines * line_;
    }
    for (std::size_t column = 0; column < part.EndColumn; ++column) {
        if (column > 0 && column < part.FirstColumn) continue;
        if (!grid_.Captions[column].empty()) device.text(body.Left + width, top, grid_.Captions[column], kCaptionFont);
        width += columns_[column].Width;
    }
    if (hasCaptions_) {
        top += 1.25 * line_;
        device.rule(body.Left, top, width);
        top += 0.25 * line_;
    }
    for (std::size_t row = part.FirstRow; row < part.EndRow; ++row) {
        if (row + grid_.TotalRows == grid_.Rows) {
            device.rule(body.Left, top + 0.25 * line_, width);
            top += 0.5 * line_;
        }
        top += drawRow(device, part, row, top);
    }
    frame_.drawFoot(device, numberOf(page), lastNumber());
}

} // namespace kestrane
