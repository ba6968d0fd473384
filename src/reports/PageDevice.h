// What a report is drawn on: a page measured in centimetres, of a printer, of a PDF file, on the screen or in a test.
// The origin is the upper left corner of the paper. A device only draws; its caller decides where things are.
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

// The size of the paper, and how much space a text takes on it. Both are known before the first page is drawn.
class PageMetrics {
public:
    virtual ~PageMetrics() = default;

    virtual double width() const = 0;
    virtual double height() const = 0;
    virtual double textWidth(std::string_view text, const PageFont& font) const = 0;
    virtual double lineHeight(const PageFont& font) const = 0; // the height of "Xy"

    // The width that a picture will take in a box. An empty path stands for the picture of the brand. 0 when there is
    // no such picture.
    virtual double pictureWidth(const std::string& path, const PageBox& box) const = 0;

    // The height, in centimetres, that the plot of a chart will have in a box of this size, without its axes' labels,
    // title, legend and note.
    virtual double plotHeight(const ChartOnPage& chart, double width, double height) const = 0;

    // Whether a chart in a box of this size shows its note in part only.
    virtual bool cutsNote(const ChartOnPage& chart, double width, double height) const = 0;

    bool isLandscape() const { return width() > height(); }
};

class PageDevice {
public:
    virtual ~PageDevice() = default;

    virtual void newPage() = 0; // begins another page; the first one is there from the start

    // Draws a line of text with its top at top. It begins at x, or with PageAlign::Right it ends there.
    virtual void text(double x, double top, std::string_view text, const PageFont& font,
                      PageAlign align = PageAlign::Left) = 0;
    virtual void rule(double left, double top, double width) = 0; // a thin horizontal line

    // Draws the picture of a file, with its proportions, at the upper left of a box, and returns the width that it
    // takes. Returns 0 and draws nothing when there is no such picture.
    virtual double picture(const std::string& path, const PageBox& box) = 0;
    virtual double brandPicture(const PageBox& box) = 0;

    virtual void chart(const ChartOnPage& chart, const PageBox& box) = 0;
};

} // namespace kestrane
