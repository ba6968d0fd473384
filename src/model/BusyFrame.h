#pragma once

#include "model/Session.h"

namespace kestrane {

// While this object lives, the frame shows that it accepts no command.
class BusyFrame {
public:
    explicit BusyFrame(Frame& frame) : frame_(frame) { frame_.SetBusy(true); }

    ~BusyFrame() { frame_.SetBusy(false); }

    BusyFrame(const BusyFrame&) = delete;
    BusyFrame& operator=(const BusyFrame&) = delete;

private:
    Frame& frame_;
};

} // namespace kestrane
