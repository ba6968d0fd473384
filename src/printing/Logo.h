// The company's logo, read once for all pages, and the picture of the brand that stands in for it.
#pragma once

#include <QImage>
#include <QSvgRenderer>

#include <memory>
#include <string>

class QPainter;
class QRectF;

namespace kestrane {

class Logo {
public:
    // The picture of a file. It is none when the file is not there or is no picture, or when the picture is so large
    // that it would not fit into memory many times over.
    static Logo ofFile(const std::string& path);
    static Logo ofBrand();

    bool isPicture() const { return drawing_ != nullptr || !image_.isNull(); }

    // In proportion, as wide as it can be in a box.
    QSizeF sizeIn(const QSizeF& box) const;

    // In proportion, at the upper left of a box. Returns the width taken.
    double draw(QPainter& painter, const QRectF& box) const;

private:
    QImage image_;
    std::shared_ptr<QSvgRenderer> drawing_;
};

} // namespace kestrane
