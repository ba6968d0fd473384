#include "ShownLog.h"
#include "charts/ChartPlot.h"
#include "charts/LevelColours.h"
#include "charts/SeriesMarks.h"
#include "charts/TestCharts.h"
#include "views/Spectrogram.h"

#include <QTest>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(ChartDrawing, MissingValuesLeaveGapsAndLoneOnesAreDots) {
    const float none = kNullValue;
    const ChartData chart = chartOf(ChartShape::Line, {{60, 60, 60, none, none, 60, 60, none, 80, none}});
    ShownChart shown(chart);
    const QRgb color = colorOf(chart, 0);
    EXPECT_TRUE(shown.isSeen(color, shown.at(1.5, 60)));
    EXPECT_TRUE(shown.isSeen(color, shown.at(5.5, 60)));
    EXPECT_GT(countOf(shown.image().copy(QRect(shown.at(8, 80) - QPoint(4, 4), QSize(9, 9))), color), 8);
    const QRect gap(shown.at(2.2, 84), shown.at(4.8, 56));
    EXPECT_EQ(countOf(shown.image().copy(gap), color), 0);
}

TEST(ChartDrawing, OneRowOfVeryManyIsSeen) {
    std::vector<float> values(600'000, 60);
    values[345'678] = 100;
    std::fill(values.begin() + 100'000, values.begin() + 150'000, kNullValue);
    const ChartData chart = chartOf(ChartShape::Line, {values});
    ShownChart shown(chart);
    const QRgb color = colorOf(chart, 0);
    for (const double level : {61.0, 80.0, 99.0})
        EXPECT_TRUE(shown.isSeen(color, shown.at(345'678, level))) << level;
    EXPECT_FALSE(shown.isSeen(color, shown.at(345'678 + 10'000, 80)));
    EXPECT_TRUE(shown.isSeen(color, shown.at(50'000, 60)));
    EXPECT_FALSE(shown.isSeen(color, shown.at(125'000, 60), 5));
}

// A log in thirds of octaves, with a loud moment in one band.
struct LevelChart : ShownLog {
    ChartData chart;

    LevelChart(std::size_t rows, std::size_t loud) : ShownLog(modeThirdOctave) {
        addRows(rows);
        for (std::size_t row = 0; row < rows; ++row)
            for (const int band : {10, 11})
                if (row < rows / 2 || row >= rows / 2 + rows / 10) setLevel(Quantity::LeqA, band, row, 50);
        setLevel(Quantity::LeqA, 11, loud, 90);
        IntervalColumns& columns = log.LogIntervals.Columns();
        for (std::size_t row = rows / 10; row < rows / 5; ++row)
            columns.set(columns.isExcluded, row, std::uint8_t{1});
        chart = spectrogramChart(log, "A");
    }
};

TEST(ChartDrawing, AMapOfLevelsShowsTheLoudestRowOfManyInItsBand) {
    const LevelChart map(600'000, 345'678);
    ShownChart shown(map.chart);
    EXPECT_TRUE(shown.isSeen(levelColour(1), shown.at(345'678, 10)));
    EXPECT_FALSE(shown.isSeen(levelColour(1), shown.at(345'678, 9)));
    EXPECT_TRUE(shown.isSeen(levelColour(0), shown.at(20'000, 9)));
    EXPECT_FALSE(shown.isSeen(levelColour(0), shown.at(330'000, 9))) << "no level";
    EXPECT_FALSE(shown.isSeen(levelColour(0), shown.at(90'000, 9), 0)) << "veiled, because it is left out";
    shown.plot->axisRect()->axis(QCPAxis::atBottom)->setRange(345'670, 345'690);
    shown.plot->replot();
    EXPECT_TRUE(shown.isSeen(levelColour(1), shown.at(345'678.4, 10)));
    EXPECT_FALSE(shown.isSeen(levelColour(1), shown.at(345'678.7, 10)));

    QTest::keyClick(&shown.tab, Qt::Key_Home);
    for (int i = 0; i < 9; ++i)
        QTest::keyClick(&shown.tab, Qt::Key_Up);
    EXPECT_EQ(shown.tab.spokenDescription().toStdString(), "03/06/24 09:00:00, 100 Hz 50.0");
    QTest::keyClick(&shown.tab, Qt::Key_Up);
    QTest::keyClick(&shown.tab, Qt::Key_Right);
    EXPECT_EQ(shown.tab.spokenDescription().toStdString(), "03/06/24 09:01:00, 125 Hz 50.0");
}

// The lightness L* of CIE 1976, 0 to 100.
double lightness(QRgb colour) {
    const auto linear = [](int part) {
        const double share = part / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    const double y = 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
    return 116 * std::cbrt(y) - 16;
}

TEST(LevelColours, RiseInLightnessByEvenSteps) {
    constexpr int kSteps = 20;
    const double even = (lightness(levelColour(1)) - lightness(levelColour(0))) / kSteps;
    EXPECT_GT(even * kSteps, 70) << "from dark to light";
    for (int step = 0; step < kSteps; ++step) {
        const double rise = lightness(levelColour((step + 1.0) / kSteps)) - lightness(levelColour(step * 1.0 / kSteps));
        EXPECT_NEAR(rise, even, even / 4) << step;
    }
}

TEST(ChartDrawing, SeriesStandOnTheirAxes) {
    ChartData chart = chartOf(ChartShape::Line, {std::vector<float>(9, 70), std::vector<float>(9, 40)});
    chart.PrimaryRange = ChartRange{50, 100};
    chart.HasSecondaryAxis = true;
    chart.Series[1].Axis = ChartAxis::Secondary;
    ShownChart shown(chart);
    EXPECT_EQ(shown.plot->axisRect()->axis(QCPAxis::atRight)->range().lower, 0);
    EXPECT_TRUE(shown.isSeen(colorOf(chart, 0), shown.at(4.5, 70)));
    EXPECT_TRUE(shown.isSeen(colorOf(chart, 1), shown.at(4.5, 40, QCPAxis::atRight)));

    chart.Shape = ChartShape::Bar;
    ShownChart bars(chart);
    EXPECT_TRUE(bars.isSeen(colorOf(chart, 1), bars.at(4.2, 20, QCPAxis::atRight), 4));
    EXPECT_FALSE(bars.isSeen(colorOf(chart, 1), bars.at(4.2, 41, QCPAxis::atRight), 4));
}

TEST(ChartDrawing, ExcludedRowsAreShadedAndAWarningIsRed) {
    ChartData chart = chartOf(ChartShape::Line, {std::vector<float>(60, 70)});
    chart.ExcludedRows.assign(60, 0);
    std::fill_n(chart.ExcludedRows.begin() + 20, 10, 1);
    chart.IsTitleWarning = true;
    ShownChart shown(chart);
    const QRgb shade = ChartLooks::ofPaper().Excluded.rgb();
    const QRgb red = ChartLooks::ofPaper().Warning.rgb();
    EXPECT_TRUE(shown.isSeen(shade, shown.at(25.3, 74), 0));
    EXPECT_FALSE(shown.isSeen(shade, shown.at(15.3, 74), 0));
    const QRect top(0, 0, 800, shown.plot->axisRect()->top() - 10);
    EXPECT_GT(countOf(shown.image().copy(top), red), 3);
    chart.IsTitleWarning = false;
    EXPECT_EQ(countOf(ShownChart(chart).image().copy(top), red), 0);
}

TEST(ChartDrawing, TitlesInTheColourOfAGradeCanBeRead) {
    ChartData chart = chartOf(ChartShape::Bar, {{70}});
    chart.GradeColour = Colour{255, 0, 0};
    EXPECT_EQ(ChartLooks::ofPaper().axisTitleColor(chart).hue(), 0);
    EXPECT_GT(ChartLooks::ofPaper().axisTitleColor(chart).red(), 220);
    ShownChart shown(chart);
    const QImage image = shown.image();
    const auto isReddish = [&](int x, int y) { // thin letters hold few pixels of the very colour
        return image.pixelColor(x, y).red() > image.pixelColor(x, y).green() + 100;
    };
    const QCPAxisRect& axes = *shown.plot->axisRect();
    EXPECT_GT(countWhere(image, [&](int x, int y) { return y < axes.top() - 10 && isReddish(x, y); }), 0);
    EXPECT_GT(countWhere(image, [&](int x, int y) { return y > axes.bottom() && isReddish(x, y); }), 0);

    chart.GradeColour = Colour{0, 255, 0};
    const QColor onPaper = ChartLooks::ofPaper().titleColor(chart);
    EXPECT_EQ(onPaper.hue(), QColor(0, 255, 0).hue());
    EXPECT_LT(onPaper.green(), 180);
    EXPECT_EQ(ChartLooks::ofScreen(palette(Qt::black, Qt::white), 96).titleColor(chart), QColor(0, 255, 0));
}

TEST(ChartDrawing, ALongTitleOfTheRowsIsBrokenBetweenWords) {
    ChartData chart = chartOf(ChartShape::Bar, {{70}});
    chart.CategoryTitle = "Octave band centre frequency" + std::string(20, ' ') + "APL: 72.8 dB";
    EXPECT_FALSE(ShownChart(chart).rows().label().contains('\n'));
    const ShownChart narrow(chart, {300, 300});
    EXPECT_EQ(narrow.rows().label(), "Octave band centre frequency\nAPL: 72.8 dB");
    EXPECT_GT(narrow.plot->axisRect()->height(), 50);
    chart.CategoryTitle = std::string(200, 'w');
    EXPECT_EQ(ShownChart(chart, {300, 300}).rows().label().size(), 200);
}

TEST(ChartDrawing, PlaceholdersAreNotDrawnAndCurvesToCompareWithAreQuiet) {
    ChartData chart = chartOf(ChartShape::Line, {{50, 52, 54}, {60, 60, 60}, {70, 70, 70}});
    chart.ReferenceSeries = 1;
    chart.Series[1].Label.clear();
    ShownChart shown(chart);
    const ChartLooks paper = ChartLooks::ofPaper();
    const QColor quiet = shown.image().pixelColor(shown.at(1, 52));
    EXPECT_GT(quiet.blue(), quiet.red() + 10); // a thin line in its blended colour
    EXPECT_TRUE(shown.isSeen(paper.Emphasis.rgb(), shown.at(0.5, 70)));
    const QRect between(shown.at(0.2, 67), shown.at(1.8, 53));
    EXPECT_EQ(countOf(shown.image().copy(between), colorOf(chart, 1)), 0);
}

TEST(ChartDrawing, SeriesOfOneNamelessRowStandSideBySide) {
    ChartData chart = chartOf(ChartShape::Bar, {{80}, {60}, {90}});
    chart.RowLabel = [](std::size_t) { return std::string(); };
    ShownChart shown(chart);
    EXPECT_TRUE(shown.isSeen(colorOf(chart, 0), shown.at(-1.0 / 3, 40)));
    EXPECT_TRUE(shown.isSeen(colorOf(chart, 1), shown.at(0, 40)));
    EXPECT_FALSE(shown.isSeen(colorOf(chart, 1), shown.at(0, 75)));
    EXPECT_TRUE(shown.isSeen(colorOf(chart, 2), shown.at(1.0 / 3, 85)));
    EXPECT_EQ(shown.rows().tickVectorLabels(), QVector<QString>({"Series 0", "Series 1", "Series 2"}));
}

// Two lines of one level: what is drawn beside the line is the shape of a mark.
TEST(ChartDrawing, SeriesDifferWithoutTheirColours) {
    ChartData chart = chartOf(ChartShape::Line, {std::vector<float>(4, 70), std::vector<float>(4, 60)});
    chart.LineWidth = 20;
    const auto inked = [](ShownChart& shown, const QPoint& place, int reach) {
        const QRect around = QRect(place, QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
        const QImage image = shown.image().convertToFormat(QImage::Format_Grayscale8).copy(around);
        return countWhere(image, [&](int x, int y) { return qGray(image.pixel(x, y)) < 200; });
    };
    ShownChart plain(chart);
    const int line = inked(plain, plain.at(1, 70), 5);
    EXPECT_NEAR(line, inked(plain, plain.at(1, 60), 5), 4);
    chart.HasMarks = true;
    ShownChart marked(chart);
    const int first = inked(marked, marked.at(1, 70), 5);
    EXPECT_GT(first, line + 10);
    EXPECT_NE(first, inked(marked, marked.at(1, 60), 5)) << "a circle and a square";

    chart.Shape = ChartShape::Bar;
    ShownChart bars(chart);
    const int filled = inked(bars, bars.at(0.8, 30), 8);
    EXPECT_EQ(filled, 17 * 17);
    EXPECT_LT(inked(bars, bars.at(1.2, 30), 8), filled / 2 + filled / 10) << "hatched";
}

TEST(ChartDrawing, LegendAndFootnoteTakeTheirRoomAndGiveItBack) {
    ChartData chart = chartOf(ChartShape::Line, {{50, 60}, {60, 70}});
    chart.Footnote = "First line\r\nSecond line";
    ShownChart shown(chart);
    const int both = shown.plot->axisRect()->height();
    shown.tab.showLegend(false);
    shown.settle();
    const int withoutLegend = shown.plot->axisRect()->height();
    EXPECT_GT(withoutLegend, both + 15);
    shown.tab.showFootnote(false);
    shown.settle();
    EXPECT_GT(shown.plot->axisRect()->height(), withoutLegend + 20);
    shown.tab.showLegend(true);
    shown.tab.showFootnote(true);
    shown.settle();
    EXPECT_EQ(shown.plot->axisRect()->height(), both);
}

TEST(ChartDrawing, ATextWithoutRoomEndsInAnEllipsis) {
    ChartPlot plot({}, nullptr);
    ChartText note(&plot, "1\n2\n3\n4", QFont(), Qt::black, Qt::AlignLeft);
    note.fit(200, 1000);
    EXPECT_FALSE(note.isCut());
    const int line = note.minimumSize().height() / 4;
    note.fit(200, 3 * line + line / 2);
    EXPECT_TRUE(note.isCut());
    EXPECT_NEAR(note.minimumSize().height(), 3 * line, 3);
    ChartText word(&plot, std::string(400, 'w'), QFont(), Qt::black, Qt::AlignHCenter);
    word.fit(200, 100 * line);
    EXPECT_GT(word.minimumSize().height(), 10 * line) << "a word longer than a line is broken";
}

TEST(ChartDrawing, SmallestWindowsAndEmptyChartsAreDrawn) {
    ChartData chart = chartOf(ChartShape::Line, std::vector<std::vector<float>>(40, {50, 60, 70}));
    chart.Footnote = std::string(2000, 'x') + "\n\n" + std::string(500, '\n') + "end";
    chart.Title = std::string(300, 'W');
    for (const std::int16_t style : {eChartAs2D, eChartAs3D}) {
        chart.Style = style;
        for (const QSize size : {QSize(1, 1), QSize(40, 30), QSize(260, 180)})
            EXPECT_FALSE(ShownChart(chart, size).tab.picture(size).isNull());
        ChartData without = chart;
        without.Series.clear();
        EXPECT_FALSE(ShownChart(without).image().isNull());
    }
    EXPECT_FALSE(ShownChart(ChartData()).image().isNull());
}

TEST(ChartDrawing, ThePlotComesBeforeThePartsAroundItAndIsNeverUpsideDown) {
    ChartData chart = chartOf(ChartShape::Line, {{60, 60}, {70, 70}});
    chart.PrimaryTitle = "Sound pressure level of the band, dB re 20 µPa";
    chart.Footnote = "Kerb of the ring road";
    const ShownChart shown(chart);
    for (const int height : {20, 50, 80, 150, 200}) {
        const QImage image = shown.plot->toPixmap(400, height).toImage();
        const bool isDrawn = countOf(image, colorOf(chart, 0)) > 0;
        EXPECT_TRUE(isDrawn || height < 100) << height;
        EXPECT_TRUE(!isDrawn || shown.at(0, 70).y() < shown.at(0, 60).y()) << height;
    }
    EXPECT_TRUE(shown.plot->axisRect()->axis(QCPAxis::atLeft)->label().contains('\n'));
}

TEST(ChartDrawing, ANumberBehindALineIsWholeHoweverNarrowTheChart) {
    ChartData chart = chartOf(ChartShape::Line, {{20, 20}, {80, 80}, {50, 50}});
    chart.ReferenceSeries = 2;
    for (ChartSeries& series : chart.Series)
        series.Label = "WWWWWWWW";
    const ShownChart shown(chart);
    const auto ink = [&](int width) {
        const QImage image = shown.plot->toPixmap(width, 400).toImage();
        const QRect frame = shown.plot->axisRect()->rect();
        const QRect label(frame.right() - 80, shown.at(1, 80).y() - 8, 78, 7); // above the line
        return countWhere(image.copy(label),
                          [part = image.copy(label)](int x, int y) { return qGray(part.pixel(x, y)) < 200; });
    };
    EXPECT_GT(ink(240), ink(1000) * 4 / 5);
}

// A chart in 3D of a series in front and one behind it, each with its values or without any.
ChartData inFrontOfEachOther(ChartShape shape, bool hasFront, bool hasBack) {
    const std::vector<float> front = {60, 62, 61, 64};
    const std::vector<float> back = {70, 66, 68, 69};
    const std::vector<float> none(4, kNullValue);
    ChartData chart = chartOf(shape, {hasFront ? front : none, hasBack ? back : none});
    chart.Style = eChartAs3D;
    chart.HasLegend = false;
    chart.PrimaryRange = ChartRange{0, 100};
    return chart;
}

TEST(Chart3D, WhatStandsInFrontHidesWhatIsBehind) {
    const ChartShape shape = ChartShape::Bar;
    const QSize size(800, 500);
    const auto picture = [&](bool hasFront, bool hasBack) {
        return ShownChart(inFrontOfEachOther(shape, hasFront, hasBack), size).tab.picture(size);
    };
    const ChartData both = inFrontOfEachOther(shape, true, true);
    const QRgb front = colorOf(both, 0);
    const QRgb back = colorOf(both, 1);
    const QImage together = picture(true, true);
    EXPECT_GT(countOf(together, front), 1000);
    EXPECT_NEAR(countOf(together, front), countOf(picture(true, false), front), 20); // but for blended edges
    EXPECT_GT(countOf(together, back), 100);                                         // it is the taller
    EXPECT_LT(countOf(together, back), countOf(picture(false, true), back) / 2);
}

TEST(Chart3D, SeriesDifferWithoutTheirColours) {
    const QSize size(800, 500);
    for (const ChartShape shape : {ChartShape::Bar, ChartShape::Line}) {
        ChartData chart = inFrontOfEachOther(shape, true, true);
        const QImage plain = ShownChart(chart).tab.picture(size);
        chart.HasMarks = true;
        const QImage marked = ShownChart(chart).tab.picture(size);
        if (shape == ChartShape::Bar) {
            EXPECT_GE(countOf(marked, colorOf(chart, 0)), countOf(plain, colorOf(chart, 0))) << "filled";
            EXPECT_LT(countOf(marked, colorOf(chart, 1)), countOf(plain, colorOf(chart, 1)) / 2) << "hatched";
        } else {
            for (const std::size_t series : {0, 1}) // the faces of a ribbon are lighter than its shapes
                EXPECT_GT(countOf(marked, colorOf(chart, series)), countOf(plain, colorOf(chart, series)) + 100);
        }
    }
}

TEST(SeriesMarks, HatchWhatIsSeenOfABarHoweverLargeItIs) {
    ChartData chart = inFrontOfEachOther(ChartShape::Bar, true, true);
    chart.HasMarks = true;
    const ChartContent content(std::move(chart));
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setClipRect(10, 10, 50, 50);
    SeriesMarks::of(content, 1, ChartLooks::ofPaper())->fill(painter, QRectF(-1e8, -1e8, 2e8, 2e8));
    const int inked = countWhere(image, [&](int x, int y) { return image.pixel(x, y) != qRgb(255, 255, 255); });
    EXPECT_GT(inked, 50 * 50 / 8);
    EXPECT_LT(inked, 50 * 50 / 2);
}

TEST(Chart3D, RibbonsInFrontStayWholeAndGapsStayOpen) {
    const QSize size(800, 500);
    ChartData chart = inFrontOfEachOther(ChartShape::Line, true, false);
    const QImage alone = ShownChart(chart).tab.picture(size);
    chart.Series[1].Values = {72, 66, 71, 66};
    const QImage together = ShownChart(chart).tab.picture(size);
    const auto isOfASeries = [](const QImage& image, int x, int y) { // not of the walls or texts
        return image.pixelColor(x, y).hsvSaturation() >= 150;
    };
    const int frontPixels = countWhere(alone, [&](int x, int y) { return isOfASeries(alone, x, y); });
    EXPECT_GT(frontPixels, 1000);
    EXPECT_EQ(
        countWhere(alone,
                   [&](int x, int y) { return isOfASeries(alone, x, y) && alone.pixel(x, y) != together.pixel(x, y); }),
        0);

    ChartData broken = inFrontOfEachOther(ChartShape::Line, true, false);
    broken.Series[0].Values[2] = kNullValue; // two of its three pieces go, and its last value stands alone
    const QImage gap = ShownChart(broken).tab.picture(size);
    EXPECT_LT(countWhere(gap, [&](int x, int y) { return isOfASeries(gap, x, y); }), frontPixels * 0.6);
}

} // namespace
} // namespace kestrane
