#include "charts/ChartText.h"

#include <algorithm>

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
    const QFontMetrics metrics(font_);
    const int needed = metrics.boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), flags_, text_).height();
    const int lines = std::max(1, mostHeight / metrics.lineSpacing());
    const int height = std::min(needed, lines * metrics.lineSpacing());
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
