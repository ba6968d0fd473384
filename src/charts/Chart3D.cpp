#include "charts/Chart3D.h"

#include "charts/ExcludedShade.h"
#include "charts/SeriesMarks.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kLane = 0.68;      // of a lane's depth, taken by its ribbon or blocks
constexpr double kBlock = 0.66;     // of a row's width, taken by a block
constexpr double kBlockDepth = 1;   // at most this part of a block's width
constexpr double kWidestBlock = 72; // pixels
// A ribbon has a point for every so many pixels at most; of more rows, the lowest and highest of several are drawn.
constexpr double kPixelsPerPoint = 2;
constexpr int kGap = 6;         // pixels between the room and its labels
constexpr int kLaneLabel = 110; // pixels, the most for a lane's label
constexpr int kFarTurn = -1;    // quarters by which the painter is turned for a title that reads upwards

constexpr int kTop = 118;  // lightness of top faces, percent
constexpr int kSide = 132; // darkness of side faces, percent
constexpr int kUnderside = 140;
constexpr int kEdge = 135;
constexpr int kLevel = 106;   // lightness of a horizontal piece of ribbon
constexpr double kSteep = 22; // how much lighter a piece is that slopes down to the right, towards the eye

// The order of the series in depth. Lines: the first series is in front, and curves to compare with come last. Bars
// would hide what is behind them, so they go from the lowest to the highest.
std::vector<std::size_t> frontToBack(const ChartContent& content) {
    std::vector<std::size_t> order(content.series.size());
    for (std::size_t lane = 0; lane < order.size(); ++lane)
        order[lane] = (lane + content.data.ReferenceSeries) % order.size();
    if (content.data.Shape == ChartShape::Line) return order;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return content.extents[a].ofAll().Highest < content.extents[b].ofAll().Highest;
    });
    return order;
}

double signedArea(const QPolygonF& quad) {
    const QPointF a = quad[1] - quad[0];
    const QPointF b = quad[3] - quad[0];
    return a.x() * b.y() - a.y() * b.x();
}

} // namespace

Chart3D::Chart3D(QCustomPlot* plot, const ChartContent& content, const ChartLooks& looks, const Locale& locale) :
    QCPLayoutElement(plot),
    content_(content),
    looks_(looks),
    locale_(locale),
    font_(looks.font(content.data.AxisFont)),
    metrics_(font_),
    primary_(content.valueRange(ChartAxis::Primary)),
    secondary_(content.valueRange(ChartAxis::Secondary)),
    references_(content.data.Shape == ChartShape::Line ? content.data.ReferenceSeries : 0),
    lanes_(content.hasSeriesAsRows() ? 1 : content.series.size() - references_),
    order_(frontToBack(content)),
    categories_(content) {}

double Chart3D::rowPosition(double row) const {
    return (row + 0.5) / static_cast<double>(content_.data.RowCount);
}

double Chart3D::heightOf(ChartAxis axis, double value) const {
    const ChartRange& range = axis == ChartAxis::Primary ? primary_ : secondary_;
    return std::clamp((value - range.Minimum) / (range.Maximum - range.Minimum), 0.0, 1.0);
}

double Chart3D::laneFront(std::size_t lane) const {
    return (static_cast<double>(lane) + (1 - kLane) / 2) / static_cast<double>(lanes_);
}

double Chart3D::laneBack(std::size_t lane) const {
    return laneFront(lane) + kLane / static_cast<double>(lanes_);
}

Chart3D::Marks Chart3D::valueMarks(ChartAxis axis) const {
    const ChartRange& range = axis == ChartAxis::Primary ? primary_ : secondary_;
    ValueTicker ticker(locale_);
    ticker.fit(static_cast<int>(room_.height()), metrics_);
    QVector<double> ticks;
    QVector<QString> labels;
    ticker.generate({range.Minimum, range.Maximum}, QLocale::c(), 'f', 0, ticks, nullptr, &labels);
    Marks marks;
    for (qsizetype i = 0; i < ticks.size(); ++i) {
        marks.positions.push_back(heightOf(axis, ticks[i]));
        marks.labels.append(labels[i]);
    }
    return marks;
}

Chart3D::Marks Chart3D::rowMarks() {
    const QCPRange rows(-0.5, static_cast<double>(content_.data.RowCount) - 0.5);
    rotation_ = categories_.fit(rows, static_cast<int>(room_.width()), metrics_);
    QVector<double> ticks;
    QVector<QString> labels;
    categories_.generate(rows, QLocale::c(), 'f', 0, ticks, nullptr, &labels);
    Marks marks;
    for (const double tick : ticks)
        marks.positions.push_back(rowPosition(tick));
    marks.labels = labels;
    return marks;
}

// The labels are outside of the room, which gets the space that they leave.
void Chart3D::fitRoom() {
    const int line = metrics_.height() + kGap;
    QRectF area = rect();
    area.adjust(4 * metrics_.height(), kGap, -2 * line, -line);
    room_ = Room3D(area, static_cast<int>(lanes_)); // a first guess, from which the sizes of the labels follow
    valueLabelWidth_ = 0;
    for (const QString& label : valueMarks(ChartAxis::Primary).labels)
        valueLabelWidth_ = std::max(valueLabelWidth_, metrics_.horizontalAdvance(label));
    int right = kGap;
    if (content_.data.HasSecondaryAxis) {
        for (const QString& label : valueMarks(ChartAxis::Secondary).labels)
            right = std::max(right, metrics_.horizontalAdvance(label) + 2 * kGap + line);
    }
    if (lanes_ > 1 || references_ > 0) {
        for (const ChartSeries* series : content_.series)
            right =
                std::max(right, 2 * kGap + std::min(kLaneLabel,
                                                    metrics_.horizontalAdvance(QString::fromStdString(series->Label))));
    }
    int below = kGap + metrics_.height();
    const QStringList rowLabels = rowMarks().labels;
    if (rotation_ != 0) {
        for (const QString& label : rowLabels)
            below = std::max(below, kGap + metrics_.horizontalAdvance(label));
    }
    if (!content_.data.CategoryTitle.empty()) below += line;
    area = rect();
    area.adjust(valueLabelWidth_ + 2 * kGap + (content_.data.PrimaryTitle.empty() ? 0 : line), kGap, -right, -below);
    room_ = Room3D(area, static_cast<int>(lanes_));
}

void Chart3D::draw(QCPPainter* painter) {
    if (rect().isEmpty()) return; // the window is too small for a chart
    painter->save();
    fitRoom();
    drawWalls(*painter);
    drawExcluded(*painter);
    drawGrid(*painter);
    for (std::size_t lane = lanes_; lane > 0; --lane) {
        if (content_.data.Shape == ChartShape::Line) {
            drawRibbon(*painter, lane - 1);
        } else {
            drawBlocks(*painter, lane - 1);
        }
    }
    drawReferences(*painter);
    drawLabels(*painter);
    drawLaneLabels(*painter);
    drawTitles(*painter);
    painter->restore();
}

void Chart3D::drawWalls(QCPPainter& painter) {
    const QColor wall = looks_.Excluded;
    painter.setPen(QPen(looks_.Frame, 1));
    painter.setBrush(looks_.Background);
    painter.drawPolygon(room_.facing(0, 0, 1, 1, 1));
    painter.setBrush(looks_.IsDark ? wall.darker(112) : wall.lighter(103));
    painter.drawPolygon(room_.aside(0, 0, 1, 0, 1));
    painter.setBrush(wall);
    painter.drawPolygon(room_.level(0, 1, 0, 0, 1));
}

void Chart3D::drawExcluded(QCPPainter& painter) const {
    QColor shade = looks_.QuietText;
    shade.setAlpha(36);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    const QCPRange rows(-0.5, static_cast<double>(content_.data.RowCount) - 0.5);
    for (const QCPRange& span : excludedSpans(content_.data, rows, room_.width())) {
        const double x0 = rowPosition(span.lower);
        const double x1 = rowPosition(span.upper);
        painter.drawPolygon(room_.level(x0, x1, 0, 0, 1));
        painter.drawPolygon(room_.facing(x0, 0, x1, 1, 1));
    }
}

void Chart3D::drawGrid(QCPPainter& painter) {
    painter.setPen(QPen(looks_.Grid, 1, Qt::DotLine));
    for (const double y : valueMarks(ChartAxis::Primary).positions) {
        painter.drawLine(room_.at(0, y, 0), room_.at(0, y, 1));
        painter.drawLine(room_.at(0, y, 1), room_.at(1, y, 1));
    }
    if (content_.hasSeriesAsRows()) return;
    for (const double x : rowMarks().positions) {
        painter.drawLine(room_.at(x, 0, 0), room_.at(x, 0, 1));
        painter.drawLine(room_.at(x, 0, 1), room_.at(x, 1, 1));
    }
}

void Chart3D::drawLabels(QCPPainter& painter) {
    painter.setFont(font_);
    painter.setPen(QPen(looks_.Text));
    const double half = metrics_.height() / 2.0;
    const Marks values = valueMarks(ChartAxis::Primary);
    for (std::size_t i = 0; i < values.positions.size(); ++i) {
        const QPointF point = room_.at(0, values.positions[i], 0);
        painter.drawText(QRectF(point.x() - kGap - valueLabelWidth_, point.y() - half, valueLabelWidth_, 2 * half),
                         Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, values.labels[static_cast<int>(i)]);
    }
    if (content_.data.HasSecondaryAxis) {
        const Marks others = valueMarks(ChartAxis::Secondary);
        for (std::size_t i = 0; i < others.positions.size(); ++i) {
            const QPointF point = room_.at(1, others.positions[i], 1);
            const double lastLane = room_.at(1, 0, (laneFront(lanes_ - 1) + laneBack(lanes_ - 1)) / 2).y();
            if (lanes_ > 1 && point.y() + 2 * half > lastLane) continue; // the label of the last lane is there
            painter.drawText(QRectF(point.x() + kGap, point.y() - half, 1, 2 * half),
                             Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, others.labels[static_cast<int>(i)]);
        }
    }
    const Marks rows = rowMarks();
    for (std::size_t i = 0; i < rows.positions.size(); ++i)
        drawRowLabel(painter, room_.at(rows.positions[i], 0, 0), rows.labels[static_cast<int>(i)]);
}

void Chart3D::drawRowLabel(QCPPainter& painter, const QPointF& point, const QString& label) const {
    if (rotation_ == 0) {
        painter.drawText(QRectF(point.x(), point.y() + kGap, 0, metrics_.height()),
                         Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, label);
        return;
    }
    painter.save();
    painter.translate(point + QPointF(0, kGap));
    painter.rotate(rotation_);
    painter.drawText(QRectF(0, -metrics_.height() / 2.0, 0, metrics_.height()),
                     Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, label);
    painter.restore();
}

// Draws the labels at the right edge of the floor; when the lanes are close together, only every second or fourth has
// one.
void Chart3D::drawLaneLabels(QCPPainter& painter) const {
    if (lanes_ < 2) return;
    const double between = room_.floorRise() / static_cast<double>(lanes_);
    std::size_t every = 1;
    while (between * static_cast<double>(every) < metrics_.height() * 0.9 && every < lanes_)
        every *= 2;
    painter.setFont(font_);
    painter.setPen(QPen(looks_.QuietText));
    for (std::size_t lane = 0; lane < lanes_; lane += every) {
        const QPointF point = room_.at(1, 0, (laneFront(lane) + laneBack(lane)) / 2) + QPointF(kGap, 0);
        const QString label = QString::fromStdString(content_.series[order_[lane]]->Label);
        painter.drawText(QRectF(point.x(), point.y() - metrics_.height() / 2.0, kLaneLabel, metrics_.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, metrics_.elidedText(label, Qt::ElideRight, kLaneLabel));
    }
}

void Chart3D::drawTitles(QCPPainter& painter) const {
    painter.setFont(font_);
    painter.setPen(QPen(looks_.axisTitleColor(content_.data)));
    const QPointF front = room_.at(0.5, 0, 0);
    painter.drawText(QRectF(front.x(), rect().bottom() - metrics_.height(), 0, metrics_.height()),
                     Qt::AlignHCenter | Qt::AlignBottom | Qt::TextDontClip,
                     QString::fromStdString(content_.data.CategoryTitle));
    const auto upright = [&](double x, double y, const std::string& title) {
        painter.save();
        painter.translate(x, y);
        painter.rotate(kFarTurn * 90);
        painter.drawText(QRectF(0, -metrics_.height() / 2.0, 0, metrics_.height()),
                         Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextDontClip, QString::fromStdString(title));
        painter.restore();
    };
    upright(rect().left() + metrics_.height() / 2.0, room_.at(0, 0.5, 0).y(), content_.data.PrimaryTitle);
    if (content_.data.HasSecondaryAxis)
        upright(rect().right() - metrics_.height() / 2.0, room_.at(1, 0.5, 1).y(), content_.data.SecondaryTitle);
}

std::vector<Chart3D::Point> Chart3D::pointsOf(std::size_t drawn) const {
    const ChartSeries& series = *content_.series[drawn];
    const std::size_t count = series.Values.size();
    const auto pieces = static_cast<std::size_t>(std::max(2.0, room_.width() / kPixelsPerPoint / 2));
    std::vector<Point> points;
    const auto add = [&](double row, float value) {
        const bool isGap = isNullValue(value);
        points.push_back({rowPosition(row), isGap ? 0 : heightOf(series.Axis, static_cast<double>(value)), isGap});
    };
    if (count <= 2 * pieces) {
        for (std::size_t row = 0; row < count; ++row)
            add(static_cast<double>(row), series.Values[row]);
        return points;
    }
    for (std::size_t piece = 0; piece < pieces; ++piece) {
        const std::size_t begin = piece * count / pieces;
        const std::size_t end = (piece + 1) * count / pieces;
        const Extent extent = content_.extents[drawn].of(begin, end);
        const auto quarter = static_cast<double>(end - begin) / 4;
        add(static_cast<double>(begin) + quarter, extent.isEmpty() ? kNullValue : extent.Lowest);
        add(static_cast<double>(begin) + 3 * quarter, extent.isEmpty() ? kNullValue : extent.Highest);
    }
    return points;
}

// Draws the ribbon in pieces, beginning at the left, which is the far end. A value between two gaps is a flat piece,
// half as wide as a row.
void Chart3D::drawRibbon(QCPPainter& painter, std::size_t lane) const {
    const std::size_t drawn = order_[lane];
    const QColor color = looks_.color(content_, drawn);
    const double z0 = laneFront(lane);
    const double z1 = laneBack(lane);
    const double quarter = 0.25 / static_cast<double>(content_.data.RowCount);
    const double rowsWide = room_.width() / static_cast<double>(content_.data.RowCount);
    QPen edge(color.darker(kEdge), std::clamp(content_.data.LineWidth / 20.0 * 0.75, 0.5, 2.0));
    edge.setCapStyle(Qt::RoundCap);
    const auto drawPiece = [&](const Point& from, const Point& to) {
        const QPolygonF quad = room_.acrossDepth(from.x, from.y, to.x, to.y, z0, z1);
        const double steepness = std::atan((to.y - from.y) * room_.height() / std::max(1.0, rowsWide)) / M_PI_2;
        const int light = static_cast<int>(kLevel - kSteep * steepness);
        const bool isUnderside = signedArea(quad) > 0;
        const QColor face = isUnderside ? color.darker(kUnderside) : color.lighter(light);
        painter.setBrush(face);
        painter.setPen(QPen(face, 0.6));
        painter.drawPolygon(quad);
        painter.setPen(edge);
        painter.drawLine(quad[0], quad[1]);
        painter.drawLine(quad[3], quad[2]);
    };
    const std::vector<Point> points = pointsOf(drawn);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (points[i].isGap) continue;
        const bool isJoined = i > 0 && !points[i - 1].isGap;
        const bool goesOn = i + 1 < points.size() && !points[i + 1].isGap;
        if (isJoined) drawPiece(points[i - 1], points[i]);
        if (!isJoined && !goesOn)
            drawPiece({points[i].x - quarter, points[i].y, false}, {points[i].x + quarter, points[i].y, false});
    }
    drawShapes(painter, drawn, z0);
}

// Draws the shapes by which a series differs without its colour, along the front edge of its ribbon.
void Chart3D::drawShapes(QCPPainter& painter, std::size_t drawn, double z) const {
    const std::optional<SeriesMarks> marks = SeriesMarks::of(content_, drawn, looks_);
    if (!marks) return;
    const ChartSeries& series = *content_.series[drawn];
    const std::size_t step = marks->RowsBetween(room_.width() / static_cast<double>(content_.data.RowCount));
    for (std::size_t row = marks->FirstRow(step); row < series.Values.size(); row += step) {
        const float value = series.Values[row];
        if (isNullValue(value)) continue;
        const double height = heightOf(series.Axis, static_cast<double>(value));
        marks->drawShape(painter, room_.at(rowPosition(static_cast<double>(row)), height, z));
    }
}

void Chart3D::drawLine(QCPPainter& painter, std::size_t drawn, double z, double width) const {
    QPolygonF line;
    for (const Point& point : pointsOf(drawn))
        if (!point.isGap) line << room_.at(point.x, point.y, z);
    painter.setPen(QPen(looks_.color(content_, drawn), width));
    painter.drawPolyline(line);
}

// Curves to compare with are lines in the plane of the front edge of the first ribbon, so that they can be compared
// with it by eye; that edge is drawn over them again. A label that would cover the one below it is left out.
void Chart3D::drawReferences(QCPPainter& painter) const {
    if (references_ == 0) return;
    const double front = laneFront(0);
    double below = room_.at(1, 0, front).y();
    painter.setFont(font_);
    for (std::size_t drawn = 0; drawn < references_; ++drawn) {
        drawLine(painter, drawn, front, 1);
        const std::vector<Point> points = pointsOf(drawn);
        const QPointF end = room_.at(points.back().x, points.back().y, front) + QPointF(kGap, 0);
        if (below - end.y() < metrics_.height() * 0.8) continue;
        below = end.y();
        painter.setPen(QPen(looks_.QuietText));
        painter.drawText(QRectF(end.x(), end.y() - metrics_.height() / 2.0, kLaneLabel, metrics_.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(content_.series[drawn]->Label));
    }
    drawLine(painter, order_.front(), front, 2);
}

void Chart3D::drawBlocks(QCPPainter& painter, std::size_t lane) const {
    const bool isSeriesAsRows = content_.hasSeriesAsRows();
    const double middleOfLane = (laneFront(lane) + laneBack(lane)) / 2;
    const auto drawOne = [&](double middle, std::size_t drawn, double pitch, float value) {
        if (isNullValue(value)) return;
        const ChartAxis axis = content_.series[drawn]->Axis;
        const double half = std::min(pitch * kBlock, kWidestBlock / room_.width()) / 2;
        const double halfDepth =
            std::min(laneBack(lane) - middleOfLane, kBlockDepth * half * room_.width() / room_.depth());
        const double z0 = middleOfLane - halfDepth;
        const double z1 = middleOfLane + halfDepth;
        const double zero = heightOf(axis, 0);
        const double tip = heightOf(axis, static_cast<double>(value));
        drawBlock(painter, drawn, {middle - half, std::min(zero, tip)}, {middle + half, std::max(zero, tip)}, z0, z1);
        if (lanes_ == 1 && metrics_.averageCharWidth() * 6 < pitch * room_.width())
            drawFigure(painter, middle, std::max(zero, tip), z1, value);
    };
    if (isSeriesAsRows) {
        const double pitch = 1.0 / static_cast<double>(content_.series.size());
        for (std::size_t i = 0; i < content_.series.size(); ++i)
            drawOne((static_cast<double>(i) + 0.5) * pitch, i, pitch, content_.series[i]->Values[0]);
        return;
    }
    const std::size_t drawn = order_[lane];
    const double pitch = 1.0 / static_cast<double>(content_.data.RowCount);
    for (std::size_t row = 0; row < content_.data.RowCount; ++row)
        drawOne(rowPosition(static_cast<double>(row)), drawn, pitch, content_.series[drawn]->Values[row]);
}

// Draws the block between the corners of its front, at the lower left and the upper right.
void Chart3D::drawBlock(QCPPainter& painter, std::size_t drawn, const QPointF& low, const QPointF& high, double z0,
                        double z1) const {
    const QColor color = looks_.color(content_, drawn);
    const auto drawFace = [&](const QPolygonF& face, const QColor& shade) {
        painter.setPen(QPen(color.darker(kUnderside), 0.6));
        painter.setBrush(shade);
        painter.drawPolygon(face);
    };
    drawFace(room_.aside(high.x(), low.y(), high.y(), z0, z1), color.darker(kSide));
    drawFace(room_.level(low.x(), high.x(), high.y(), z0, z1), color.lighter(kTop));
    const QPolygonF front = room_.facing(low.x(), low.y(), high.x(), high.y(), z0);
    if (const std::optional<SeriesMarks> marks = SeriesMarks::of(content_, drawn, looks_)) {
        marks->fill(painter, front);
    } else {
        drawFace(front, color);
    }
}

void Chart3D::drawFigure(QCPPainter& painter, double x, double y, double z, float value) const {
    const QPointF point = room_.at(x, y, z);
    painter.setFont(font_);
    painter.setPen(QPen(looks_.QuietText));
    painter.drawText(QRectF(point.x(), point.y() - metrics_.height() - 2, 0, metrics_.height()),
                     Qt::AlignHCenter | Qt::AlignBottom | Qt::TextDontClip,
                     QString::fromStdString(chartFigureText(value, locale_)));
}

} // namespace kestrane
