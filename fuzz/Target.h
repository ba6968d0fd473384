// A fuzz target: one function that takes any bytes. It is linked with libFuzzer to search, or with the replay program
// to run kept inputs again.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace kestrane::fuzz {

// Ends the program when a property does not hold.
inline void require(bool holds, const char* property) {
    if (holds) return;
    std::fprintf(stderr, "Property does not hold: %s\n", property);
    std::abort();
}

} // namespace kestrane::fuzz
