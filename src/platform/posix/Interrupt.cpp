#include "platform/Interrupt.h"

#include <csignal>

namespace kestrane {

namespace {

volatile std::sig_atomic_t isInterrupted = 0;

void interrupt(int) {
    isInterrupted = 1;
}

} // namespace

Interrupt::Interrupt() : before_{std::signal(SIGINT, interrupt), std::signal(SIGTERM, interrupt)} {}

Interrupt::~Interrupt() {
    std::signal(SIGINT, before_[0]);
    std::signal(SIGTERM, before_[1]);
}

bool Interrupt::hasCome() {
    return isInterrupted != 0;
}

} // namespace kestrane
