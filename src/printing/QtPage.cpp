#include "printing/QtPage.h"

#include "charts/ChartPage.h"

#include <QPainter>

#include <utility>

namespace kestrane {

namespace {

constexpr double kRuleWidth = kPaperDots / 72 / 2; // half a point
constexpr QRgb kRuleColor = 0xFF8A9097;

QRectF dots(const PageBox& box) {
    return {box.Left * kCentimetre, box.Top * kCentimetre, box.Width * kCentimetre, box.Height * kCentimetre};
}

} // namespace

QtPage::QtPage(const Paper& paper, Locale locale, QPainter& painter, double scale, std::function<void()> next) :
    paper_(paper), locale_(std::move(locale)), painter_(painter), next_(std::move(next)) {
    painter_.save();
    painter_.scale(scale, scale);
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform);
    painter_.setPen(Qt::black);
}

QtPage::~QtPage() {
    painter_.restore();
}

void QtPage::newPage() {
    next_();
}

void QtPage::text(double x, double top, std::string_view text, const PageFont& font, PageAlign align) {
    const ShapedText& shaped = paper_.shaped(text, font);
    const double left = x * kCentimetre - (align == PageAlign::Right ? shaped.Width : 0);
    for (const QGlyphRun& run : shaped.Runs)
        painter_.drawGlyphRun(QPointF(left, top * kCentimetre), run);
}

void QtPage::rule(double left, double top, double width) {
    painter_.fillRect(QRectF(left * kCentimetre, top * kCentimetre, width * kCentimetre, kRuleWidth),
                      QColor(kRuleColor));
}

double QtPage::picture(const std::string& path, const PageBox& box) {
    const Logo& logo = paper_.picture(path);
    return logo.isPicture() ? logo.draw(painter_, dots(box)) / kCentimetre : 0;
}

double QtPage::brandPicture(const PageBox& box) {
    return picture({}, box);
}

void QtPage::chart(const ChartOnPage& chart, const PageBox& box) {
    drawChart(painter_, dots(box), kPaperDots, chart, locale_);
}

} // namespace kestrane
