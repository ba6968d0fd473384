// Numbers as hexadecimal digits, as the text protocols send them. A text that is no number ends the download, because
// the reply cannot be decoded.
#pragma once

#include "download/Transport.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace kestrane {

// The number that the whole text stands for, in one to seven digits.
inline std::int32_t hexNumber(std::string_view text) {
    constexpr std::size_t kMost = 7;
    constexpr int kBase = 16;
    std::int32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, kBase);
    const bool isGood = result.ec == std::errc() && result.ptr == end && value >= 0 && text.size() <= kMost;
    if (!isGood) throw DownloadEnded{std::string(kReplyError)};
    return value;
}

// A number of four digits, high byte first, in tenths: FFFF is 6553.5.
inline float HexPairValue(std::string_view text) {
    constexpr double kTenths = 10;
    return static_cast<float>(hexNumber(text) / kTenths);
}

inline std::string fourHexDigits(int value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%04X", static_cast<unsigned>(value));
    return text.data();
}

} // namespace kestrane
