#include "charts/ReadOut.h"

#include "charts/LevelColours.h"
#include "views/LevelMap.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kPadding = 7;
constexpr int kColumnGap = 14;
constexpr int kSwatch = 9;
constexpr int kFromLine = 10; // pixels between the box and the line
constexpr double kDot = 3;
constexpr double kRounding = 3;
constexpr int kOpacity = 240;
constexpr int kRowShade = 26; // opacity of the shade over a row of bars

} // namespace

ReadOut::ReadOut(QCPAxis* rows, std::pair<QCPAxis*, QCPAxis*> values, const ChartContent& content,
                 const ChartLooks& looks, const Locale& locale) :
    QCPLayerable(rows->parentPlot(), "overlay"),
    rows_(rows),
    primary_(values.first),
    secondary_(values.second),
    content_(content),
    looks_(looks),
    locale_(locale) {}

void ReadOut::show(std::optional<std::size_t> row, std::size_t band) {
    if (row == row_ && band == band_) return;
    row_ = row;
    band_ = band;
    layer()->replot();
}

QStringList ReadOut::lines() const {
    QStringList lines;
    if (!row_) return lines;
    lines.append(QString::fromStdString(content_.data.RowName(*row_)));
    for (const Line& line : valueLines())
        lines.append(line.label + ' ' + line.value);
    return lines;
}

std::vector<ReadOut::Line> ReadOut::lineOfBand() const {
    const ChartData& chart = content_.data;
    const float level = chart.Map->LevelAt(*row_, band_);
    if (isNullValue(level)) return {};
    const ChartRange scale = *chart.SecondaryRange;
    const double part = (static_cast<double>(level) - scale.Minimum) / (scale.Maximum - scale.Minimum);
    return {
        {QColor(levelColour(part)), QString::fromStdString(chart.Map->BandLabel(band_) + " " + chart.PrimaryTitle),
         QString::fromStdString(chartFigureText(level, locale_)),
         QPointF(rows_->coordToPixel(static_cast<double>(*row_)), primary_->coordToPixel(static_cast<double>(band_)))}};
}

std::vector<ReadOut::Line> ReadOut::valueLines() const {
    if (content_.data.Map) return lineOfBand();
    std::vector<Line> lines;
    for (std::size_t i = 0; i < content_.series.size(); ++i) {
        const ChartSeries& series = *content_.series[i];
        const float value = series.Values[*row_];
        if (isNullValue(value) || content_.isReference(i)) continue;
        const QCPAxis* const axis = series.Axis == ChartAxis::Primary ? primary_ : secondary_;
        lines.push_back(
            {looks_.color(content_, i), QString::fromStdString(series.Label),
             QString::fromStdString(chartFigureText(value, locale_)),
             QPointF(rows_->coordToPixel(static_cast<double>(*row_)), axis->coordToPixel(static_cast<double>(value)))});
    }
    return lines;
}

void ReadOut::draw(QCPPainter* painter) {
    if (!row_) return;
    const QRect area = rows_->axisRect()->rect();
    const double x = rows_->coordToPixel(static_cast<double>(*row_));
    if (x < area.left() || x > area.right() + 1) return;
    const std::vector<Line> lines = valueLines();
    painter->save();
    painter->setClipRect(area);
    painter->setPen(QPen(looks_.QuietText, 1));
    if (content_.data.Shape == ChartShape::Line) {
        painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        painter->setPen(QPen(looks_.Background, 1));
        for (const Line& line : lines) {
            painter->setBrush(line.color);
            painter->drawEllipse(line.point, kDot, kDot);
        }
    } else if (!content_.hasSeriesAsRows()) {
        QColor shade = looks_.Text;
        shade.setAlpha(kRowShade);
        const double half = rows_->coordToPixel(0.5) - rows_->coordToPixel(0);
        painter->fillRect(QRectF(x - half, area.top(), 2 * half, area.height()), shade);
    }
    drawBox(painter, x, lines);
    painter->restore();
}

void ReadOut::drawBox(QCPPainter* painter, double x, const std::vector<Line>& lines) const {
    const QRect area = rows_->axisRect()->rect();
    QFont font = looks_.font(content_.data.AxisFont);
    QFont bold = font;
    bold.setBold(true);
    const QFontMetrics metrics(font);
    const QString name = QString::fromStdString(content_.data.RowName(*row_));
    int labels = 0;
    int values = 0;
    for (const Line& line : lines) {
        labels = std::max(labels, metrics.horizontalAdvance(line.label));
        values = std::max(values, metrics.horizontalAdvance(line.value));
    }
    const int pitch = metrics.height() + 1;
    const int fitting = (area.height() - 2 * kPadding) / pitch - 1;
    const int shown = std::clamp(static_cast<int>(lines.size()), 0, std::max(0, fitting));
    const int width =
        std::max(kSwatch + kPadding + labels + kColumnGap + values, QFontMetrics(bold).horizontalAdvance(name));
    QRect box(0, area.top() + kPadding, width + 2 * kPadding, (shown + 1) * pitch + 2 * kPadding);
    box.moveLeft(static_cast<int>(x) + kFromLine);
    if (box.right() > area.right()) box.moveRight(static_cast<int>(x) - kFromLine);
    box.moveLeft(std::max(box.left(), area.left()));

    QColor background = looks_.Background;
    background.setAlpha(kOpacity);
    painter->setPen(QPen(looks_.Frame, 1));
    painter->setBrush(background);
    painter->drawRoundedRect(box, kRounding, kRounding);
    QRect line(box.left() + kPadding, box.top() + kPadding, width, pitch);
    painter->setPen(QPen(looks_.Text));
    painter->setFont(bold);
    painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, name);
    painter->setFont(font);
    for (int i = 0; i < shown; ++i) {
        const Line& one = lines[static_cast<std::size_t>(i)];
        line.translate(0, pitch);
        painter->fillRect(QRect(line.left(), line.center().y() - kSwatch / 2, kSwatch, kSwatch), one.color);
        painter->drawText(line.adjusted(kSwatch + kPadding, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, one.label);
        painter->drawText(line, Qt::AlignRight | Qt::AlignVCenter, one.value);
    }
}

} // namespace kestrane
