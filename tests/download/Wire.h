// Bytes of an instrument, written by hand in tests.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kestrane {

// "02 FE" as bytes; blanks are for the reader.
inline std::string bytesOf(std::string_view hex) {
    const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'A' + 10; };
    std::string bytes;
    for (std::size_t i = 0; i + 1 < hex.size();) {
        if (hex[i] == ' ') {
            ++i;
            continue;
        }
        bytes += static_cast<char>(digit(hex[i]) * 16 + digit(hex[i + 1]));
        i += 2;
    }
    return bytes;
}

// A record to put fields into.
class Record {
public:
    explicit Record(std::size_t size) : bytes_(size, '\0') {}

    Record& at(std::size_t offset, std::int32_t value) {
        return raw(offset, std::bit_cast<std::array<char, 4>>(value));
    }

    Record& at(std::size_t offset, double value) { return raw(offset, std::bit_cast<std::array<char, 8>>(value)); }

    Record& stamp(std::size_t offset, std::initializer_list<char> parts) {
        for (const char part : parts)
            bytes_.at(offset++) = part;
        return *this;
    }

    Record& byte(std::size_t offset, char value) {
        bytes_.at(offset) = value;
        return *this;
    }

    operator std::string() const { return bytes_; } // NOLINT: a record is its bytes

private:
    template <std::size_t N>
    Record& raw(std::size_t offset, const std::array<char, N>& value) {
        for (const char c : value)
            bytes_.at(offset++) = c;
        return *this;
    }

    std::string bytes_;
};

// STX, length, payload, "00", ETX.
inline std::string textFrame(const std::string& payload) {
    std::array<char, 24> length{};
    std::snprintf(length.data(), length.size(), "%04zX", payload.size());
    return "\x02" + std::string(length.data()) + payload + "00\x03";
}

} // namespace kestrane
