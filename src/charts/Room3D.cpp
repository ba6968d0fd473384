#include "charts/Room3D.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr double kDepthOfOne = 0.05;   // as a part of the area's width, for one lane
constexpr double kDepthOfMore = 0.022; // for each further lane
constexpr double kDeepest = 0.32;
constexpr double kRise = 0.62;       // pixels that the floor rises for each pixel to the right
constexpr double kHighestRise = 0.4; // as a part of the area's height
constexpr double kFall = 0.06;       // pixels that the front edge falls for each pixel to the right
constexpr double kDeepestFall = 0.1; // as a part of the area's height

} // namespace

Room3D::Room3D(const QRectF& area, int lanes) {
    const double depth = area.width() * std::min(kDeepest, kDepthOfOne + (lanes - 1) * kDepthOfMore);
    const double rise = std::min(depth * kRise, area.height() * kHighestRise);
    const double width = area.width() - depth;
    const double fall = std::min(width * kFall, area.height() * kDeepestFall);
    const double height = std::max(1.0, area.height() - rise - fall);
    origin_ = QPointF(area.left(), area.bottom() - fall);
    x_ = QPointF(width, fall);
    y_ = QPointF(0, -height);
    z_ = QPointF(depth, -rise);
}

QPolygonF Room3D::acrossDepth(double x0, double y0, double x1, double y1, double z0, double z1) const {
    return QPolygonF({at(x0, y0, z0), at(x1, y1, z0), at(x1, y1, z1), at(x0, y0, z1)});
}

QPolygonF Room3D::facing(double x0, double y0, double x1, double y1, double z) const {
    return QPolygonF({at(x0, y0, z), at(x1, y0, z), at(x1, y1, z), at(x0, y1, z)});
}

QPolygonF Room3D::aside(double x, double y0, double y1, double z0, double z1) const {
    return QPolygonF({at(x, y0, z0), at(x, y0, z1), at(x, y1, z1), at(x, y1, z0)});
}

QPolygonF Room3D::level(double x0, double x1, double y, double z0, double z1) const {
    return QPolygonF({at(x0, y, z0), at(x1, y, z0), at(x1, y, z1), at(x0, y, z1)});
}

} // namespace kestrane
