#include "cli/Toolkit.h"

namespace kestrane {

int withLoop(const std::function<int(EventPump& pump)>& work) {
    HeadlessEventPump pump;
    return work(pump);
}

} // namespace kestrane
