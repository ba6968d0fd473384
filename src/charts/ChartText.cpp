#include "charts/ChartText.h"

#include <QGlyphRun>
#include <QPainterPath>
#include <QRawFont>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr QChar kEllipsis(0x2026);

QTextOption optionOf(Qt::LayoutDirection direction, Qt::Alignment alignment, QTextOption::WrapMode wrap) {
    QTextOption option(QStyle::visualAlignment(direction, alignment));
    option.setTextDirection(direction);
    option.setWrapMode(wrap);
    return option;
}

Qt::LayoutDirection directionOf(const QString& paragraph) {
    return paragraph.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight;
}

bool hasRightToLeft(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.direction() == QChar::DirR || c.direction() == QChar::DirAL; });
}

// Lays out a paragraph and calls visit(line) for each of its lines, until that returns false.
template <class Visit>
void forEachLine(QTextLayout& layout, double width, Visit&& visit) {
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (!visit(line)) break;
    }
    layout.endLayout();
}

QPainterPath outlineOf(const QTextLayout& layout) {
    QPainterPath outline;
    for (const QGlyphRun& run : layout.glyphRuns()) {
        const QRawFont font = run.rawFont();
        const QList<quint32> glyphs = run.glyphIndexes();
        const QList<QPointF> places = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i)
            outline.addPath(font.pathForGlyph(glyphs[i]).translated(places[i]));
    }
    return outline;
}

} // namespace

void drawTextLine(QCPPainter& painter, const QRectF& place, const QString& text, Qt::LayoutDirection direction,
                  Qt::Alignment alignment) {
    QTextLayout layout(text, painter.font());
    layout.setTextOption(optionOf(direction, alignment, QTextOption::NoWrap));
    forEachLine(layout, place.width(), [](const QTextLine&) { return true; });
    if (painter.modes().testFlag(QCPPainter::pmVectorized) && hasRightToLeft(text)) {
        painter.fillPath(outlineOf(layout).translated(place.topLeft()), painter.pen().color());
    } else {
        layout.draw(&painter, place.topLeft());
    }
}

ChartText::ChartText(QCustomPlot* plot, const std::string& text, const QFont& font, const QColor& color,
                     Qt::Alignment alignment) :
    QCPLayoutElement(plot), text_(QString::fromStdString(text)), font_(font), color_(color), alignment_(alignment) {
    text_.replace("\r\n", "\n").replace('\r', '\n');
    while (text_.endsWith('\n'))
        text_.chop(1);
}

void ChartText::fit(int width, int mostHeight) {
    const QFontMetricsF metrics(font_);
    lines_.clear();
    lineHeight_ = 1;
    const auto most = [&] { return static_cast<std::size_t>(std::max(1.0, std::floor(mostHeight / lineHeight_))); };
    std::vector<QString> rests; // of the paragraph, from each line on
    for (qsizetype begin = 0, end = 0; begin <= text_.size() && lines_.size() <= most(); begin = end + 1) {
        end = text_.indexOf('\n', begin) < 0 ? text_.size() : text_.indexOf('\n', begin);
        const QString paragraph = text_.mid(begin, end - begin);
        const Qt::LayoutDirection direction = directionOf(paragraph);
        QTextLayout layout(paragraph, font_);
        layout.setTextOption(optionOf(direction, alignment_, QTextOption::WrapAtWordBoundaryOrAnywhere));
        forEachLine(layout, width, [&](const QTextLine& line) {
            lines_.push_back({paragraph.mid(line.textStart(), line.textLength()), direction});
            lineHeight_ = std::max(lineHeight_, line.height() + metrics.leading());
            rests.push_back(paragraph.mid(line.textStart()));
            return lines_.size() <= most();
        });
    }
    isCut_ = lines_.size() > most();
    if (isCut_) {
        lines_.resize(most());
        const QString& rest = rests[most() - 1];
        const QString whole = rest.trimmed() + kEllipsis;
        const bool isWhole = metrics.horizontalAdvance(whole) <= width;
        lines_.back().Text = isWhole ? whole : metrics.elidedText(rest, Qt::ElideRight, width);
    }
    const int height = static_cast<int>(std::ceil(static_cast<double>(lines_.size()) * lineHeight_));
    setMinimumSize(0, height);
    setMaximumSize(QWIDGETSIZE_MAX, height);
}

void ChartText::draw(QCPPainter* painter) {
    painter->save();
    painter->setClipRect(rect());
    painter->setFont(font_);
    painter->setPen(QPen(color_));
    QRectF place = rect();
    for (const Line& line : lines_) {
        drawTextLine(*painter, place, line.Text, line.Direction, alignment_);
        place.translate(0, lineHeight_);
    }
    painter->restore();
}

} // namespace kestrane
