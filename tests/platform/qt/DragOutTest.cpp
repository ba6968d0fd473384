#include "platform/desktop/DragOut.h"

#include "platform/RuntimeError.h"

#include <QApplication>
#include <QFile>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(PromisedFile, IsWrittenWhenItIsTakenAndOnlyOnce) {
    int written = 0;
    const auto bytes = [&written] { return ++written, std::string("a,b\n1,2\n"); };
    const PromisedFile data({{.Text = "a\tb\r\n", .Html = {}, .Png = {}, .Svg = {}}, "Yard.csv", bytes});
    EXPECT_TRUE(data.hasUrls() && data.hasText());
    EXPECT_EQ(written, 0);
    ASSERT_EQ(data.urls().size(), 1);
    QFile file(data.urls().front().toLocalFile());
    EXPECT_TRUE(file.fileName().endsWith("/Yard.csv"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "a,b\n1,2\n");
    EXPECT_EQ(data.data("text/uri-list").trimmed(), data.urls().front().toEncoded());
    EXPECT_EQ(written, 1);
    EXPECT_EQ(data.text(), "a\tb\r\n");

    const PromisedFile failed({{}, "x.xml", []() -> std::string { throw RuntimeError(5, "no memory"); }});
    EXPECT_TRUE(failed.urls().isEmpty());
}

struct Pressed : QWidget {
    void mousePressEvent(QMouseEvent*) override { ++presses; }

    int presses = 0;
};

struct CountedDrags : DragOut {
    using DragOut::DragOut;

    void begin(std::unique_ptr<QMimeData> data) override { texts.push_back(data->text()); }

    QStringList texts;
};

TEST(DragOut, BeginsWithAGripAndAMoveAndLeavesClicksAlone) {
    Pressed widget;
    bool isOffered = true;
    const auto offer = [&]() -> std::optional<DragOffer> {
        if (!isOffered) return std::nullopt;
        return DragOffer{{.Text = "85.0", .Html = {}, .Png = {}, .Svg = {}}, "a.csv", [] { return std::string(); }};
    };
    auto* const drags = new CountedDrags(
        widget, [](const QMouseEvent& press) { return press.position().x() < 50; }, offer);
    const auto send = [&](QEvent::Type type, const QPointF& at) {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, at, at, button, Qt::LeftButton, {});
        QApplication::sendEvent(&widget, &event);
    };
    const auto drag = [&](const QPointF& from, double by) {
        send(QEvent::MouseButtonPress, from);
        send(QEvent::MouseMove, from + QPointF(by, 0));
        send(QEvent::MouseButtonRelease, from + QPointF(by, 0));
    };
    drag({10, 10}, 30);
    EXPECT_EQ(drags->texts, QStringList("85.0"));
    EXPECT_EQ(widget.presses, 0);
    drag({10, 10}, 1);
    EXPECT_EQ(widget.presses, 1) << "a click";
    drag({60, 10}, 30);
    EXPECT_EQ(widget.presses, 2) << "no grip";
    isOffered = false;
    drag({10, 10}, 30);
    EXPECT_EQ(drags->texts.size(), 1);
}

} // namespace
} // namespace kestrane
