#include "charts/TestCharts.h"

#include <QAccessible>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

ChartData shiftChart() {
    std::vector<float> levels(480);
    for (std::size_t row = 0; row < levels.size(); ++row)
        levels[row] = 60 + static_cast<float>(row % 30);
    levels[200] = kNullValue;
    return chartOf(ChartShape::Line, {levels, std::vector<float>(480, 95.25F)});
}

void turnWheel(const ShownChart& shown, const QPoint& place, int steps, Qt::KeyboardModifiers keys = {}) {
    QWheelEvent event(place, shown.plot->mapToGlobal(place), {}, {0, 120 * steps}, Qt::NoButton, keys,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(shown.plot, &event);
    shown.settle();
}

void drag(const ShownChart& shown, const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys = {}) {
    QTest::mousePress(shown.plot, Qt::LeftButton, keys, from);
    for (const QPoint& place : {(from + to) / 2, to}) {
        QMouseEvent move(QEvent::MouseMove, place, shown.plot->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, keys);
        QApplication::sendEvent(shown.plot, &move);
    }
    QTest::mouseRelease(shown.plot, Qt::LeftButton, keys, to);
    shown.settle();
}

// As a drag whose release something else has taken: the pointer goes on without a button.
void dragAndLose(const ShownChart& shown, const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys) {
    const auto move = [&](Qt::MouseButtons buttons, const QPoint& place) {
        QMouseEvent event(QEvent::MouseMove, place, shown.plot->mapToGlobal(place), Qt::NoButton, buttons, keys);
        QApplication::sendEvent(shown.plot, &event);
    };
    QTest::mousePress(shown.plot, Qt::LeftButton, keys, from);
    move(Qt::LeftButton, to);
    move(Qt::NoButton, from + QPoint(1, 1));
}

TEST(UsingAChart, TheReadOutFollowsThePointerAndTheKeys) {
    ShownChart shown(shiftChart());
    EXPECT_TRUE(shown.tab.readOut().isEmpty());
    QTest::mouseMove(shown.plot, shown.at(100, 80));
    EXPECT_EQ(shown.tab.readOut(), QStringList({"row 100", "Series 0 70.0", "Series 1 95.3"}));
    QTest::mouseMove(shown.plot, shown.at(200, 80));
    EXPECT_EQ(shown.tab.readOut(), QStringList({"row 200", "Series 1 95.3"})); // one value is missing
    QTest::mouseMove(shown.plot, QPoint(2, 2));
    EXPECT_TRUE(shown.tab.readOut().isEmpty());

    QTest::keyClick(&shown.tab, Qt::Key_Right);
    EXPECT_EQ(shown.tab.readOut().value(0), "row 240"); // the middle
    QTest::keyClick(&shown.tab, Qt::Key_Left);
    EXPECT_EQ(shown.tab.readOut().value(0), "row 239");
    for (int i = 0; i < 20; ++i)
        QTest::keyClick(&shown.tab, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(shown.tab.readOut().value(0), "row 479");
    QTest::keyClick(&shown.tab, Qt::Key_Home);
    EXPECT_EQ(shown.tab.readOut().value(0), "row 0");
    QTest::keyClick(&shown.tab, Qt::Key_End);
    EXPECT_EQ(shown.tab.readOut().value(0), "row 479");
    QTest::keyClick(&shown.tab, Qt::Key_Escape);
    EXPECT_TRUE(shown.tab.readOut().isEmpty());
}

TEST(UsingAChart, AScreenReaderHearsAChartItsSummaryAndItsReadOut) {
    chaTab tab({}, [](const ChartData& chart) { return std::to_string(chart.RowCount) + " rows"; });
    tab.setChart(shiftChart());
    QAccessibleInterface* const heard = QAccessible::queryAccessibleInterface(&tab);
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->role(), QAccessible::Chart);
    EXPECT_EQ(heard->text(QAccessible::Name), "Press shop");
    EXPECT_EQ(heard->text(QAccessible::Description), "480 rows");
    EXPECT_EQ(heard->childCount(), 0);
    EXPECT_TRUE(heard->state().focusable);

    QStringList said;
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Right, Qt::Key_Escape}) {
        QTest::keyClick(&tab, key);
        said.append(heard->text(QAccessible::Description));
    }
    EXPECT_EQ(said.join('\n').toStdString(), "row 0, Series 0 60.0, Series 1 95.3\n"
                                             "row 1, Series 0 61.0, Series 1 95.3\n"
                                             "480 rows");
}

TEST(UsingAChart, TheBoxStaysInsideAtBothEnds) {
    ShownChart shown(shiftChart());
    for (const double row : {1.0, 477.0}) {
        const QImage before = shown.image();
        QTest::mouseMove(shown.plot, shown.at(row, 80));
        shown.settle();
        const QImage after = shown.image();
        const QRect inside = shown.plot->axisRect()->rect().adjusted(-1, -1, 2, 2);
        const auto hasChanged = [&](int x, int y) { return before.pixel(x, y) != after.pixel(x, y); };
        EXPECT_GT(countWhere(after, hasChanged), 1000);
        EXPECT_EQ(countWhere(after, [&](int x, int y) { return hasChanged(x, y) && !inside.contains(x, y); }), 0);
        QTest::keyClick(&shown.tab, Qt::Key_Escape);
        shown.settle();
    }
}

TEST(UsingAChart, WheelZoomsAtThePointerAndNeverLeavesTheWhole) {
    ShownChart shown(shiftChart());
    const QCPRange whole = shown.rows().range();
    const QPoint place = shown.at(100, 80);
    const double pointed = shown.rows().pixelToCoord(place.x());
    turnWheel(shown, place, 3);
    EXPECT_NEAR(shown.rows().range().size(), whole.size() * 0.512, 1);
    EXPECT_NEAR(shown.rows().pixelToCoord(place.x()), pointed, 0.5);
    turnWheel(shown, place, 100);
    EXPECT_NEAR(shown.rows().range().size(), 4, 0.1);
    turnWheel(shown, place, -200);
    EXPECT_EQ(shown.rows().range(), whole);

    const QCPRange values = shown.plot->axisRect()->axis(QCPAxis::atLeft)->range();
    turnWheel(shown, place, 2, Qt::ControlModifier);
    EXPECT_LT(shown.plot->axisRect()->axis(QCPAxis::atLeft)->range().size(), values.size() * 0.7);
    EXPECT_EQ(shown.rows().range(), whole);
    QTest::mouseDClick(shown.plot, Qt::LeftButton, {}, place);
    EXPECT_EQ(shown.plot->axisRect()->axis(QCPAxis::atLeft)->range(), values);
}

TEST(UsingAChart, DragZoomsIntoTheRectangleAndShiftMoves) {
    ShownChart shown(shiftChart());
    int changes = 0;
    QObject::connect(&shown.tab, &chaTab::ViewChanged, [&changes] { ++changes; });
    EXPECT_EQ(shown.tab.rowsInView(), std::pair(std::size_t{0}, std::size_t{479}));
    drag(shown, shown.at(100, 90), shown.at(200, 70));
    EXPECT_EQ(changes, 1);
    EXPECT_NEAR(static_cast<double>(shown.tab.rowsInView()->first), 100, 2);
    EXPECT_NEAR(static_cast<double>(shown.tab.rowsInView()->second), 200, 2);
    EXPECT_NEAR(shown.rows().range().lower, 100, 1.5);
    EXPECT_NEAR(shown.rows().range().upper, 200, 1.5);
    EXPECT_NEAR(shown.plot->axisRect()->axis(QCPAxis::atLeft)->range().upper, 90, 0.5);

    const QCPRange before = shown.rows().range();
    drag(shown, shown.at(150, 80), shown.at(130, 80), Qt::ShiftModifier);
    EXPECT_NEAR(shown.rows().range().lower, before.lower + 20, 1.5);
    EXPECT_NEAR(shown.rows().range().size(), before.size(), 0.01);
    EXPECT_EQ(changes, 2);

    QTest::keyClick(&shown.tab, Qt::Key_0);
    const QPoint flat = shown.at(300, 80);
    drag(shown, flat, shown.at(360, 80)); // no height: the values stay
    EXPECT_NEAR(shown.rows().range().size(), 60, 2);
    EXPECT_NEAR(shown.plot->axisRect()->axis(QCPAxis::atLeft)->range().upper, 100, 0.01);
    QTest::keyClick(&shown.tab, Qt::Key_Minus);
    EXPECT_GT(shown.rows().range().size(), 70);
}

TEST(UsingAChart, ShiftMarksARangeWhereTheOwnerAllowsIt) {
    ShownChart shown(shiftChart());
    shown.tab.allowMarking();
    int told = 0;
    QObject::connect(&shown.tab, &chaTab::RangeMarked, [&told] { ++told; });
    const auto marked = [&] { return shown.tab.markedRows().value_or(std::pair<std::size_t, std::size_t>(999, 999)); };
    const QCPRange whole = shown.rows().range();
    const QImage before = shown.image();
    drag(shown, shown.at(100, 80), shown.at(200, 95), Qt::ShiftModifier);
    EXPECT_NEAR(static_cast<double>(marked().first), 100, 1);
    EXPECT_NEAR(static_cast<double>(marked().second), 200, 1);
    EXPECT_EQ(shown.rows().range(), whole) << "the drag neither zooms nor moves";
    EXPECT_GT(told, 1);
    EXPECT_NE(shown.image().pixel(shown.at(150, 99)), before.pixel(shown.at(150, 99)));
    EXPECT_EQ(shown.image().pixel(shown.at(250, 99)), before.pixel(shown.at(250, 99)));
    drag(shown, shown.at(200.5, 80), shown.at(300, 80), Qt::ShiftModifier); // takes hold of the end
    EXPECT_NEAR(static_cast<double>(marked().first), 100, 1);
    EXPECT_NEAR(static_cast<double>(marked().second), 300, 1);

    QTest::keyClick(&shown.tab, Qt::Key_Escape);
    EXPECT_FALSE(shown.tab.markedRows());
    QTest::keyClick(&shown.tab, Qt::Key_Home);
    QTest::keyClick(&shown.tab, Qt::Key_Right);
    for (int i = 0; i < 3; ++i) // the first press puts both cursors on the row that is read
        QTest::keyClick(&shown.tab, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(marked(), std::pair(std::size_t{1}, std::size_t{3}));
    QTest::keyClick(&shown.tab, Qt::Key_Space);
    QTest::keyClick(&shown.tab, Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(marked(), std::pair(std::size_t{3}, std::size_t{479}));
    shown.tab.tellFirst("three hours");
    EXPECT_EQ(shown.tab.spokenDescription(), "three hours");
    QTest::keyClick(&shown.tab, Qt::Key_Left);
    EXPECT_EQ(shown.tab.spokenDescription().left(4), "row ");
    shown.tab.setChart(shiftChart());
    EXPECT_FALSE(shown.tab.markedRows());
    shown.settle();
    dragAndLose(shown, shown.at(100, 80), shown.at(200, 80), Qt::ShiftModifier);
    EXPECT_NEAR(static_cast<double>(marked().second), 200, 1) << "it follows no pointer without a button";
    dragAndLose(shown, shown.at(20, 70), shown.at(90, 90), {});
    EXPECT_FALSE(shown.plot->selectionRect()->isActive());
}

TEST(UsingAChart, AZoomOutlastsAChangeOfPaletteAndGoesWithTheNextChart) {
    ShownChart shown(shiftChart());
    turnWheel(shown, shown.at(100, 80), 3);
    const QCPRange zoomed = shown.rows().range();
    shown.tab.setPalette(palette(Qt::black, Qt::white));
    shown.settle();
    EXPECT_EQ(shown.rows().range(), zoomed);
    shown.tab.setChart(shiftChart());
    shown.settle();
    EXPECT_EQ(shown.rows().range(), QCPRange(0, 479));
    EXPECT_EQ(shown.tab.accessibleName(), "Press shop");
}

} // namespace
} // namespace kestrane
