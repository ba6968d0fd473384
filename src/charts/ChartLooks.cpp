#include "charts/ChartLooks.h"

#include "platform/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrane {

namespace {

constexpr int kColors = 12;

constexpr std::array<QRgb, kColors> kOnLight = {0xFF0B62A4, 0xFFD1590A, 0xFF12866A, 0xFF8C4799, 0xFFC78A00, 0xFF3F9BD1,
                                                0xFFB3203F, 0xFF6B7A1E, 0xFF7B5137, 0xFFD06BA0, 0xFF2C3E66, 0xFF7D8790};
constexpr std::array<QRgb, kColors> kOnDark = {0xFF5AA9E6, 0xFFF28E4B, 0xFF3DBE96, 0xFFC48BD6, 0xFFEBBD4A, 0xFF8FD0F5,
                                               0xFFF0687F, 0xFFB7C65A, 0xFFC59A78, 0xFFF0A3C8, 0xFF9DB2E8, 0xFFB4BDC4};
constexpr std::array<Qt::PenStyle, 4> kStyles = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};

constexpr double kTwentieths = 20;
constexpr double kReferenceWidth = 0.75; // points
constexpr double kEmphasis = 1.6;        // times the line width: the line drawn over a family of curves

QColor mixed(const QColor& a, const QColor& b, double share) {
    return QColor::fromRgb(kestrane::mixed(a.rgb(), b.rgb(), share));
}

} // namespace

ChartLooks ChartLooks::ofPaper() {
    ChartLooks looks;
    looks.Background = Qt::white;
    looks.Text = QColor(32, 36, 42);
    looks.QuietText = QColor(92, 98, 106);
    looks.Frame = QColor(140, 146, 152);
    looks.Grid = QColor(190, 190, 190);
    looks.Excluded = QColor(238, 240, 243);
    looks.Warning = QColor(255, 0, 0);
    looks.Reference = QColor(128, 144, 166);
    looks.Emphasis = QColor(176, 24, 42);
    looks.makeReadable();
    return looks;
}

ChartLooks ChartLooks::ofScreen(const QPalette& palette, double dotsPerInch) {
    const QColor background = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    ChartLooks looks = ofPaper();
    looks.PixelsPerPoint = dotsPerInch / 72;
    looks.Background = background;
    looks.Text = text;
    if (isDark(background.rgb())) {
        looks.IsDark = true;
        looks.QuietText = mixed(text, background, 0.3);
        looks.Frame = mixed(text, background, 0.5);
        looks.Grid = mixed(text, background, 0.7);
        looks.Excluded = mixed(background, text, 0.09);
        looks.Warning = QColor(255, 104, 96);
        looks.Reference = QColor(116, 136, 166);
        looks.Emphasis = QColor(255, 118, 118);
    }
    looks.makeReadable();
    return looks;
}

// The grid alone stays faint: it is there to be looked past, and the axes have its figures.
void ChartLooks::makeReadable() {
    for (QColor* text : {&Text, &QuietText, &Warning, &Emphasis})
        *text = readable(*text, kTextContrast);
    for (QColor* line : {&Frame, &Reference})
        *line = readable(*line, kLineContrast);
}

// Excluded rows are a ground, too.
QColor ChartLooks::readable(const QColor& colour, double leastContrast) const {
    const Rgb shade = kestrane::readable(colour.rgb(), Background.rgb(), leastContrast);
    return QColor::fromRgb(kestrane::readable(shade, Excluded.rgb(), leastContrast));
}

QColor ChartLooks::titleColor(const ChartData& chart) const {
    return chart.IsTitleWarning ? Warning : axisTitleColor(chart);
}

QColor ChartLooks::axisTitleColor(const ChartData& chart) const {
    if (!chart.GradeColour) return Text;
    return readable(QColor(chart.GradeColour->red, chart.GradeColour->green, chart.GradeColour->blue), kTextContrast);
}

QFont ChartLooks::font(const clsFont& font) const {
    QFont result;
    if (!font.Name.empty()) result.setFamily(QString::fromStdString(font.Name));
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(static_cast<double>(font.Size) * PixelsPerPoint))));
    return result;
}

QColor ChartLooks::color(const ChartContent& content, std::size_t drawn) const {
    if (content.isReference(drawn)) return Reference;
    const std::size_t own = drawn - content.data.ReferenceSeries;
    if (content.data.ReferenceSeries > 0 && own == 0) return Emphasis;
    return readable((IsDark ? kOnDark : kOnLight)[own % kColors], kLineContrast);
}

QPen ChartLooks::linePen(const ChartContent& content, std::size_t drawn) const {
    const bool isReference = content.isReference(drawn);
    double points = isReference ? kReferenceWidth : content.data.LineWidth / kTwentieths;
    if (content.data.ReferenceSeries > 0 && !isReference) points *= kEmphasis;
    QPen pen(color(content, drawn), points * PixelsPerPoint);
    if (!isReference) pen.setStyle(kStyles[(drawn - content.data.ReferenceSeries) / kColors % kStyles.size()]);
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(pen.style() == Qt::SolidLine ? Qt::RoundCap : Qt::FlatCap);
    return pen;
}

} // namespace kestrane
