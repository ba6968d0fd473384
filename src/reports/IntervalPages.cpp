#include "reports/IntervalPages.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "reports/ReportTables.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kIntervalWidth = "WWWW000.0 dB"; // the least width of a column of levels
constexpr std::string_view kTimeWidth = "*00:00:00";
constexpr double kHeadLines = 3.5; // heading, captions, and the space around them
constexpr double kFootLines = 2;   // the line that explains the stars

bool isAnyExcluded(const IntervalColumns& rows) {
    const auto flags = rows.cells(rows.isExcluded);
    return std::any_of(flags.begin(), flags.end(), [](std::uint8_t flag) { return flag != 0; });
}

} // namespace

IntervalPages::IntervalPages(const clsLog& log, const PageArea& area, const PageMetrics& metrics) :
    area_(area),
    line_(metrics.lineHeight(kBodyFont)),
    star_(metrics.textWidth("*", kBodyFont)),
    heading_(log.session().LoadText(Text::IntervalHeading)),
    removed_("*" + log.session().LoadText(Text::IntervalRemoved)),
    locale_(log.session().locale),
    times_(log),
    rows_(log.LogIntervals.Columns()),
    hasExcluded_(isAnyExcluded(rows_)) {
    const double lines = area.height() / line_ - kHeadLines - (hasExcluded_ ? kFootLines : 0);
    rowsOfPage_ = std::max<std::size_t>(1, static_cast<std::size_t>(std::max(lines, 1.0)));
    pagesOfChannel_ = (rows_.count() + rowsOfPage_ - 1) / rowsOfPage_;
    addChannel(log, kChannelA, metrics);
    if (log.IsChannelBOn) addChannel(log, kChannelB, metrics);
}

void IntervalPages::addChannel(const clsLog& log, LogChannel channel, const PageMetrics& metrics) {
    const Session& session = log.session();
    const clsLogOptions options = displayOptions(log);
    Channel added;
    if (log.IsChannelBOn) added.Name = session.LoadText(channel == kChannelA ? Text::ChannelA : Text::ChannelB);
    const double gap = metrics.textWidth("WW", kCaptionFont);
    double right = area_.Left + metrics.textWidth(kTimeWidth, kBodyFont);
    for (const LevelColumn& column : intervalColumns()) {
        if (column.isOptional && !options.IsPlotted(channel, kInterval, column.parameter)) continue;
        FigureColumn figures;
        figures.Caption = levelCaption(log, channel, column.parameter);
        if (options.Plottable(channel, kInterval, column.parameter))
            figures.Source = intervalQuantity(channel, column.parameter);
        right += std::max(metrics.textWidth(kIntervalWidth, kBodyFont),
                          metrics.textWidth(figures.Caption, kCaptionFont) + gap);
        figures.Right = right;
        added.Columns.push_back(std::move(figures));
    }
    channels_.push_back(std::move(added));
}

void IntervalPages::draw(PageDevice& device, std::size_t page) const {
    const Channel& channel = channels_[page / pagesOfChannel_];
    const std::size_t first = page % pagesOfChannel_ * rowsOfPage_;
    const std::size_t end = std::min(first + rowsOfPage_, rows_.count());
    std::string heading = datedHeading(heading_, times_.longDate(first), times_.hourAndMinute(first));
    if (!channel.Name.empty()) heading += " " + channel.Name;
    double top = area_.Top;
    device.text(area_.Left, top, heading, kCaptionFont);
    top += 2 * line_;
    device.text(area_.Left + star_, top, heading_, kCaptionFont);
    for (const FigureColumn& column : channel.Columns)
        device.text(column.Right, top, column.Caption, kCaptionFont, PageAlign::Right);
    top += 1.25 * line_;
    device.rule(area_.Left, top, channel.Columns.back().Right - area_.Left);
    top += 0.25 * line_;
    for (std::size_t row = first; row < end; ++row) {
        drawRow(device, channel, row, top);
        top += line_;
    }
    if (hasExcluded_ && page + 1 == count()) device.text(area_.Left, top + line_, removed_, kBodyFont);
}

void IntervalPages::drawRow(PageDevice& device, const Channel& channel, std::size_t row, double top) const {
    if (rows_.isExcluded.at(row) != 0) device.text(area_.Left, top, "*", kBodyFont);
    device.text(area_.Left + star_, top, times_.time(row), kBodyFont);
    for (const FigureColumn& column : channel.Columns) {
        const float level = column.Source == Quantity::End ? 0 : rows_.level(column.Source, 0, row).CalcValue;
        if (level != 0)
            device.text(column.Right, top, formatNumber(static_cast<double>(level), kDecibelFormat, locale_), kBodyFont,
                        PageAlign::Right);
    }
}

} // namespace kestrane
