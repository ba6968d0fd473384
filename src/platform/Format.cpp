#include "platform/Format.h"

#include "platform/Numbers.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kestrane {

namespace {

std::size_t weekdayOf(const CivilDate& date) {
    const auto daysFromMonday = static_cast<std::int64_t>(fromCivil(date) - fromCivil({1, 1, 1}));
    return static_cast<std::size_t>(daysFromMonday % 7);
}

bool isPlace(char c) {
    return c == '0' || c == '#';
}

// The digits of a magnitude rounded to a number of decimals, without the point and without leading zeros; empty for 0
// and for what is not finite.
std::string roundedDigits(double magnitude, int decimals) {
    const double scaled = magnitude * std::pow(10.0, decimals);
    if (!std::isfinite(scaled)) return {};
    const double whole = roundHalfAway(scaled);
    if (whole == 0) return {};
    std::array<char, 400> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), whole, std::chars_format::fixed, 0);
    return std::string(text.data(), result.ptr);
}

std::string numberText(int number, std::size_t atLeastDigits) {
    const std::string text = std::to_string(number);
    return text.size() < atLeastDigits ? std::string(atLeastDigits - text.size(), '0') + text : text;
}

struct DateParts {
    CivilDate date;
    int seconds; // of the day
};

// The text that a run of one letter in a date pattern stands for.
std::string datePart(const DateParts& parts, char letter, std::size_t length, const DateWords& words) {
    const auto name = [&](std::string_view full) {
        std::size_t end = length == 3 ? 0 : full.size();
        for (int letters = 0; letters < 3 && end < full.size(); ++letters)
            nextCodePoint(full, end);
        return std::string(full.substr(0, end));
    };
    const CivilDate& date = parts.date;
    switch (letter) {
    case 'd':
        if (length < 3) return numberText(date.Day, length);
        return name(words.Weekdays.at(weekdayOf(date)));
    case 'm':
        if (length < 3) return numberText(date.Month, length);
        return name(words.Months.at(static_cast<std::size_t>(date.Month - 1)));
    case 'y':
        return numberText(length < 3 ? date.Year % 100 : date.Year, length < 3 ? 2 : 4);
    case 'h':
        return numberText(parts.seconds / 3600, length);
    case 'n':
        return numberText(parts.seconds / 60 % 60, length);
    default:
        return numberText(parts.seconds % 60, length);
    }
}

} // namespace

std::string formatNumber(double value, std::string_view pattern, const Locale& locale) {
    const std::size_t point = std::min(pattern.find('.'), pattern.size());
    const std::string_view before = pattern.substr(0, point);
    const std::string_view behind = pattern.substr(point);
    const auto decimals = static_cast<std::size_t>(std::count_if(behind.begin(), behind.end(), isPlace));

    if (pattern.find('%') != std::string_view::npos) value *= 100;
    std::string digits = roundedDigits(std::abs(value), static_cast<int>(decimals));
    std::string text = value < 0 && !digits.empty() ? "-" : "";
    if (digits.size() < decimals) digits.insert(0, decimals - digits.size(), '0');
    std::string whole = digits.substr(0, digits.size() - decimals);
    std::string fraction = digits.substr(whole.size());

    // A "0" forces its own digit and all digits between it and the point to be shown.
    const auto firstZero = std::find(before.begin(), before.end(), '0');
    const auto shownWhole = static_cast<std::size_t>(std::count_if(firstZero, before.end(), isPlace));
    const auto lastZero = std::find(behind.rbegin(), behind.rend(), '0');
    const auto shownFraction = static_cast<std::size_t>(std::count_if(lastZero, behind.rend(), isPlace));
    if (whole.size() < shownWhole) whole.insert(0, shownWhole - whole.size(), '0');
    while (fraction.size() > shownFraction && fraction.back() == '0')
        fraction.pop_back();

    std::size_t next = 0;
    auto placesLeft = static_cast<std::size_t>(std::count_if(before.begin(), before.end(), isPlace));
    for (const char c : before) {
        if (isPlace(c)) { // the first place also takes the digits that have no place of their own
            while (whole.size() - next >= placesLeft)
                text += whole[next++];
            --placesLeft;
        } else {
            text += c;
        }
    }
    if (!behind.empty()) text += locale.DecimalSeparator;
    next = 0;
    for (const char c : behind.substr(std::min<std::size_t>(behind.size(), 1))) {
        if (!isPlace(c)) {
            text += c;
        } else if (next < fraction.size()) {
            text += fraction[next++];
        }
    }
    return text;
}

std::string formatDate(CalendarTime time, std::string_view pattern, const DateWords& words) {
    if (pattern == "long date") pattern = words.LongDate;
    const DateParts parts = {toCivil(time), secondsOfDay(time)};
    std::string text;
    while (!pattern.empty()) {
        const std::string_view letters = "dmyhns";
        const std::size_t length = std::min(pattern.find_first_not_of(pattern.front()), pattern.size());
        if (letters.find(pattern.front()) == std::string_view::npos) {
            text += pattern.substr(0, length);
        } else {
            text += datePart(parts, pattern.front(), length, words);
        }
        pattern.remove_prefix(length);
    }
    return text;
}

} // namespace kestrane
