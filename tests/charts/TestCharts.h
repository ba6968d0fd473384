// Charts made by hand, and a tab that shows one.
#pragma once

#include "charts/chaTab.h"

#include <QApplication>

#include <string>
#include <vector>

namespace kestrane {

inline ChartData chartOf(ChartShape shape, std::vector<std::vector<float>> values) {
    ChartData chart;
    chart.Shape = shape;
    chart.Title = "Press shop";
    chart.RowCount = values.front().size();
    chart.RowLabel = [](std::size_t row) { return "r" + std::to_string(row); };
    chart.RowName = [](std::size_t row) { return "row " + std::to_string(row); };
    chart.DivisionsPerLabel = chart.DivisionsPerTick = chart.RowCount / 15 + 1;
    chart.CategoryTitle = "Time";
    chart.PrimaryTitle = "dB A";
    chart.LineWidth = 60; // wide enough for pixels of its own colour
    for (std::vector<float>& series : values)
        chart.Series.push_back(
            {"Series " + std::to_string(chart.Series.size()), ChartAxis::Primary, std::move(series)});
    return chart;
}

// The colour of a series on paper, which is also that of a light screen.
inline QRgb colorOf(const ChartData& chart, std::size_t series) {
    return ChartLooks::ofPaper().color(ChartContent(chart), series).rgb();
}

// How many pixels are as a rule says of their place.
template <class Rule>
int countWhere(const QImage& image, Rule rule) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += rule(x, y) ? 1 : 0;
    }
    return count;
}

inline int countOf(const QImage& image, QRgb color) {
    return countWhere(image, [&](int x, int y) { return image.pixel(x, y) == color; });
}

inline QPalette palette(const QColor& base, const QColor& text) {
    QPalette colors;
    colors.setColor(QPalette::Base, base);
    colors.setColor(QPalette::Text, text);
    return colors;
}

class ShownChart {
public:
    explicit ShownChart(const ChartData& chart, QSize size = {800, 500}) : tab({}) {
        tab.setPalette(palette(Qt::white, Qt::black));
        tab.resize(size);
        tab.setChart(chart);
        tab.show();
        plot = tab.findChild<QCustomPlot*>();
        settle();
    }

    void settle() const { QApplication::processEvents(); }

    QImage image() { return tab.grab().toImage(); }

    QCPAxis& rows() const { return *plot->axisRect()->axis(QCPAxis::atBottom); }

    QPoint at(double row, double value, QCPAxis::AxisType axis = QCPAxis::atLeft) const {
        return {static_cast<int>(rows().coordToPixel(row)),
                static_cast<int>(plot->axisRect()->axis(axis)->coordToPixel(value))};
    }

    // Whether a colour is seen within so many pixels of a place.
    bool isSeen(QRgb color, const QPoint& place, int reach = 2) {
        const QImage around = image().copy(QRect(place, QSize(1, 1)).adjusted(-reach, -reach, reach, reach));
        return countOf(around, color) > 0;
    }

    chaTab tab;
    QCustomPlot* plot;
};

} // namespace kestrane
