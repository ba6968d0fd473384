#include "printing/Paper.h"

#include "charts/ChartPage.h"
#include "views/Picture.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPageSize>
#include <QTextLayout>

namespace kestrane {

namespace {

constexpr double kPointsOfInch = 72;
constexpr std::size_t kMostTexts = 16384; // the number of texts kept: a day of times and the levels beside them
constexpr double kWide = 1e7;             // dots; the width of a line that is never broken

QFont fontOf(const PageFont& wanted) {
    QFont font;
    font.setFamilies({"Arial", "Liberation Sans"});
    font.setPixelSize(qRound(wanted.Points * kPaperDots / kPointsOfInch));
    font.setBold(wanted.IsBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

ShapedText shape(std::string_view text, const PageFont& font) {
    QTextLayout layout(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), fontOf(font));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(kWide);
    layout.endLayout();
    return {layout.glyphRuns(), line.naturalTextWidth()};
}

} // namespace

QPageLayout a4Paper(bool isLandscape) {
    return {QPageSize(QPageSize::A4), isLandscape ? QPageLayout::Landscape : QPageLayout::Portrait, {}};
}

const ShapedText& Paper::shaped(std::string_view text, const PageFont& font) const {
    std::string key(text);
    key += '\0';
    key += static_cast<char>(qRound(font.Points) * 2 + (font.IsBold ? 1 : 0));
    const auto known = texts_.find(key);
    if (known != texts_.end()) return known->second;
    if (texts_.size() >= kMostTexts) texts_.clear();
    return texts_.emplace(std::move(key), shape(text, font)).first->second;
}

double Paper::textWidth(std::string_view text, const PageFont& font) const {
    return text.empty() ? 0 : shaped(text, font).Width / kCentimetre;
}

double Paper::pictureWidth(const std::string& path, const PageBox& box) const {
    const Logo& logo = picture(path);
    return logo.isPicture() ? logo.sizeIn(QSizeF(box.Width, box.Height)).width() : 0;
}

double Paper::plotHeight(const ChartOnPage& chart, double width, double height) const {
    return kestrane::plotHeight((QSizeF(width, height) * kDotsOfCentimetre).toSize(), chart) / kDotsOfCentimetre;
}

bool Paper::cutsNote(const ChartOnPage& chart, double width, double height) const {
    return cutsFootnote((QSizeF(width, height) * kDotsOfCentimetre).toSize(), chart);
}

const Logo& Paper::picture(const std::string& path) const {
    const auto known = pictures_.find(path);
    if (known != pictures_.end()) return known->second;
    return pictures_.emplace(path, path.empty() ? Logo::ofBrand() : Logo::ofFile(path)).first->second;
}

double Paper::lineHeight(const PageFont& font) const {
    return QFontMetricsF(fontOf(font)).height() / kCentimetre;
}

} // namespace kestrane
