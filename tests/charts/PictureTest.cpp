#include "OutputOf.h"
#include "charts/ChartPage.h"
#include "charts/TestCharts.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

ChartData titled() {
    ChartData chart = chartOf(ChartShape::Line, {{50, 60, 55}, {70, 72, 71}});
    chart.Title = "<b>Mill & press</b>";
    chart.Footnote = "Worn on the shoulder";
    return chart;
}

TEST(ChartPicture, IsInThePapersColoursAndAtTheRatioAsked) {
    ShownChart shown(titled());
    shown.tab.setPalette(palette(QColor(30, 32, 36), QColor(225, 228, 232)));
    shown.settle();
    EXPECT_EQ(shown.image().pixelColor(2, 2), QColor(30, 32, 36));
    const QImage picture = shown.tab.picture({400, 300}, 2);
    EXPECT_EQ(picture.size(), QSize(800, 600));
    EXPECT_EQ(picture.pixelColor(2, 2), QColor(Qt::white));
    EXPECT_GT(countOf(picture, colorOf(titled(), 0)), 0);
}

TEST(ChartPicture, AFileThatCannotBeWrittenIsReportedAndNotLeft) {
    const TemporaryFolder folder;
    chaTab tab({});
    tab.setChart(titled());
    EXPECT_THROW(tab.savePicture(folder.file("missing/a.png"), {640, 400}), RuntimeError);
    EXPECT_THROW(tab.savePicture("/dev/full", {640, 400}), RuntimeError);
    EXPECT_THROW(tab.savePicture(folder.file(""), {640, 400}), RuntimeError);
    EXPECT_TRUE(std::filesystem::is_empty(folder.file("")));
    EXPECT_EQ(pictureEnding("a.b.Png"), ".png");
    EXPECT_EQ(pictureEnding("png"), "");
    EXPECT_EQ(pictureEnding("a.jpg"), "");
}

TEST(ChartPicture, ADrawingHasTheSizeThatWasAskedFor) {
    const TemporaryFolder folder;
    chaTab tab({});
    tab.setChart(titled());
    const PictureSize size{16 * kDotsOfCentimetre, 9 * kDotsOfCentimetre};
    tab.savePicture(folder.file("a.svg"), size);
    EXPECT_NE(readText(folder.file("a.svg")).find("width=\"160mm\" height=\"90mm\""), std::string::npos);
    tab.savePicture(folder.file("a.pdf"), size); // in points, of which 28.34646 are a centimetre
    EXPECT_NE(readText(folder.file("a.pdf")).find("[0 0 453.54331 255.11811"), std::string::npos);
}

// Fonts have their size in points whatever the device's resolution; the chart on the screen stays as it is.
TEST(ChartPicture, PrintsInItsRectangleAtTrueSize) {
    const TemporaryFolder folder;
    ShownChart shown(titled());
    const QSize onScreen = shown.plot->axisRect()->size();
    const QString file = QString::fromStdString(folder.file("page.pdf"));
    for (const int resolution : {150, 600}) {
        {
            QPdfWriter pdf(file);
            pdf.setResolution(resolution);
            pdf.setPageSize(QPageSize(QPageSize::A4));
            pdf.setPageMargins({});
            QPainter painter(&pdf);
            drawChart(painter, QRectF(resolution, 2 * resolution, 6 * resolution, 4 * resolution), resolution,
                      shown.tab.onPage(), {});
        }
        const QString words = QString::fromStdString(outputOf("pdftotext", {"-bbox", file, "-"}));
        const QRegularExpression title(
            "xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\" yMax=\"([0-9.]+)\">press");
        const auto found = title.match(words);
        ASSERT_TRUE(found.hasMatch()) << words.toStdString();
        EXPECT_NEAR(found.captured(1).toDouble(), 72 * 4, 40); // about the middle of the rectangle
        EXPECT_NEAR(found.captured(2).toDouble(), 72 * 2 + 9, 6);
        EXPECT_NEAR(found.captured(4).toDouble() - found.captured(2).toDouble(), 9, 3); // 8 points
    }
    EXPECT_EQ(shown.plot->axisRect()->size(), onScreen);
}

} // namespace
} // namespace kestrane
