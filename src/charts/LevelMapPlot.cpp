#include "charts/LevelMapPlot.h"

#include "charts/LevelColours.h"
#include "views/LevelMap.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr std::size_t kColours = 256;
constexpr double kVectorColumns = 2; // columns per pixel on paper

double partOf(std::size_t colour) {
    return static_cast<double>(colour) / (kColours - 1);
}

} // namespace

LevelMapPlot::LevelMapPlot(const QCPAxisRect& area, const ChartContent& content, const ChartLooks& looks) :
    QCPLayerable(area.parentPlot(), "main"),
    rows_(area.axis(QCPAxis::atBottom)),
    bands_(area.axis(QCPAxis::atLeft)),
    content_(content),
    looks_(looks) {
    for (std::size_t colour = 0; colour < kColours; ++colour)
        colours_.push_back(levelColour(partOf(colour)));
}

// The colours of each band, by pixel column. A row reaches from half a row before its place to half a row behind it.
std::vector<std::vector<QRgb>> LevelMapPlot::columnsOfBands(int columns) const {
    const LevelMap& map = *content_.data.Map;
    const QCPRange range = rows_->range();
    const ChartRange scale = *content_.data.SecondaryRange;
    const double perLevel = (kColours - 1) / (scale.Maximum - scale.Minimum);
    const double rowsPerColumn = range.size() / columns;
    const auto count = static_cast<double>(content_.data.RowCount);
    std::vector<std::vector<QRgb>> colours(map.BandCount(), std::vector<QRgb>(static_cast<std::size_t>(columns)));
    std::vector<float> levels(map.BandCount());
    for (int column = 0; column < columns; ++column) {
        const double left = range.lower + column * rowsPerColumn + 0.5;
        const double first = std::floor(left);
        const double behind = std::max(first + 1, std::floor(left + rowsPerColumn));
        map.Highest(static_cast<std::size_t>(std::clamp(first, 0.0, count)),
                    static_cast<std::size_t>(std::clamp(behind, 0.0, count)), levels);
        for (std::size_t band = 0; band < levels.size(); ++band) {
            const double colour = (static_cast<double>(levels[band]) - scale.Minimum) * perLevel;
            colours[band][static_cast<std::size_t>(column)] =
                isNullValue(levels[band])
                    ? looks_.Background.rgb()
                    : colours_[static_cast<std::size_t>(std::clamp(std::round(colour), 0.0, kColours - 1.0))];
        }
    }
    return colours;
}

// The picture covers exactly what is in view, because not every device that is drawn on can clip.
void LevelMapPlot::draw(QCPPainter* painter) {
    const QRect area = rows_->axisRect()->rect();
    const bool isVector = painter->modes().testFlag(QCPPainter::pmVectorized);
    const double perPixel = isVector ? kVectorColumns : painter->device()->devicePixelRatioF();
    const auto columns = static_cast<int>(area.width() * perPixel);
    const auto lines = static_cast<int>(area.height() * perPixel);
    if (columns <= 0 || lines <= 0 || content_.data.Map->BandCount() == 0) return;
    const std::vector<std::vector<QRgb>> colours = columnsOfBands(columns);
    QImage picture(columns, lines, QImage::Format_RGB32);
    const double last = static_cast<double>(colours.size()) - 1;
    for (int line = 0; line < lines; ++line) {
        const double band = std::round(bands_->pixelToCoord(area.top() + (line + 0.5) / perPixel));
        const std::vector<QRgb>& of = colours[static_cast<std::size_t>(std::clamp(band, 0.0, last))];
        std::copy(of.begin(), of.end(), reinterpret_cast<QRgb*>(picture.scanLine(line)));
    }
    painter->drawImage(QRectF(area), picture);
}

QCPColorGradient levelGradient() {
    QCPColorGradient gradient;
    QMap<double, QColor> stops;
    for (std::size_t colour = 0; colour < kColours; ++colour)
        stops.insert(partOf(colour), QColor(levelColour(partOf(colour))));
    gradient.setColorStops(stops);
    gradient.setLevelCount(kColours);
    return gradient;
}

} // namespace kestrane
