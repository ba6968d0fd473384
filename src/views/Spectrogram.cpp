#include "views/Spectrogram.h"

#include "calc/BandLevels.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/RuntimeError.h"
#include "views/ChartParts.h"
#include "views/LevelMap.h"
#include "views/RowTimes.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kScaleStep = 5; // dB
constexpr double kDeepest = 80;  // dB below the highest level; what is lower has the last colour

ChartRange scaleOf(const ChartRange& levels) {
    const double highest = std::ceil(levels.Maximum / kScaleStep) * kScaleStep;
    const double lowest = std::floor(levels.Minimum / kScaleStep) * kScaleStep;
    return {std::clamp(lowest, highest - kDeepest, highest - kScaleStep), highest};
}

std::string decibels(const Session& session, std::string_view weight) {
    return session.LoadText(Text::Decibel) + " " + std::string(weight);
}

} // namespace

bool hasSpectrogram(const clsLog& log) {
    for (int band = 1; band <= log.e("Last"); ++band)
        if (!log.LogIntervals.Columns().levels(Quantity::LeqA, band).empty()) return true;
    return false;
}

ChartData spectrogramChart(const clsLog& log, std::string_view weight) {
    const Session& session = log.session();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Style = eChartAs2D;
    chart.Title = ReplaceText(session.LoadText(Text::SpectrogramTitle), "^", log.Name);
    chart.HasLegend = false;
    addTimeRows(chart, log);
    chart.Map = std::make_shared<const LevelMap>(log, weight);
    chart.PrimaryTitle = session.LoadText(Text::Hertz);
    chart.PrimaryRange = ChartRange{-0.5, static_cast<double>(chart.Map->BandCount()) - 0.5};
    chart.SecondaryTitle = decibels(session, weight);
    chart.SecondaryRange = scaleOf(chart.Map->Extent());
    return chart;
}

ChartData spectrumChart(const clsLog& log, std::size_t row, std::string_view weight) {
    const Session& session = log.session();
    const IntervalColumns& rows = log.LogIntervals.Columns();
    if (row >= rows.count()) raiseIndexOutOfRange();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Style = eChartAs2D;
    chart.Shape = ChartShape::Bar;
    chart.Title = ReplaceText(session.LoadText(Text::SpectrumAt), "^", RowTimes(log).dateAndTime(row));
    chart.HasLegend = false;
    ChartSeries levels{VariableCaption(session, eLeq, kChannelA, kNoBand, nullptr), ChartAxis::Primary, {}};
    std::vector<std::string> labels;
    for (int band = 1; band <= log.e("Last"); ++band) {
        const float level = rows.level(Quantity::LeqA, band, row).CalcValue;
        const auto offset = static_cast<float>(toWeighting(log, weight, band));
        levels.Values.push_back(level == 0 ? kNullValue : level + offset);
        labels.emplace_back(log.eStr(band));
    }
    chart.RowCount = labels.size();
    chart.RowLabel = [labels](std::size_t band) { return labels[band]; };
    chart.RowName = [labels, unit = session.LoadText(Text::Hertz)](std::size_t band) {
        return labels[band] + " " + unit;
    };
    chart.CategoryTitle = session.LoadText(Text::Hertz);
    chart.PrimaryTitle = decibels(session, weight);
    chart.Series.push_back(std::move(levels));
    return chart;
}

} // namespace kestrane
