#include "ChartRedraw.h"

#include "Measure.h"
#include "charts/chaTab.h"

#include <QApplication>

#include <algorithm>

namespace kestrane::bench {

namespace {

constexpr int kRedraws = 20;

ChartData walkingLines(std::size_t rows, std::size_t series, std::int16_t style) {
    ChartData chart;
    chart.Style = style;
    chart.Title = "A week at one second";
    chart.RowCount = rows;
    chart.RowLabel = chart.RowName = [](std::size_t row) { return std::to_string(row); };
    for (std::size_t row = 0; row < rows; ++row)
        chart.RowBegins.push_back(static_cast<std::int64_t>(row));
    chart.ExcludedRows.assign(rows, 0);
    chart.DivisionsPerLabel = chart.DivisionsPerTick = rows / 15 + 1;
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < series; ++i) {
        std::vector<float> values(rows);
        float level = 60 + static_cast<float>(i) * 5;
        for (float& value : values) {
            random = random * 1664525U + 1013904223U;
            level = std::clamp(level + (static_cast<float>(random >> 24) - 127.5F) / 100, 40.0F, 110.0F);
            value = level;
        }
        chart.Series.push_back({"Series " + std::to_string(i + 1), ChartAxis::Primary, std::move(values)});
    }
    return chart;
}

} // namespace

double redrawSeconds(std::size_t rows, std::size_t series, std::int16_t style) {
    return redrawSeconds(walkingLines(rows, series, style));
}

double redrawSeconds(const ChartData& chart) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 0;
    const QApplication application(count, nullptr);
    chaTab tab({});
    tab.resize(1000, 650);
    tab.setChart(chart);
    tab.show();
    QApplication::processEvents();
    auto& plot = *tab.findChild<QCustomPlot*>();
    double best = 1;
    for (int i = 0; i < kRedraws; ++i)
        best = std::min(best, secondsOf([&] { plot.replot(QCustomPlot::rpImmediateRefresh); }));
    return best;
}

} // namespace kestrane::bench
