#include "model/TimeText.h"

#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace kestrane {

namespace {

int wholePart(std::string_view text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (result.ec != std::errc() || result.ptr != end) raiseTypeMismatch();
    return value;
}

// The digits "hhmmss" that a typed text stands for; a text of another length or with other characters when it stands
// for none.
std::string sixDigits(std::string s, bool AsDuration) {
    std::size_t colon = s.find(':');
    if (colon == std::string::npos) {
        const std::size_t length = s.size();
        if (length % 2 == 1 && length <= 5) s.insert(0, "0");
        if (length == 1 || length == 2) return AsDuration ? s + "0000" : std::string();
        if (length == 3 || length == 4) return s + "00";
        return length == 5 || length == 6 ? s : std::string();
    }
    if (colon == 0 || colon >= 3) return {};
    if (colon == 1) s.insert(0, "0");
    const std::string hours = s.substr(0, 2);
    const std::string mins = s.substr(3, 2);
    const std::size_t second = s.find(':', 3);
    if (second == std::string::npos) {
        return s.size() == 5 ? hours + mins + "00" : std::string();
    }
    if (second != 5) return {};
    if (s.size() == 7) return hours + mins + "0" + s.substr(6);
    if (s.size() == 8) return hours + mins + s.substr(6);
    return {};
}

} // namespace

double TimeTextToHours(std::string_view text) {
    const std::size_t first = text.find(':');
    const std::size_t second = first == std::string_view::npos ? first : text.find(':', first + 1);
    if (second == std::string_view::npos) raiseTypeMismatch();
    const double hours = wholePart(text.substr(0, first));
    const double mins = wholePart(text.substr(first + 1, second - first - 1));
    const double secs = wholePart(text.substr(second + 1));
    return hours + mins / 60 + secs / 3600;
}

std::string HoursToTimeText(float hours) {
    const double whole = std::floor(hours);
    const double minutes = (hours - whole) * 60;
    const double wholeMinutes = std::floor(minutes);
    char text[48];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", roundToLong(whole), roundToLong(wholeMinutes),
                  roundToLong((minutes - wholeMinutes) * 60));
    return text;
}

std::string NormaliseTimeText(std::string_view text, bool AsDuration) {
    const std::string s = sixDigits(std::string(text), AsDuration);
    const bool isDigits = std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
    if (s.size() != 6 || !isDigits) return {};
    const int hours = wholePart(std::string_view(s).substr(0, 2));
    const int mins = wholePart(std::string_view(s).substr(2, 2));
    const int secs = wholePart(std::string_view(s).substr(4, 2));
    if (mins > 59 || secs > 59) return {};
    const bool isMidnight = AsDuration && hours == 24 && mins == 0 && secs == 0;
    if (hours > 23 && !isMidnight) return {};
    return s.substr(0, 2) + ":" + s.substr(2, 2) + ":" + s.substr(4, 2);
}

} // namespace kestrane
