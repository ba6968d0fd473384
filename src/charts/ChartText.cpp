#include "charts/ChartText.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

ChartText::ChartText(QCustomPlot* plot, const std::string& text, const QFont& font, const QColor& color,
                     int alignment) :
    QCPLayoutElement(plot),
    text_(QString::fromStdString(text)),
    font_(font),
    color_(color),
    flags_(alignment | Qt::AlignTop | Qt::TextWordWrap | Qt::TextExpandTabs) {
    text_.replace("\r\n", "\n").replace('\r', '\n');
    while (text_.endsWith('\n'))
        text_.chop(1);
}

void ChartText::fit(int width, int mostHeight) {
    const QFontMetricsF metrics(font_);
    const auto heightOf = [&](const QString& text) {
        return metrics.boundingRect(QRectF(0, 0, width, QWIDGETSIZE_MAX), flags_, text).height();
    };
    // The height of a line as drawn, which differs from the font's rounded line spacing.
    const double line = heightOf("X\nX") - heightOf("X");
    const double lines = std::max(1.0, std::floor(mostHeight / line));
    const int height = static_cast<int>(std::ceil(std::min(heightOf(text_), lines * line)));
    setMinimumSize(0, height);
    setMaximumSize(QWIDGETSIZE_MAX, height);
}

void ChartText::draw(QCPPainter* painter) {
    painter->save();
    painter->setClipRect(rect());
    painter->setFont(font_);
    painter->setPen(QPen(color_));
    painter->drawText(rect(), flags_, text_);
    painter->restore();
}

} // namespace kestrane
