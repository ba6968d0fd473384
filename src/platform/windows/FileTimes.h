// The system counts steps of 100 ns since the beginning of 1601, the program nanoseconds since that of 1970.
#pragma once

#include <cstdint>

#include <windows.h>

namespace kestrane {

inline std::int64_t nanosecondsOf(std::int64_t steps) {
    constexpr std::int64_t kSecondsBefore1970 = 11'644'473'600;
    constexpr std::int64_t kSteps = 10'000'000; // a second
    return (steps - kSecondsBefore1970 * kSteps) * 100;
}

inline std::int64_t nanosecondsOf(FILETIME time) {
    return nanosecondsOf(static_cast<std::int64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

} // namespace kestrane
