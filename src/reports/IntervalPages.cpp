#include "reports/IntervalPages.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "reports/ReportTables.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kTimeWidth = "*00:00:00";
constexpr double kBlockGap = 0.8;  // cm, between two blocks
constexpr double kHeadLines = 3.5; // heading, captions, and the space around them
constexpr double kFootLines = 2;   // the line that explains the stars

bool isAnyExcluded(const IntervalColumns& rows) {
    const auto flags = rows.cells(rows.isExcluded);
    return std::any_of(flags.begin(), flags.end(), [](std::uint8_t flag) { return flag != 0; });
}

// Where the date stands when every row and every change of the day takes a line.
std::vector<std::size_t> dateLinesOf(const IntervalColumns& rows) {
    const auto dates = rows.cells(rows.StartDate);
    std::vector<std::size_t> lines;
    for (std::size_t row = 1; row < dates.size(); ++row)
        if (dates[row] != dates[row - 1]) lines.push_back(row + lines.size());
    return lines;
}

} // namespace

IntervalPages::IntervalPages(const clsLog& log, const PageArea& area, const PageMetrics& metrics) :
    area_(area),
    line_(metrics.lineHeight(kBodyFont)),
    star_(metrics.textWidth("*", kBodyFont)),
    session_(log.session()),
    heading_(session_.LoadText(Text::IntervalHeading)),
    removed_("*" + log.session().LoadText(Text::IntervalRemoved)),
    locale_(log.session().locale),
    times_(log),
    rows_(log.LogIntervals.Columns()),
    dateLines_(dateLinesOf(rows_)),
    hasExcluded_(isAnyExcluded(rows_)) {
    addChannel(log, kChannelA, metrics);
    if (log.IsChannelBOn) addChannel(log, kChannelB, metrics);
    for (const Channel& channel : channels_)
        blockWidth_ = std::max(blockWidth_, channel.Columns.back().Right);
    blocks_ = 2 * blockWidth_ + kBlockGap <= area.width() ? 2 : 1;
    const double lines = area.height() / line_ - kHeadLines - (hasExcluded_ ? kFootLines : 0);
    linesOfBlock_ = std::max<std::size_t>(1, static_cast<std::size_t>(std::max(lines, 1.0)));
    const std::size_t linesOfPage = blocks_ * linesOfBlock_;
    pagesOfChannel_ = (lineCount() + linesOfPage - 1) / linesOfPage;
}

IntervalPages::Line IntervalPages::lineAt(std::size_t number) const {
    const auto next = std::ranges::lower_bound(dateLines_, number);
    const auto before = static_cast<std::size_t>(next - dateLines_.begin());
    return {number - before, next != dateLines_.end() && *next == number};
}

void IntervalPages::addChannel(const clsLog& log, LogChannel channel, const PageMetrics& metrics) {
    const Session& session = log.session();
    const clsLogOptions options = displayOptions(log);
    Channel added;
    if (log.IsChannelBOn) added.Name = session.LoadText(channel == kChannelA ? Text::ChannelA : Text::ChannelB);
    const double gap = metrics.textWidth("WW", kCaptionFont);
    double right = metrics.textWidth(kTimeWidth, kBodyFont);
    for (const LevelColumn& column : intervalColumns()) {
        if (column.isOptional && !options.IsPlotted(channel, kInterval, column.parameter)) continue;
        FigureColumn figures;
        figures.Caption = levelCaption(log, channel, column.parameter);
        if (options.Plottable(channel, kInterval, column.parameter))
            figures.Source = intervalQuantity(channel, column.parameter);
        right +=
            std::max(metrics.textWidth(kLevelWidth, kBodyFont), metrics.textWidth(figures.Caption, kCaptionFont) + gap);
        figures.Right = right;
        added.Columns.push_back(std::move(figures));
    }
    channels_.push_back(std::move(added));
}

double IntervalPages::topOfRows() const {
    return area_.Top + kHeadLines * line_;
}

std::size_t IntervalPages::linesOfLastBlock() const {
    return std::min(lineCount() - (pagesOfChannel_ - 1) * blocks_ * linesOfBlock_, linesOfBlock_);
}

double IntervalPages::bottom() const {
    return topOfRows() + (static_cast<double>(linesOfLastBlock()) + (hasExcluded_ ? kFootLines : 0)) * line_;
}

void IntervalPages::draw(PageDevice& device, std::size_t page) const {
    const Channel& channel = channels_[page / pagesOfChannel_];
    const std::size_t first = page % pagesOfChannel_ * blocks_ * linesOfBlock_;
    const std::size_t row = lineAt(first).Row;
    std::string heading = datedHeading(session_, heading_, {times_.longDate(row), times_.hourAndMinute(row)});
    if (!channel.Name.empty()) heading += " " + channel.Name;
    device.text(area_.Left, area_.Top, heading, kCaptionFont);
    for (std::size_t block = 0; block < blocks_; ++block) {
        const std::size_t begin = first + block * linesOfBlock_;
        if (begin >= lineCount()) break;
        drawBlock(device, channel, area_.Left + static_cast<double>(block) * (blockWidth_ + kBlockGap), begin,
                  std::min(begin + linesOfBlock_, lineCount()));
    }
    if (!hasExcluded_ || page + 1 != count()) return;
    device.text(area_.Left, topOfRows() + (static_cast<double>(linesOfLastBlock()) + 1) * line_, removed_, kBodyFont);
}

void IntervalPages::drawBlock(PageDevice& device, const Channel& channel, double left, std::size_t first,
                              std::size_t end) const {
    double top = area_.Top + 2 * line_;
    device.text(left + star_, top, heading_, kCaptionFont);
    for (const FigureColumn& column : channel.Columns)
        device.text(left + column.Right, top, column.Caption, kCaptionFont, PageAlign::Right);
    device.rule(left, top + 1.25 * line_, channel.Columns.back().Right);
    top = topOfRows();
    for (std::size_t number = first; number < end; ++number) {
        const Line line = lineAt(number);
        if (line.IsDate) {
            device.text(left + star_, top, times_.shortDate(line.Row), kBodyFont);
        } else {
            drawRow(device, channel, left, top, line.Row);
        }
        top += line_;
    }
}

void IntervalPages::drawRow(PageDevice& device, const Channel& channel, double left, double top,
                            std::size_t row) const {
    if (rows_.isExcluded.at(row) != 0) device.text(left, top, "*", kBodyFont);
    device.text(left + star_, top, times_.time(row), kBodyFont);
    for (const FigureColumn& column : channel.Columns) {
        const float level = column.Source == Quantity::End ? 0 : rows_.level(column.Source, 0, row).CalcValue;
        if (level != 0)
            device.text(left + column.Right, top, formatNumber(static_cast<double>(level), kDecibelFormat, locale_),
                        kBodyFont, PageAlign::Right);
    }
}

} // namespace kestrane
