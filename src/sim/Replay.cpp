#include "sim/Replay.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace kestrane {

namespace {

struct TranscriptLine {
    std::chrono::milliseconds at;
    char direction; // '>' or '<'
    std::string bytes;
};

std::optional<std::string> bytesOf(std::string_view hex) {
    std::string digits(hex);
    std::erase_if(digits, [](char c) { return c == ' ' || c == '\r'; });
    if (digits.size() % 2 != 0) return std::nullopt;
    std::string bytes;
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        unsigned value = 0;
        const char* const end = digits.data() + at + 2;
        const auto result = std::from_chars(digits.data() + at, end, value, 16);
        if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
        bytes += static_cast<char>(value);
    }
    return bytes;
}

std::optional<TranscriptLine> parse(std::string_view line) {
    double seconds = 0;
    const auto result = std::from_chars(line.data() + 1, line.data() + line.size(), seconds);
    const auto behind = static_cast<std::size_t>(result.ptr - line.data());
    if (line[0] != '+' || result.ec != std::errc() || behind + 3 > line.size()) return std::nullopt;
    const char direction = line[behind + 1];
    const auto bytes = bytesOf(line.substr(behind + 3));
    constexpr double kDay = 86400;
    const bool isTime = seconds >= 0 && seconds <= kDay; // false for NaN, too
    if ((direction != '>' && direction != '<') || !bytes || !isTime) return std::nullopt;
    return TranscriptLine{std::chrono::milliseconds(std::lround(seconds * 1000)), direction, *bytes};
}

} // namespace

ReplayedInstrument::ReplayedInstrument(std::istream& transcript) {
    std::string text;
    std::chrono::milliseconds before{0};
    for (int number = 1; std::getline(transcript, text); ++number) {
        if (text.empty() || text == "\r" || text[0] == '#') continue;
        const auto line = parse(text);
        if (!line) throw RuntimeError(kErrorApplication, "Line " + std::to_string(number) + " is none of a transcript");
        if (line->direction == '>') {
            if (!line->bytes.empty()) exchanges_.push_back({line->bytes, line->at, {}});
        } else if (!exchanges_.empty()) {
            exchanges_.back().received.push_back(
                {line->bytes, std::max(line->at - before, std::chrono::milliseconds(0))});
        }
        before = line->at;
    }
    if (exchanges_.empty()) throw RuntimeError(kErrorApplication, "The transcript holds no command to an instrument");
}

const ReplayedInstrument::Exchange* ReplayedInstrument::find() {
    const auto isAsked = [this](const Exchange& exchange) { return received_.starts_with(exchange.sent); };
    const auto from = exchanges_.begin() + static_cast<std::ptrdiff_t>(next_);
    auto found = std::find_if(from, exchanges_.end(), isAsked);
    if (found == exchanges_.end()) {
        found = std::find_if(exchanges_.begin(), from, isAsked);
        if (found == from) return nullptr;
    }
    next_ = static_cast<std::size_t>(found - exchanges_.begin()) + 1;
    return &*found;
}

Reply ReplayedInstrument::answer(std::string_view bytes) {
    received_ += bytes;
    Reply reply;
    while (!received_.empty()) {
        if (const Exchange* exchange = find()) {
            reply.pieces.insert(reply.pieces.end(), exchange->received.begin(), exchange->received.end());
            received_.erase(0, exchange->sent.size());
            continue;
        }
        const bool mayCome = std::any_of(exchanges_.begin(), exchanges_.end(), [this](const Exchange& exchange) {
            return exchange.sent.starts_with(received_);
        });
        if (mayCome) break;
        received_.erase(0, 1);
    }
    return reply;
}

} // namespace kestrane
