// Reads what an instrument sent: fields at offsets, and little-endian numbers. A field that is not within the bytes
// ends the download, because the reply cannot be decoded.
#pragma once

#include "download/Transport.h"
#include "platform/Utf8.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace kestrane {

// The bytes of a field; offset is counted from 0.
inline std::string_view wireField(std::string_view bytes, std::size_t offset, std::size_t length) {
    if (offset > bytes.size() || length > bytes.size() - offset) throw DownloadEnded{std::string(kReplyError)};
    return bytes.substr(offset, length);
}

inline std::uint64_t wireNumber(std::string_view bytes, std::size_t offset, std::size_t length) {
    std::uint64_t value = 0;
    const std::string_view field = wireField(bytes, offset, length);
    for (std::size_t i = length; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(field[i]);
    return value;
}

inline std::int32_t wireLong(std::string_view bytes, std::size_t offset) {
    return static_cast<std::int32_t>(wireNumber(bytes, offset, sizeof(std::int32_t)));
}

inline std::uint8_t wireByte(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint8_t>(wireNumber(bytes, offset, 1));
}

// Most of a log is read with this. The bytes are copied unchanged on a machine whose own numbers are little-endian.
inline double wireDouble(std::string_view bytes, std::size_t offset) {
    if constexpr (std::endian::native != std::endian::little)
        return std::bit_cast<double>(wireNumber(bytes, offset, sizeof(double)));
    double value = 0;
    std::memcpy(&value, wireField(bytes, offset, sizeof value).data(), sizeof value);
    return value;
}

// Single-byte characters as UTF-8 text, each byte as the code point of the same number.
inline std::string wireText(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        appendUtf8(text, static_cast<unsigned char>(byte));
    return text;
}

// A number as four little-endian bytes of a command.
inline std::string wireBytes(std::uint32_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

} // namespace kestrane
