// HTTP on Qt Network. It needs an application object; while it waits, an event loop of its own keeps the windows alive.
#pragma once

#include "platform/Http.h"

#include <chrono>

namespace kestrane {

class QtHttp : public Http {
public:
    // A fetch fails when no byte arrives for the time of silence.
    explicit QtHttp(std::chrono::milliseconds silence = std::chrono::seconds(30)) : silence_(silence) {}

    HttpAnswer Get(const std::string& address, std::int64_t mostBytes, const GoOn& goOn) override;

private:
    std::chrono::milliseconds silence_;
};

} // namespace kestrane
