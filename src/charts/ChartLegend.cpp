#include "charts/ChartLegend.h"

#include "charts/ChartText.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kPadding = 8;
constexpr int kColumnGap = 18;
constexpr int kRowGap = 3;
constexpr int kSample = 22;
constexpr int kBarSample = 11;
constexpr int kSampleGap = 7;
constexpr double kRounding = 3;

} // namespace

ChartLegend::ChartLegend(QCustomPlot* plot, const ChartContent& content, const ChartLooks& looks) :
    QCPLayoutElement(plot),
    isLine_(content.data.Shape == ChartShape::Line && (content.data.Style == eChartAs2D || content.data.HasMarks)),
    font_(looks.font(content.data.LegendFont)),
    text_(looks.Text),
    frame_(looks.Grid),
    background_(looks.Background) {
    const QFontMetrics metrics(font_);
    for (std::size_t i = 0; i < content.series.size(); ++i) {
        if (content.isReference(i)) continue;
        entries_.push_back({QString::fromStdString(content.series[i]->Label), looks.linePen(content, i),
                            SeriesMarks::of(content, i, looks)});
        entryWidth_ = std::max(entryWidth_, metrics.horizontalAdvance(entries_.back().label));
    }
    entryWidth_ += (isLine_ ? kSample : kBarSample) + kSampleGap + 1;
    entryHeight_ = std::max(metrics.height(), kBarSample) + kRowGap;
}

int ChartLegend::heightOf(int rows) const {
    return rows * entryHeight_ - kRowGap + 2 * kPadding;
}

int ChartLegend::widthOf(int columns) const {
    return columns * (entryWidth_ + kColumnGap) - kColumnGap + 2 * kPadding;
}

int ChartLegend::rowsIn(int height) const {
    return std::max(1, (height - 2 * kPadding + kRowGap) / entryHeight_);
}

int ChartLegend::columnsIn(int width) const {
    const int columns = (width - 2 * kPadding + kColumnGap) / (entryWidth_ + kColumnGap);
    return std::clamp(columns, 1, static_cast<int>(entries_.size()));
}

int ChartLegend::rowsBelow(int width) const {
    const int columns = columnsIn(width);
    return (static_cast<int>(entries_.size()) + columns - 1) / columns;
}

int ChartLegend::widthBeside(int height) const {
    const int rows = rowsIn(height);
    return widthOf((static_cast<int>(entries_.size()) + rows - 1) / rows);
}

void ChartLegend::fitBelow(int width, int mostHeight) {
    isFilledByColumn_ = false;
    const int count = static_cast<int>(entries_.size());
    rows_ = std::min(rowsBelow(width), rowsIn(mostHeight));
    columns_ = std::min(columnsIn(width), (count + rows_ - 1) / rows_); // as few columns as these rows need
    setMinimumSize(0, heightOf(rows_));
    setMaximumSize(QWIDGETSIZE_MAX, heightOf(rows_));
}

void ChartLegend::fitBeside(int height) {
    isFilledByColumn_ = true;
    rows_ = std::min(rowsIn(height), static_cast<int>(entries_.size()));
    columns_ = (static_cast<int>(entries_.size()) + rows_ - 1) / rows_;
    rows_ = (static_cast<int>(entries_.size()) + columns_ - 1) / columns_;
    const int width = widthOf(columns_);
    setMinimumSize(width, 0);
    setMaximumSize(width, QWIDGETSIZE_MAX);
}

void ChartLegend::draw(QCPPainter* painter) {
    if (rect().isEmpty()) return; // the chart is too small for a legend
    QRect box(0, 0, std::min(widthOf(columns_), rect().width()), heightOf(rows_));
    box.moveCenter(rect().center());
    if (isFilledByColumn_) box.moveTop(rect().top());
    painter->save();
    painter->setAntialiasing(true);
    painter->setPen(QPen(frame_, 1));
    painter->setBrush(background_);
    painter->drawRoundedRect(box.adjusted(0, 0, -1, -1), kRounding, kRounding);
    painter->setFont(font_);

    const int shown = std::min(static_cast<int>(entries_.size()), rows_ * columns_);
    for (int i = 0; i < shown; ++i) {
        const int row = isFilledByColumn_ ? i % rows_ : i / columns_;
        const int column = isFilledByColumn_ ? i / rows_ : i % columns_;
        const QRect cell(box.left() + kPadding + column * (entryWidth_ + kColumnGap),
                         box.top() + kPadding + row * entryHeight_, std::min(entryWidth_, box.width() - 2 * kPadding),
                         entryHeight_ - kRowGap);
        const int left = static_cast<int>(entries_.size()) - i;
        if (i == shown - 1 && left > 1) {
            painter->setPen(QPen(text_));
            painter->drawText(cell, Qt::AlignVCenter | Qt::TextSingleLine, QString("+ %1").arg(left));
        } else {
            drawEntry(painter, cell, entries_[static_cast<std::size_t>(i)]);
        }
    }
    painter->restore();
}

void ChartLegend::drawEntry(QCPPainter* painter, const QRect& cell, const Entry& entry) const {
    const int sample = isLine_ ? kSample : kBarSample;
    const double middle = cell.center().y() + 0.5;
    if (isLine_) {
        QPen pen = entry.pen;
        pen.setWidthF(std::max(pen.widthF(), 2.0));
        painter->setPen(pen);
        painter->drawLine(QPointF(cell.left() + 1, middle), QPointF(cell.left() + sample - 1, middle));
        if (entry.marks) entry.marks->drawShape(*painter, QPointF(cell.left() + sample / 2.0, middle));
    } else if (entry.marks) {
        entry.marks->fill(*painter, QRectF(cell.left(), middle - sample / 2.0, sample, sample));
    } else {
        painter->setPen(Qt::NoPen);
        painter->setBrush(entry.pen.color());
        painter->drawRect(QRectF(cell.left(), middle - sample / 2.0, sample, sample));
    }
    painter->setPen(QPen(text_));
    const QRect place = cell.adjusted(sample + kSampleGap, 0, 0, 0);
    const QFontMetricsF metrics(font_);
    const QString label = metrics.elidedText(entry.label, Qt::ElideRight, place.width());
    drawTextLine(*painter, QRectF(place).translated(0, (place.height() - metrics.height()) / 2), label,
                 label.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight, Qt::AlignLeft | Qt::AlignAbsolute);
}

} // namespace kestrane
