#include "platform/Interrupt.h"

#include <atomic>

#include <windows.h>

namespace kestrane {

namespace {

std::atomic<bool> isInterrupted = false;
std::atomic<int> living = 0;

BOOL WINAPI interrupt(DWORD event) {
    if (living == 0) return FALSE; // as if nobody had asked
    isInterrupted = true;
    // The system ends the program when this returns, if its window was closed or the user logs off.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

} // namespace

Interrupt::Interrupt() : before_{} {
    if (living++ == 0) SetConsoleCtrlHandler(interrupt, TRUE);
}

Interrupt::~Interrupt() {
    if (--living == 0) SetConsoleCtrlHandler(interrupt, FALSE);
}

bool Interrupt::hasCome() {
    return isInterrupted;
}

} // namespace kestrane
