// What a report is drawn on: a page in centimetres, whether of a printer, of a PDF file, on the screen or of a test.
// The origin is the upper left corner of the paper. A device draws; where things stand was decided by who calls it.
#pragma once

#include "views/ChartOnPage.h"

#include <string>
#include <string_view>

namespace kestrane {

struct PageFont {
    double Points = 7;
    bool IsBold = false;

    bool operator==(const PageFont&) const = default;
};

struct PageBox {
    double Left = 0, Top = 0, Width = 0, Height = 0;
};

enum class PageAlign { Left, Right };

// The paper, and how much room a text takes on it. Both come before the first page is drawn.
class PageMetrics {
public:
    virtual ~PageMetrics() = default;

    virtual double width() const = 0;
    virtual double height() const = 0;
    virtual double textWidth(std::string_view text, const PageFont& font) const = 0;
    virtual double lineHeight(const PageFont& font) const = 0; // of "Xy"

    // The width that a picture is going to take of a box; an empty path is the picture of the brand. 0: there is no
    // such picture.
    virtual double pictureWidth(const std::string& path, const PageBox& box) const = 0;

    bool isLandscape() const { return width() > height(); }
};

class PageDevice {
public:
    virtual ~PageDevice() = default;

    virtual void newPage() = 0; // the first is there

    // A line of text with its top at top. It begins at x, or with PageAlign::Right ends there.
    virtual void text(double x, double top, std::string_view text, const PageFont& font,
                      PageAlign align = PageAlign::Left) = 0;
    virtual void rule(double left, double top, double width) = 0; // a thin horizontal line

    // Draws the picture of a file, in proportion, at the upper left of a box, and returns the width that it takes. 0:
    // there is no such picture, and nothing is drawn.
    virtual double picture(const std::string& path, const PageBox& box) = 0;
    virtual double brandPicture(const PageBox& box) = 0;

    virtual void chart(const ChartOnPage& chart, const PageBox& box) = 0;
};

} // namespace kestrane
