#include "charts/ExcludedShade.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

ExcludedShade::ExcludedShade(QCPAxis* rows, const ChartContent& content, const QColor& color) :
    QCPLayerable(rows->parentPlot(), "background"), rows_(rows), content_(content), color_(color) {}

void ExcludedShade::draw(QCPPainter* painter) {
    const std::vector<std::uint8_t>& excluded = content_.data.ExcludedRows;
    const QRect area = rows_->axisRect()->rect();
    const auto count = static_cast<double>(excluded.size());
    const auto begin = static_cast<std::size_t>(std::clamp(std::floor(rows_->range().lower), 0.0, count));
    const auto end = static_cast<std::size_t>(std::clamp(std::ceil(rows_->range().upper) + 1, 0.0, count));
    double drawnTo = area.left(); // runs narrower than a pixel are drawn once
    for (std::size_t row = begin; row < end; ++row) {
        if (excluded[row] == 0) continue;
        std::size_t last = row;
        while (last + 1 < end && excluded[last + 1] != 0)
            ++last;
        const double left = std::max(drawnTo, std::floor(rows_->coordToPixel(static_cast<double>(row) - 0.5)));
        const double right =
            std::min(area.right() + 1.0, std::ceil(rows_->coordToPixel(static_cast<double>(last) + 0.5)));
        if (right > left) painter->fillRect(QRectF(left, area.top(), right - left, area.height()), color_);
        drawnTo = std::max(drawnTo, right);
        row = last;
    }
}

} // namespace kestrane
