#include "cli/Toolkit.h"
#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>

namespace kestrane {

int withLoop(const std::function<int(EventPump& pump)>& work) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    QtEventPump pump;
    return work(pump);
}

} // namespace kestrane
