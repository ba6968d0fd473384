#include "charts/ExcludedShade.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kHatch = 8; // pixels from one line to the next
constexpr int kVeil = 150;   // opacity of the shade over a map of levels

// Lines that rise to the right through a rectangle. Lines of neighbouring rectangles continue each other. They are cut
// to the rectangle here, because not every device that is drawn on can clip.
void addHatching(QList<QLineF>& lines, const QRectF& area) {
    const auto lineAt = [](double sum) { return static_cast<int>(std::ceil(sum / kHatch)); };
    const int end = lineAt(area.right() + area.bottom());
    for (int line = lineAt(area.left() + area.top()); line < end; ++line) {
        const double sum = line * kHatch; // of x and y along the line
        const double from = std::max(area.left(), sum - area.bottom());
        const double to = std::min(area.right(), sum - area.top());
        if (from < to) lines.append(QLineF(from, sum - from, to, sum - to));
    }
}

} // namespace

std::vector<QCPRange> excludedSpans(const ChartData& chart, const QCPRange& rows, double pixels) {
    const std::vector<std::uint8_t>& excluded = chart.ExcludedRows;
    const auto count = static_cast<double>(excluded.size());
    const auto begin = static_cast<std::size_t>(std::clamp(std::floor(rows.lower), 0.0, count));
    const auto end = static_cast<std::size_t>(std::clamp(std::ceil(rows.upper) + 1, 0.0, count));
    const double pixel = rows.size() / pixels;
    std::vector<QCPRange> spans;
    for (std::size_t row = begin; row < end; ++row) {
        if (excluded[row] == 0) continue;
        const double left = std::max(rows.lower, static_cast<double>(row) - 0.5);
        const double right = std::min(rows.upper, static_cast<double>(row) + 0.5);
        if (!spans.empty() && left - spans.back().upper < pixel) {
            spans.back().upper = right;
        } else if (right > left) {
            spans.emplace_back(left, right);
        }
    }
    return spans;
}

ExcludedShade::ExcludedShade(QCPAxis* rows, const ChartContent& content, const ChartLooks& looks) :
    QCPLayerable(rows->parentPlot(), content.data.Map ? "axes" : "background"),
    rows_(rows),
    content_(content),
    looks_(looks) {}

void ExcludedShade::draw(QCPPainter* painter) {
    const QRect area = rows_->axisRect()->rect();
    QList<QLineF> hatching;
    QColor shade = content_.data.Map ? looks_.Background : looks_.Excluded;
    if (content_.data.Map) shade.setAlpha(kVeil);
    for (const QCPRange& span : excludedSpans(content_.data, rows_->range(), area.width())) {
        const double left = std::floor(rows_->coordToPixel(span.lower));
        const double right = std::max(left + 1, std::round(rows_->coordToPixel(span.upper)));
        const QRectF shaded(left, area.top(), right - left, area.height());
        painter->fillRect(shaded, shade);
        addHatching(hatching, shaded);
    }
    painter->setPen(QPen(content_.data.Map ? looks_.Text : looks_.Frame, 1));
    painter->drawLines(hatching);
}

} // namespace kestrane
