// Counts the memory that reading a file takes, on any thread, so that a hostile file cannot take many times its size.
#pragma once

#include "model/clsLog.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <string_view>

namespace kestrane {

constexpr std::size_t kAllowance = 44 << 20; // bytes, in addition to the size of the text

// The bytes that a log takes without its rows and texts: as it is now or, withRows, once its rows have been loaded and
// recalculated.
inline std::size_t memoryOf(const clsLog& log, bool withRows) {
    constexpr std::size_t kAllocations = 80; // the overhead of the allocator and the place in the collection
    // The places of the rows; the requests for the rows use the memory that the text gives back.
    constexpr std::size_t kLoading = 280;
    const auto bands = static_cast<std::size_t>(lastBand(log.Mode())) + 1;
    std::size_t total = sizeof(clsLog) + sizeof(clsLogShared) + kAllocations + log.LnCumA.bytes();
    if (withRows) return total + kLoading + 3 * bands * sizeof(clsValue);
    for (const BandValues* values : {&log.LeqCumA, &log.LminCumA, &log.LmaxCumA})
        total += values->bytes();
    return total;
}

class MemoryBudget {
public:
    // Raises 7 when more than fileSize plus kAllowance has been charged.
    void charge(std::size_t memory, std::size_t fileSize) {
        if (charged_.fetch_add(memory) + memory > fileSize + kAllowance) {
            throw RuntimeError(kErrorOutOfMemory, "Out of memory (the file asks for more than twice its size)");
        }
    }

    // A long text is copied several times while it is read, and is escaped again to be compared, which turns some
    // characters into ten.
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
