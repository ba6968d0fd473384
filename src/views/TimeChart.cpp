#include "views/TimeChart.h"

#include "model/LogParameters.h"
#include "model/Session.h"
#include "views/ChartLines.h"
#include "views/ChartParts.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr std::int64_t kMostRowsIn3D = 150;

class TimeChart {
public:
    TimeChart(const clsLog& log, const DisplayChoice& choice) :
        log_(log),
        session_(log.session()),
        rows_(log.LogIntervals.Columns()),
        options_(displayOptions(log)),
        choice_(choice),
        chart_(emptyChart(log, options_)) {}

    ChartData build() {
        const std::string shown = choice_.Parameter == 0 ? choice_.BandText : parameterText(log_, choice_.Parameter);
        if (!shown.empty()) chart_.Title += " - " + shown;
        chart_.Footnote = log_.Note;
        addTimeRows(chart_, log_);
        if (choice_.Parameter == 0) {
            addParameters();
        } else {
            addBands();
        }
        setAxes();
        if (choice_ == DisplayChoice()) addChartLines(chart_, log_, readChartLines(session_));
        return std::move(chart_);
    }

private:
    void setAxes() {
        chart_.PrimaryTitle = session_.LoadText(Text::Decibel);
        if (hasOtherWeighting_) {
            nameWeightings();
        } else if (!log_.FreqWeightA().empty()) {
            chart_.PrimaryTitle += " " + log_.FreqWeightA();
        }
        chart_.HasSecondaryAxis = hasPercent_ || hasPa2Hours_;
        chart_.SecondaryTitle = exposureTitle(session_, hasPercent_, hasPa2Hours_);
    }

    // Says the weighting of each level whose caption does not say it. The title of an axis that levels of two
    // weightings share says none.
    void nameWeightings() {
        for (std::size_t i = 0; i < chart_.Series.size(); ++i)
            if (!unnamed_[i].empty())
                chart_.Series[i].Label += " (" + session_.LoadText(Text::Decibel) + " " + unnamed_[i] + ")";
    }

    void addBands() {
        const Parameter parameter = choice_.Parameter;
        for (int band = 0; band <= lastBand(log_.Mode()); ++band)
            addSeries(bandLabel(log_, band), kChannelA, parameter, rowValues(kChannelA, parameter, band));
    }

    void addParameters() {
        for (const LogChannel channel : kChannels) {
            if (channel == kChannelB && !log_.IsChannelBOn) continue;
            for (const Parameter parameter : kParameters) {
                if (parameter != eOverload) addParameter(channel, parameter);
            }
        }
    }

    void addParameter(LogChannel channel, Parameter parameter) {
        const int band = channel == kChannelA ? log_.e(choice_.BandText) : 0;
        const std::string_view captionBand = band > 0 ? std::string_view(choice_.BandText) : kNoBand;
        const std::string caption = VariableCaption(session_, parameter, channel, captionBand, &log_);
        if (options_.IsPlotted(channel, kInterval, parameter))
            addSeries(caption, channel, parameter, rowValues(channel, parameter, band));
        if (isCumulativePlotted(channel, parameter)) {
            const float level = chartValue(cumulativeValue(log_, channel, parameter, band).CalcValue());
            addSeries(caption + " " + session_.LoadText(Text::OfCumulative), channel, parameter,
                      std::vector<float>(rows_.count(), level));
        }
    }

    bool isCumulativePlotted(LogChannel channel, Parameter parameter) const {
        return lnOf(parameter) != 0 && log_.has(Trait::PercentilesBesideRows) &&
               options_.IsPlotted(channel, kCumulative, parameter);
    }

    std::vector<float> rowValues(LogChannel channel, Parameter parameter, int band) const {
        const Quantity quantity = intervalQuantity(channel, parameter);
        std::vector<float> values(rows_.count(), kNullValue);
        if (quantity == Quantity::End) return values;
        const auto levels = rows_.levels(quantity, hasBands(quantity) ? band : 0);
        std::transform(levels.begin(), levels.end(), values.begin(),
                       [](Level level) { return chartValue(level.CalcValue); });
        return values;
    }

    void addSeries(std::string label, LogChannel channel, Parameter parameter, std::vector<float> values) {
        const ParameterUnit unit = parameterInfo(parameter).unit;
        hasPercent_ = hasPercent_ || unit == ParameterUnit::Percent;
        hasPa2Hours_ = hasPa2Hours_ || unit == ParameterUnit::Pa2Hours;
        const ChartAxis axis = unit == ParameterUnit::Decibels ? ChartAxis::Primary : ChartAxis::Secondary;
        chart_.Series.push_back({std::move(label), axis, std::move(values)});
        const std::string& weighting = channel == kChannelA ? log_.FreqWeightA() : log_.FreqWeightB();
        hasOtherWeighting_ =
            hasOtherWeighting_ || (axis == ChartAxis::Primary && !weighting.empty() && weighting != log_.FreqWeightA());
        unnamed_.push_back(axis == ChartAxis::Primary && parameter > ePeak ? weighting : std::string());
    }

    const clsLog& log_;
    const Session& session_;
    const IntervalColumns& rows_;
    const clsLogOptions options_;
    const DisplayChoice& choice_;
    ChartData chart_;
    std::vector<std::string> unnamed_; // by series: the weighting that its caption does not say
    bool hasOtherWeighting_ = false;   // there are levels of another weighting than channel A's
    bool hasPercent_ = false;
    bool hasPa2Hours_ = false;
};

} // namespace

ChartData fullLogChart(const clsLog* log, const DisplayChoice& choice) {
    return log == nullptr ? ChartData() : TimeChart(*log, choice).build();
}

bool isAskedBefore3D(const clsLog& log, std::int16_t style) {
    return style == eChartAs3D && log.LogIntervals.Count() > kMostRowsIn3D;
}

} // namespace kestrane
