#include "platform/Utf8.h"

#include "platform/InPieces.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>

namespace kestrane {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The length in bytes of the UTF-8 sequence that begins at p; 0 when none begins there.
std::size_t sequenceLength(const unsigned char* p, const unsigned char* end) {
    const auto isTail = [&](int i) { return end - p > i && (p[i] & 0xC0) == 0x80; };
    if (p[0] < 0x80) return 1;
    if (p[0] < 0xC2) return 0;
    if (p[0] < 0xE0) return isTail(1) ? 2 : 0;
    if (p[0] < 0xF0) {
        if (!isTail(1) || !isTail(2)) return 0;
        if (p[0] == 0xE0 && p[1] < 0xA0) return 0;
        if (p[0] == 0xED && p[1] > 0x9F) return 0;
        return 3;
    }
    if (p[0] > 0xF4 || !isTail(1) || !isTail(2) || !isTail(3)) return 0;
    if (p[0] == 0xF0 && p[1] < 0x90) return 0;
    if (p[0] == 0xF4 && p[1] > 0x8F) return 0;
    return 4;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool isValidPiece(std::string_view text) {
    const auto* p = reinterpret_cast<const unsigned char*>(text.data());
    const auto* end = p + text.size();
    while (p < end) {
        std::uint64_t eight = 0;
        while (end - p >= 8) {
            std::memcpy(&eight, p, 8);
            if ((eight & 0x8080808080808080U) != 0) break;
            p += 8;
        }
        if (p == end) return true;
        const std::size_t length = sequenceLength(p, end);
        if (length == 0) return false;
        p += length;
    }
    return true;
}

} // namespace

bool isValidUtf8(std::string_view text) {
    constexpr std::size_t kPiece = std::size_t{4} << 20;
    if (text.size() <= kPiece) return isValidPiece(text);
    // A sequence belongs to the piece that its first byte lies in. When all pieces are valid, so is the whole.
    const auto begin = [&](std::size_t at) {
        const std::size_t last = std::min(at + 3, text.size());
        while (at != 0 && at < last && isContinuation(text[at]))
            ++at;
        return at;
    };
    std::atomic<bool> isValid = true;
    inPieces(text.size(), kPiece, [&](std::size_t from, std::size_t to) {
        const std::size_t first = begin(from);
        if (isValid && !isValidPiece(text.substr(first, begin(to) - first))) isValid = false;
    });
    return isValid;
}

void appendUtf8(std::string& out, char32_t codePoint) {
    const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12);
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18);
        put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

char32_t nextCodePoint(std::string_view utf8, std::size_t& position) {
    const auto* p = reinterpret_cast<const unsigned char*>(utf8.data()) + position;
    const auto* end = reinterpret_cast<const unsigned char*>(utf8.data()) + utf8.size();
    const std::size_t length = sequenceLength(p, end);
    if (length == 0) {
        ++position;
        return kReplacement;
    }
    position += length;
    if (length == 1) return p[0];
    char32_t codePoint = p[0] & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        codePoint = codePoint << 6 | (p[i] & 0x3FU);
    return codePoint;
}

char32_t fromWindows1252(unsigned char byte) {
    return byte >= 0x80 && byte < 0xA0 ? char32_t{kWindows1252[byte - 0x80U]} : char32_t{byte};
}

std::string toUtf8(std::string_view bytes) {
    if (isValidUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (const char byte : bytes)
        appendUtf8(text, fromWindows1252(static_cast<unsigned char>(byte)));
    return text;
}

std::string_view behindMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    while (text.starts_with(kMark))
        text.remove_prefix(kMark.size());
    return text;
}

std::string_view firstBytes(std::string_view utf8, std::size_t most) {
    if (utf8.size() <= most) return utf8;
    while (most > 0 && isContinuation(utf8[most]))
        --most;
    return utf8.substr(0, most);
}

} // namespace kestrane
