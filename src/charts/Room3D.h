// The room that contains a chart in 3D, seen from the front, above and right along parallel lines of sight: x runs
// along the rows, y upwards and z into the depth, each from 0 to 1. A point is farther away when its z is larger or, at
// the same z, when its x is smaller. Drawing from the farthest to the nearest hides what is hidden.
#pragma once

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

namespace kestrane {

class Room3D {
public:
    Room3D() = default;

    // Makes a room that fills the area. More lanes, one behind the other, make it deeper.
    Room3D(const QRectF& area, int lanes);

    QPointF at(double x, double y, double z) const { return origin_ + x * x_ + y * y_ + z * z_; }

    double width() const { return x_.x(); } // pixels, of the front edge

    double height() const { return -y_.y(); } // pixels

    double depth() const { return z_.x(); } // pixels by which the back is to the right of the front

    double floorRise() const { return -z_.y(); } // pixels by which the back of the floor is above the front

    // A piece of a ribbon.
    QPolygonF acrossDepth(double x0, double y0, double x1, double y1, double z0, double z1) const;
    QPolygonF facing(double x0, double y0, double x1, double y1, double z) const; // parallel to the back
    QPolygonF aside(double x, double y0, double y1, double z0, double z1) const;  // parallel to the side
    QPolygonF level(double x0, double x1, double y, double z0, double z1) const;  // parallel to the floor

private:
    QPointF origin_, x_, y_, z_;
};

} // namespace kestrane
