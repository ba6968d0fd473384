// Keeps a hostile file from taking many times its size: what reading it takes is counted, from any thread.
#pragma once

#include "model/clsLog.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <string_view>

namespace kestrane {

constexpr std::size_t kAllowance = 44 << 20; // beside the text

// What a log takes that has been read, but for its rows and texts; withRows: once they have been loaded and
// recalculated.
inline std::size_t memoryOf(const clsLog& log, bool withRows) {
    constexpr std::size_t kAllocations = 80; // what the allocator adds, and the place in the collection
    constexpr std::size_t kLoading = 280;    // where the rows lie; the requests for them take what the text gives back
    const auto bands = static_cast<std::size_t>(lastBand(log.Mode())) + 1;
    std::size_t total = sizeof(clsLog) + sizeof(clsLogShared) + kAllocations + log.LnCumA.bytes();
    if (withRows) return total + kLoading + 3 * bands * sizeof(clsValue);
    for (const BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA})
        total += values->bytes();
    return total;
}

class MemoryBudget {
public:
    // Raises 7 past fileSize and kAllowance.
    void charge(std::size_t memory, std::size_t fileSize) {
        if (charged_.fetch_add(memory) + memory > fileSize + kAllowance) {
            throw RuntimeError(kErrorOutOfMemory, "Out of memory (the file asks for more than twice its size)");
        }
    }

    // A long text is copied several times while it is read, and escaped again to be compared: some characters to ten.
    void chargeText(std::string_view text, std::size_t fileSize) {
        constexpr std::size_t kLongText = 16 << 10;
        constexpr std::size_t kCopies = 4;
        constexpr std::size_t kEscaped = 10;
        if (text.size() <= kLongText) return;
        const auto isEscaped = [](char c) {
            return static_cast<unsigned char>(c) > 126 ||
                   std::string_view("&<>\"'/|").find(c) != std::string_view::npos;
        };
        const auto escaped = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isEscaped));
        charge(kCopies * (text.size() + kEscaped * escaped), fileSize);
    }

private:
    std::atomic<std::size_t> charged_ = 0;
};

} // namespace kestrane
