#include "dialogs/AttenuationBars.h"

#include <QPainter>

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kLeastScale = 50; // dB
constexpr double kHeadroom = 1.08;
constexpr double kBarWidth = 0.5; // of a column's width
constexpr double kGridStep = 10;  // dB
constexpr double kMostGridLines = 10;

struct Bar {
    double mean, deviation; // dB
};

std::array<Bar, kProtectorBands> barsOf(const clsHP& hp, bool isUS) {
    std::array<Bar, kProtectorBands> bars{};
    for (int band = 1; band <= kProtectorBands; ++band)
        bars[static_cast<std::size_t>(band) - 1] =
            isUS ? Bar{hp.MeanUS(band), hp.SDUS(band)} : Bar{hp.Mean(band), hp.SD(band)};
    return bars;
}

} // namespace

AttenuationBars::AttenuationBars(QWidget* parent) : DrawnFigure(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setMinimumHeight(fontMetrics().height() * 5);
}

QSize AttenuationBars::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 60, fontMetrics().height() * 8};
}

void AttenuationBars::Show(const clsHP& protector, bool isUS) {
    protector_ = protector;
    isUS_ = isUS;
    update();
}

void AttenuationBars::draw(QPainter& painter) {
    const auto bars = barsOf(protector_, isUS_);
    double scale = kLeastScale;
    for (const Bar& bar : bars)
        scale = std::max(scale, (bar.mean + bar.deviation) * kHeadroom);
    const QRectF area = QRectF(rect()).adjusted(0, 0, 0, -1);
    const auto y = [&](double level) { return area.bottom() - std::max(0.0, level) / scale * area.height(); };

    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    QColor quiet = palette().color(QPalette::Text);
    quiet.setAlphaF(0.15F);
    painter.setPen(quiet);
    const double step = kGridStep * std::ceil(scale / kGridStep / kMostGridLines);
    for (int line = 0; line * step < scale; ++line)
        painter.drawLine(QPointF(area.left(), y(line * step)), QPointF(area.right(), y(line * step)));

    const double column = (area.width() + gap_) / kProtectorBands;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const double middle = area.left() + column * static_cast<double>(i) + (column - gap_) / 2;
        const double half = (column - gap_) * kBarWidth / 2;
        const QRectF bar(QPointF(middle - half, y(bars[i].mean)), QPointF(middle + half, area.bottom()));
        painter.fillRect(bar, palette().color(QPalette::Highlight));
        if (bars[i].deviation == 0) continue;
        painter.setPen(QPen(palette().color(QPalette::Text), 1.5));
        const double top = y(bars[i].mean + bars[i].deviation);
        const double foot = y(bars[i].mean - bars[i].deviation);
        painter.drawLine(QPointF(middle, top), QPointF(middle, foot));
        for (const double end : {top, foot})
            painter.drawLine(QPointF(middle - half / 2, end), QPointF(middle + half / 2, end));
    }
}

} // namespace kestrane
