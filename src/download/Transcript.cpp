#include "download/Transcript.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <utility>

namespace kestrane {

Transcript::Transcript(const MonotonicClock& clock, TranscriptSink sink) :
    clock_(clock), sink_(std::move(sink)), start_(clock.now()) {}

void Transcript::Note(std::string_view text) const {
    if (!sink_) return;
    std::string line = "# " + std::string(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    sink_(line + "\n");
}

void Transcript::chunk(char direction, std::string_view bytes) const {
    if (!sink_) return;
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    constexpr long long kSecond = 1000;
    const long long elapsed = (clock_.now() - start_).count();
    std::array<char, 48> head{};
    std::snprintf(head.data(), head.size(), "+%lld.%03lld %c ", elapsed / kSecond, elapsed % kSecond, direction);
    std::string line = head.data();
    line.reserve(line.size() + 2 * bytes.size() + 1);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        line += kDigits[byte >> 4];
        line += kDigits[byte & 15];
    }
    line += '\n';
    sink_(line);
}

} // namespace kestrane
