#include "charts/SeriesBars.h"

#include "platform/Contrast.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kGroup = 0.8;    // of a row's width, for all bars of the row
constexpr double kBar = 0.88;     // of a bar's share, so that bars do not touch
constexpr double kLoneBar = 0.56; // the same when series are arranged like rows
constexpr double kWidestBar = 64; // pixels
constexpr double kFigureGap = 2;
constexpr double kBetweenFigures = 3;

} // namespace

SeriesBars::SeriesBars(QCPAxis* rows, QCPAxis* values, const ChartContent& content, std::size_t drawn,
                       const ChartLooks& looks, const Locale& locale) :
    SeriesPlot(rows, values, content, drawn),
    textColor_(looks.QuietText),
    font_(looks.font(content.data.AxisFont)),
    locale_(locale) {
    setPen(Qt::NoPen);
    setBrush(looks.color(content, drawn));
    marks_ = SeriesMarks::of(content, drawn, looks);
}

void SeriesBars::draw(QCPPainter* painter) {
    const auto count = static_cast<double>(content_.series.size());
    const double row = mKeyAxis->axisRect()->width() / mKeyAxis->range().size(); // the width of a row in pixels
    const bool isAlone = content_.hasSeriesAsRows();
    const double pitch = isAlone ? row / count : std::min(row * kGroup / count, kWidestBar / kBar);
    const double width = std::min(pitch * (isAlone ? kLoneBar : kBar), kWidestBar);
    const double shift = (static_cast<double>(drawn_) + 0.5 - count / 2) * pitch;
    const double base = mValueAxis->coordToPixel(std::max(0.0, mValueAxis->range().lower));

    painter->setAntialiasing(false);
    for (std::size_t i = 0; i < values().size(); ++i) {
        if (isNullValue(values()[i])) continue;
        const double middle = mKeyAxis->coordToPixel(static_cast<double>(i)) + shift;
        const double tip = mValueAxis->coordToPixel(static_cast<double>(values()[i]));
        const double left = std::round(middle - width / 2);
        const double right = std::max(left + 1, std::round(middle + width / 2));
        const QRectF bar(QPointF(left, std::round(std::min(tip, base))),
                         QPointF(right, std::round(std::max(tip, base))));
        painter->setPen(Qt::NoPen);
        painter->setBrush(mBrush);
        if (marks_) {
            marks_->fill(*painter, bar);
        } else {
            painter->drawRect(bar);
        }
        drawFigure(painter, bar, pitch, values()[i]);
    }
}

// Draws the figure above the bar, or inside its end when the bar reaches too high for that. A figure for which there is
// no room is left out.
void SeriesBars::drawFigure(QCPPainter* painter, const QRectF& bar, double pitch, float value) const {
    const QString text = QString::fromStdString(chartFigureText(value, locale_));
    const QFontMetrics metrics(font_);
    QRectF place(bar.center().x() - pitch, bar.top() - metrics.height() - kFigureGap, 2 * pitch, metrics.height());
    QColor colour = textColor_;
    double room = pitch;
    if (place.top() < mValueAxis->axisRect()->top()) {
        place.moveTop(bar.top() + kFigureGap);
        colour = isDark(mBrush.color().rgb()) ? Qt::white : Qt::black;
        room = bar.width();
    }
    if (metrics.horizontalAdvance(text) + kBetweenFigures > room || place.bottom() > mKeyAxis->axisRect()->bottom())
        return;
    if (marks_ && place.top() > bar.top()) { // not over a pattern
        painter->fillRect(place & bar, marks_->Ground());
        colour = textColor_;
    }
    painter->setFont(font_);
    painter->setPen(QPen(colour));
    painter->drawText(place, Qt::AlignHCenter | Qt::AlignBottom, text);
}

} // namespace kestrane
