#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>
#include <QTimer>

#include <utility>

namespace kestrane {

void QtEventPump::post(std::function<void()> event) {
    QMetaObject::invokeMethod(&receiver_, std::move(event), Qt::QueuedConnection);
}

void QtEventPump::yield() {
    QCoreApplication::processEvents();
}

void QtEventPump::wait(std::chrono::milliseconds atMost) {
    QTimer timeUp;
    timeUp.setSingleShot(true);
    timeUp.start(atMost);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    yield();
}

} // namespace kestrane
