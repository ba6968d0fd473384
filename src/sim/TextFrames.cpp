#include "sim/TextFrames.h"

#include "platform/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

namespace kestrane {

namespace {

constexpr char kStart = '\x02';
constexpr char kEnd = '\x03';
constexpr std::string_view kCheck = "00";
constexpr std::size_t kHead = 5;     // bytes: start and length
constexpr std::size_t kTail = 3;     // bytes: check and end
constexpr std::size_t kLongest = 64; // bytes of a command's payload

std::optional<unsigned> hexNumber(std::string_view digits) {
    unsigned value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (result.ec != std::errc() || result.ptr != digits.data() + digits.size()) return std::nullopt;
    return value;
}

std::string hexText(const char* format, unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

} // namespace

std::string hexPair(unsigned value) {
    return hexText("%02X", value & 0xFFU);
}

std::string hexWord(unsigned value) {
    return hexText("%04X", value & 0xFFFFU);
}

std::string tenths(float value) {
    const double whole = roundHalfAway(static_cast<double>(value) * 10);
    return hexWord(whole > 0 && whole <= 0xFFFF ? static_cast<unsigned>(whole) : 0);
}

std::string hexTime(std::int32_t secondsOfDay) {
    const auto seconds = static_cast<unsigned>(secondsOfDay);
    return hexPair(seconds / 3600) + hexPair(seconds / 60 % 60) + hexPair(seconds % 60);
}

std::string hexDate(const clsDate& date) {
    if (date.Format().empty()) return "000000";
    const CivilDate day = toCivil(date.getDate());
    return hexPair(static_cast<unsigned>(day.Day)) + hexPair(static_cast<unsigned>(day.Month)) +
           hexPair(static_cast<unsigned>(day.Year % 100));
}

std::string textFrame(std::string_view payload) {
    std::string frame(1, kStart);
    frame += hexWord(static_cast<unsigned>(payload.size()));
    frame.append(payload).append(kCheck).push_back(kEnd);
    return frame;
}

std::size_t TextInstrument::commandLength(std::string_view bytes) const {
    if (bytes[0] != kStart) return kNoCommand;
    const std::size_t digits = std::min(bytes.size(), kHead) - 1;
    if (digits > 0 && !hexNumber(bytes.substr(1, digits))) return kNoCommand;
    if (bytes.size() < kHead) return kIncomplete;
    const std::size_t payload = *hexNumber(bytes.substr(1, digits));
    if (payload > kLongest) return kNoCommand;
    const std::size_t length = kHead + payload + kTail;
    if (bytes.size() < length) return kIncomplete;
    return bytes.substr(length - kTail, kCheck.size()) == kCheck && bytes[length - 1] == kEnd ? length : kNoCommand;
}

std::string TextInstrument::reply(std::string_view command) {
    return answerTo(command.substr(kHead, command.size() - kHead - kTail));
}

const clsLog* askedLog(std::string_view payload, const std::vector<const clsLog*>& logs) {
    constexpr std::size_t kLength = 8;
    if (payload.size() != kLength || !payload.starts_with("02")) return nullptr;
    const std::size_t number = hexNumber(payload.substr(2, 4)).value_or(0);
    return number >= 1 && number <= logs.size() ? logs[number - 1] : nullptr;
}

} // namespace kestrane
