// Fingers on a chart, as a touch screen tells them.
#include "charts/TestCharts.h"

#include <QContextMenuEvent>
#include <QTest>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::unique_ptr<QPointingDevice> touchScreen() {
    return std::unique_ptr<QPointingDevice>(QTest::createTouchDevice());
}

TEST(TouchingAChart, TwoFingersZoomTheRowsBetweenThem) {
    ShownChart shown(chartOf(ChartShape::Line, {std::vector<float>(480, 70)}));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&shown.tab));
    const auto screen = touchScreen();
    const QCPRange before = shown.rows().range();
    const QPoint middle = shown.at(120, 70);
    const auto hold = [&](int apart) {
        QTest::touchEvent(shown.plot, screen.get())
            .move(0, middle - QPoint(apart, 0), shown.plot)
            .move(1, middle + QPoint(apart, 0), shown.plot);
        shown.settle();
    };
    QTest::touchEvent(shown.plot, screen.get()).press(0, middle - QPoint(20, 0), shown.plot);
    QTest::touchEvent(shown.plot, screen.get()).stationary(0).press(1, middle + QPoint(20, 0), shown.plot);
    for (const int apart : {30, 40, 50, 60})
        hold(apart);
    QTest::touchEvent(shown.plot, screen.get())
        .release(0, middle - QPoint(60, 0), shown.plot)
        .release(1, middle + QPoint(60, 0), shown.plot);
    shown.settle();
    const QCPRange after = shown.rows().range();
    EXPECT_LT(after.size(), before.size() / 1.5);
    EXPECT_NEAR(shown.rows().coordToPixel(120), middle.x(), 12) << "what is between the fingers stays there";

    QTest::touchEvent(shown.plot, screen.get()).press(0, middle, shown.plot);
    for (const int moved : {10, 25, 40})
        QTest::touchEvent(shown.plot, screen.get()).move(0, middle - QPoint(moved, 0), shown.plot);
    QTest::touchEvent(shown.plot, screen.get()).release(0, middle - QPoint(40, 0), shown.plot);
    shown.settle();
    EXPECT_NEAR(shown.rows().coordToPixel(120), middle.x() - 40, 12) << "one finger takes it along";
    EXPECT_DOUBLE_EQ(shown.rows().range().size(), after.size());
}

struct MenuWatch : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu) places.push_back(static_cast<QContextMenuEvent*>(event)->pos());
        return false;
    }

    QList<QPoint> places;
};

TEST(TouchingAChart, AFingerThatRestsAsksForTheMenu) {
    ShownChart shown(chartOf(ChartShape::Line, {std::vector<float>(480, 70)}));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&shown.tab));
    MenuWatch watch;
    shown.tab.installEventFilter(&watch);
    const auto screen = touchScreen();
    const QPoint place = shown.at(240, 70);
    QTest::touchEvent(shown.plot, screen.get()).press(0, place, shown.plot);
    QTest::qWait(QTapAndHoldGesture::timeout() + 300);
    QTest::touchEvent(shown.plot, screen.get()).release(0, place, shown.plot);
    shown.settle();
    ASSERT_EQ(watch.places.size(), 1);
    EXPECT_LT((watch.places.front() - place).manhattanLength(), 5);

    QTest::mousePress(shown.plot, Qt::LeftButton, {}, place); // a mouse that rests is in the middle of a drag
    QTest::qWait(QTapAndHoldGesture::timeout() + 300);
    QTest::mouseRelease(shown.plot, Qt::LeftButton, {}, place);
    EXPECT_EQ(watch.places.size(), 1);
}

} // namespace
} // namespace kestrane
