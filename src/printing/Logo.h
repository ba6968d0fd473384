// The company's logo, read once for all pages, and the picture of the brand that is used when there is none.
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
    // The picture of a file. isPicture() is false when the file does not exist, is no picture, or exceeds the limits in
    // Logo.cpp.
    static Logo ofFile(const std::string& path);
    static Logo ofBrand();

    bool isPicture() const { return drawing_ != nullptr || !image_.isNull(); }

    // The size that keeps the proportions and is as large as fits into a box.
    QSizeF sizeIn(const QSizeF& box) const;

    // Draws it with its proportions at the upper left of a box. Returns the width that it takes.
    double draw(QPainter& painter, const QRectF& box) const;

private:
    QImage image_;
    std::shared_ptr<QSvgRenderer> drawing_;
};

} // namespace kestrane
