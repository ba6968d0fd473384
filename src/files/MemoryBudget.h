// Keeps a hostile file from taking many times its size: what reading it takes is counted, from any thread.
#pragma once

#include "platform/RuntimeError.h"

#include <atomic>
#include <cstddef>

namespace kestrane {

constexpr std::size_t kAllowance = 24 << 20;   // beside the text
constexpr std::size_t kMemoryOfLog = 16 << 10; // a log and all that belongs to it, but for its rows and texts

class MemoryBudget {
public:
    // Text that is worth its while takes less memory than it is long. Raises 7 past fileSize and kAllowance.
    void charge(std::size_t memory, std::size_t fileSize) {
        if (charged_.fetch_add(memory) + memory > fileSize + kAllowance) raiseOutOfMemory();
    }

    // A long text is copied and kept several times, and a character of it may be escaped to ten.
    void chargeText(std::size_t length, std::size_t fileSize) {
        constexpr std::size_t kLongText = 16 << 10;
        constexpr std::size_t kTextCost = 40;
        if (length > kLongText) charge(kTextCost * length, fileSize);
    }

private:
    std::atomic<std::size_t> charged_ = 0;
};

} // namespace kestrane
