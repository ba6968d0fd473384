#include "views/NoiseRatingChart.h"

#include "calc/NoiseRating.h"
#include "model/LogParameters.h"
#include "model/Session.h"
#include "platform/Format.h"
#include "views/ChartParts.h"
#include "views/Zoom.h"

#include <utility>

namespace kestrane {

namespace {

constexpr ChartRange kLevels = {0, 150}; // dB

} // namespace

std::optional<ChartData> noiseRatingChart(const clsLog& log) {
    const NoiseRating rating = noiseRating(log);
    if (rating.Rows.empty()) return std::nullopt;
    const Session& session = log.session();
    ChartData chart = emptyChart(log, displayOptions(log));
    chart.Title = ReplaceText(session.LoadText(Text::NoiseRatingTitle), "^", log.Name);
    chart.Footnote = ReplaceText(session.LoadText(Text::NoiseRatingLevel), "^", std::to_string(rating.Level)) + "    ";
    if (const std::optional<double> byCurves = ratingByCurves(log); byCurves)
        addFootnote(chart, ReplaceText(session.LoadText(Text::NoiseRatingByCurves), "^",
                                       formatNumber(*byCurves, "##0.0", session.locale)));
    addFootnote(chart, wholeFiguresLine(log));
    chart.HasLegend = false;
    chart.CategoryTitle = session.LoadText(Text::NoiseRatingCategories);
    chart.PrimaryTitle = session.LoadText(Text::NoiseRatingLevels);
    chart.PrimaryRange = kLevels;

    std::vector<std::string> labels;
    for (const clsNoiseRating& row : rating.Rows)
        labels.push_back(row.Frequency());
    chart.RowCount = labels.size();
    chart.RowLabel = chart.RowName = [labels](std::size_t row) { return labels[row]; };

    for (const clsNoiseRatingLevel& level : rating.Rows.front().Levels)
        chart.Series.push_back(
            {level.Parent == nullptr ? log.Name : std::to_string(level.NoiseRatingLevel), ChartAxis::Primary, {}});
    chart.ReferenceSeries = chart.Series.size() - 1;
    for (const clsNoiseRating& row : rating.Rows) {
        for (std::size_t i = 0; i < row.Levels.size(); ++i) {
            const clsNoiseRatingLevel& level = row.Levels[i];
            const float sound = level.SoundLevel();
            chart.Series[i].Values.push_back(level.Parent == nullptr ? chartValue(sound) : sound);
        }
    }
    return chart;
}

} // namespace kestrane
