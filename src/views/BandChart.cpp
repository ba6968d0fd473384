#include "views/BandChart.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "views/ChartParts.h"
#include "views/RowTimes.h"
#include "views/Zoom.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

class BandChart {
public:
    BandChart(const clsLog& log, std::int64_t row, const DisplayChoice& choice, DisplayMode axisMode) :
        log_(log),
        session_(log.session()),
        row_(row),
        choice_(choice),
        axisMode_(axisMode),
        options_(displayOptions(log)),
        chart_(emptyChart(log, options_)) {
        if (row < 0 || row > log.LogIntervals.Count()) raiseIndexOutOfRange();
    }

    std::optional<ChartData> build() {
        chart_.Shape = ChartShape::Bar;
        if (choice_.Parameter == 0) {
            addParameters();
        } else {
            addBands();
        }
        if (chart_.Series.empty()) return std::nullopt;
        setTitles();
        return std::move(chart_);
    }

private:
    bool isInterval() const { return row_ != kWholeLog; }

    float figure(LogChannel channel, Parameter parameter, int band) const {
        const clsValue value = isInterval() ? intervalValue(log_, row_, channel, parameter, band)
                                            : cumulativeValue(log_, channel, parameter, band);
        return chartValue(value.CalcValue());
    }

    void addBands() {
        const Parameter parameter = choice_.Parameter;
        ChartSeries series;
        series.Label = VariableCaption(session_, parameter, kChannelA, kNoBand, &log_);
        std::vector<std::string> labels;
        for (int band = 0; band <= lastBand(log_.Mode()); ++band) {
            labels.push_back(bandLabel(log_, band));
            series.Values.push_back(figure(kChannelA, parameter, band));
        }
        chart_.RowCount = labels.size();
        chart_.RowLabel = chart_.RowName = [labels](std::size_t row) { return labels[row]; };
        chart_.PrimaryTitle = session_.LoadText(Text::Decibel);
        chart_.Series.push_back(std::move(series));
    }

    void addParameters() {
        chart_.RowCount = 1;
        chart_.RowLabel = [](std::size_t) { return std::string(); };
        std::string name = isInterval() ? RowTimes(log_).dateAndTime(rowIndex()) : log_.Name;
        chart_.RowName = [name = std::move(name)](std::size_t) { return name; };
        for (const LogChannel channel : kChannels) {
            if (channel == kChannelB && !log_.IsChannelBOn) continue;
            for (const Parameter parameter : kParameters)
                addParameter(channel, parameter);
        }
        setAxes();
    }

    void addParameter(LogChannel channel, Parameter parameter) {
        const FigureKind kind = isInterval() ? kInterval : kCumulative;
        if (parameter == eOverload || !options_.IsPlotted(channel, kind, parameter)) return;
        const ParameterUnit unit = parameterInfo(parameter).unit;
        if ((unit == ParameterUnit::Decibels) != (axisMode_ == kByDecibels)) return;
        hasPercent_ = hasPercent_ || unit == ParameterUnit::Percent;
        hasPa2Hours_ = hasPa2Hours_ || unit == ParameterUnit::Pa2Hours;
        const int band = channel == kChannelA ? log_.e(choice_.BandText) : 0;
        const std::string_view captionBand = band > 0 ? std::string_view(choice_.BandText) : kNoBand;
        chart_.Series.push_back({VariableCaption(session_, parameter, channel, captionBand, &log_),
                                 axisOf(unit),
                                 {figure(channel, parameter, band)}});
    }

    static ChartAxis axisOf(ParameterUnit unit) {
        return unit == ParameterUnit::Pa2Hours ? ChartAxis::Secondary : ChartAxis::Primary;
    }

    // There is a second axis only when dose and Pa2Hr are both shown. It is that of Pa2Hr, with a scale of its own from
    // 0.
    void setAxes() {
        if (axisMode_ == kByDecibels) {
            chart_.PrimaryTitle = session_.LoadText(Text::Decibel);
        } else if (!hasPercent_ || !hasPa2Hours_) {
            chart_.PrimaryTitle = exposureTitle(session_, hasPercent_, hasPa2Hours_);
            for (ChartSeries& series : chart_.Series)
                series.Axis = ChartAxis::Primary;
        } else {
            const double highest = highestOf(ChartAxis::Secondary);
            chart_.HasSecondaryAxis = true;
            chart_.PrimaryTitle = exposureTitle(session_, true, false);
            chart_.SecondaryTitle = exposureTitle(session_, false, true);
            chart_.SecondaryRange = ChartRange{0, highest > 0 ? roundStep(highest) : 1};
        }
    }

    double highestOf(ChartAxis axis) const {
        float highest = 0;
        for (const ChartSeries& series : chart_.Series) {
            if (series.Axis == axis && series.Values[0] > highest) highest = series.Values[0];
        }
        return highest;
    }

    void setTitles() {
        if (!isInterval()) return addFootnote(chart_, wholeFiguresLine(log_));
        chart_.CategoryTitle = session_.LoadText(Text::IntervalTimeLabel) + " " + RowTimes(log_).time(rowIndex());
        if (log_.LogIntervals.Columns().isExcluded.at(rowIndex()) == 0) return;
        chart_.Title += " - (" + session_.LoadText(Text::ExcludedInterval) + ")";
        chart_.IsTitleWarning = true;
    }

    std::size_t rowIndex() const { return static_cast<std::size_t>(row_) - 1; }

    const clsLog& log_;
    const Session& session_;
    const std::int64_t row_;
    const DisplayChoice& choice_;
    const DisplayMode axisMode_;
    const clsLogOptions options_;
    ChartData chart_;
    bool hasPercent_ = false;
    bool hasPa2Hours_ = false;
};

} // namespace

std::optional<ChartData> bandChart(const clsLog& log, std::int64_t row, const DisplayChoice& choice,
                                   DisplayMode axisMode) {
    return BandChart(log, row, choice, axisMode).build();
}

} // namespace kestrane
