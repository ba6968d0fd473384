// The room that a chart in 3D stands in, seen from the front, above and right by parallel lines of sight: x runs along
// the rows, y up and z into the depth, each from 0 to 1. Farther is what has the larger z and, at one z, the smaller x;
// who draws in that order hides what is hidden.
#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

namespace kestrane {

class Room3D {
public:
    Room3D() = default;

    // Fills the area. The room is the deeper the more lanes stand one behind the other in it.
    Room3D(const QRectF& area, int lanes);

    QPointF at(double x, double y, double z) const { return origin_ + x * x_ + y * y_ + z * z_; }

    double width() const { return x_.x(); } // pixels, of the front edge

    double height() const { return -y_.y(); } // pixels

    double depth() const { return z_.x(); } // pixels that the back lies to the right of the front

    double floorRise() const { return -z_.y(); } // pixels that the back of the floor lies above the front

    QPolygonF acrossDepth(double x0, double y0, double x1, double y1, double z0, double z1) const; // a ribbon's piece
    QPolygonF facing(double x0, double y0, double x1, double y1, double z) const; // parallel to the back
    QPolygonF aside(double x, double y0, double y1, double z0, double z1) const;  // parallel to the side
    QPolygonF level(double x0, double x1, double y, double z0, double z1) const;  // parallel to the floor

private:
    QPointF origin_, x_, y_, z_;
};

} // namespace kestrane
