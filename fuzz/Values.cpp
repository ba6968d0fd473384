// Any text as a value: numbers, dates, times, row ranges, patterns, a command line. Refusals are those that the parsers
// tell of, and what a parser writes it reads back.
#include "Target.h"
#include "app/StartUp.h"
#include "files/XmlReader.h"
#include "files/XmlValues.h"
#include "files/XmlWriter.h"
#include "model/TimeText.h"
#include "model/clsDate.h"
#include "model/clsTime.h"
#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "views/Selection.h"

#include <cmath>
#include <optional>
#include <string>

namespace kestrane::fuzz {

namespace {

// What f returns; nothing when it raises one of the two errors of conversions.
template <class F>
auto unlessRaised(F f) -> std::optional<decltype(f())> {
    try {
        return f();
    } catch (const RuntimeError& error) {
        require(error.Number == kErrorOverflow || error.Number == kErrorTypeMismatch, "conversions raise 6 or 13");
        return std::nullopt;
    }
}

void numbers(const std::string& text, const Locale& locale) {
    const auto number = unlessRaised([&] { return toDouble(text, locale); });
    const bool isNumber = isNumeric(text, locale);
    require(!number || (isNumber && std::isfinite(*number)), "what converts is numeric");
    const auto integer = unlessRaised([&] { return toInteger(text, locale); });
    require(!integer || *integer == std::nearbyint(*number), "an integer is the rounded number");
    const auto whole = unlessRaised([&] { return toLong(text, locale); });
    require(!whole || *whole == std::nearbyint(*number), "a long is the rounded number");
    const auto single = unlessRaised([&] { return toSingle(text, locale); });
    require(!single || (number && std::isfinite(*single)), "a single is a number");
    const auto level = unlessRaised([&] { return readLevel(text, locale); });
    require(!single || level == single, "a level is the single of the text");
    // Files may have "." in any locale.
    require(isNumber || level == 0.0F || locale.DecimalSeparator != ".", "what is no number is the level 0");
    unlessRaised([&] { return readInteger(text, locale); });
    unlessRaised([&] { return readLong(text, locale); });
    unlessRaised([&] { return readFlag(text, locale); });
    if (!single) return;
    float back = 0;
    require(readSingle(singleText(*single), back) && back == *single, "a single's text reads back");
    const auto hours = unlessRaised([&] { return HoursToTimeText(*single); });
    require(!hours || hours->size() >= 8, "hours have a time text");
}

void patterns(const std::string& text, const Locale& locale) {
    for (const double value : {0.0, -0.04, 50.25, 1e300})
        formatNumber(value, text, locale);
    formatDate(fromCivil({2019, 6, 3}, 86399), text);
}

void dates(const std::string& text, const Locale& locale) {
    clsDate date;
    unlessRaised([&] { return date.setDate(text, locale), 0; });
    clsDate back;
    const std::string written = date.Format();
    if (!written.empty()) {
        back.setDate(written, locale);
        require(back.Format() == written, "a date reads back");
    }
    date.CalcDate(text);
    require(date.IsDate(), "hexadecimal pairs make a date");
    date.Copy(clsDate(date), 30);
}

void times(const std::string& text, const Locale& locale) {
    clsTime time;
    unlessRaised([&] { return time.setTime(text, locale), 0; });
    unlessRaised([&] { return time.getTimeAsHours(); });
    const std::string written = time.hh_mm_ss(); // ":00" with minutes past their range
    if (!time.hh_mm().empty() && !written.empty()) {
        clsTime back;
        back.setTime(written, locale);
        require(back == time, "a time reads back");
    }
    time.AcquireTime(text);
    require(!time.hh_mm_ss().empty() && time.Hours < 24, "hexadecimal pairs make a time of day");

    unlessRaised([&] { return TimeTextToHours(text); });
    for (const bool asDuration : {false, true}) {
        const std::string normal = NormaliseTimeText(text, asDuration);
        if (normal.empty()) continue;
        require(NormaliseTimeText(normal, asDuration) == normal, "a normal time text is left as it is");
        const double hours = TimeTextToHours(normal);
        require(hours >= 0 && hours <= 24, "a normal time text is within a day");
    }
}

void rowRanges(const std::string& text) {
    for (const RowRange& range : parseRowRanges(text)) {
        const auto back = selectionRanges({selectionText(range)});
        require(back.size() == 1 && back[0].From == range.From && back[0].To == range.To, "a row range reads back");
        isRangeOf(range, 1000);
    }
    const std::vector<RowRange> ranges = selectionRanges({text});
    excludedRows(ranges, false, 100);
    excludedRows(ranges, true, 100);
}

void commandLine(const std::string& text) {
    const auto isEven = [](const std::string& name) { return name.size() % 2 == 0; };
    for (const std::string& name : commandLineFiles(text, isEven))
        require(!name.empty() && text.find(name) != std::string::npos, "a file name stands on the command line");
    if (text.empty() || text.find('"') != std::string::npos) return;
    const std::vector<std::string> arguments = {text, "a b.xml", text};
    require(commandLineFiles(commandLineText(arguments), isEven) == arguments, "arguments are taken as they are");
}

void texts(const std::string& text) {
    const std::string escaped = escapeText(text);
    for (const char c : escaped)
        require(c == '\t' || (c >= ' ' && c < 0x7F && c != '<'), "an escaped text is plain");
    unescapeText(text);
    std::size_t at = 0;
    while (at < text.size())
        nextCodePoint(text, at);
    require(at == text.size(), "code points cover a text");
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const Locale& locale : {Locale{".", "/"}, Locale{",", "."}, Locale{"\u066B", "-"}}) {
        numbers(text, locale);
        dates(text, locale);
        times(text, locale);
        patterns(text, locale);
    }
    rowRanges(text);
    commandLine(text);
    texts(text);
    return 0;
}
