#include "model/clsDate.h"

#include "platform/Format.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <array>
#include <charconv>
#include <optional>

namespace kestrane {

namespace {

std::optional<std::int16_t> hexByte(std::string_view text, std::size_t position) {
    if (position + 2 > text.size()) return std::nullopt;
    std::int16_t value = 0;
    const char* end = text.data() + position + 2;
    const auto result = std::from_chars(text.data() + position, end, value, 16);
    if (result.ec != std::errc() || result.ptr != end || value < 0) return std::nullopt;
    return value;
}

} // namespace

void clsDate::Copy(const clsDate& objPrevDate, int intDays) {
    *this = objPrevDate;
    if (intDays <= 0 || !IsDate()) return;
    const CivilDate later = toCivil(getDate() + intDays);
    Day = checkedInteger(later.Day);
    Month = checkedInteger(later.Month);
    Year = checkedInteger(later.Year);
}

void clsDate::CalcDate(std::string_view strDate) {
    const auto day = hexByte(strDate, 0);
    const auto month = hexByte(strDate, 2);
    const auto year = strDate.size() < 2 ? std::nullopt : hexByte(strDate, strDate.size() - 2);
    const clsDate notSet;
    if (!day || !month || !year) {
        *this = notSet;
        return;
    }
    Day = *day;
    Month = *month;
    Year = *year;
    if (!IsDate()) *this = notSet;
}

bool clsDate::IsDate() const {
    if (Day + Month + Year <= 0) return false;
    if (!(Year >= 0 && Year <= 99) && !(Year >= 1900 && Year <= 2100)) return false;
    return isCivilDate(expandTwoDigitYear(Year), Month, Day);
}

std::string clsDate::Format(std::string_view strFormat) const {
    if (!IsDate()) return {};
    const std::string text = formatDate(getDate(), strFormat.empty() ? "dd/mm/yyyy" : strFormat);
    return text == "01/01/1900" ? std::string() : text;
}

void clsDate::setDate(std::string_view strDate, const Locale& locale) {
    std::string_view separator = "/";
    if (strDate.find(separator) == std::string_view::npos) separator = locale.DateSeparator;
    if (separator.empty()) return;
    const std::size_t first = strDate.find(separator);
    if (first == std::string_view::npos) return;
    const std::size_t second = strDate.find(separator, first + separator.size());
    if (second == std::string_view::npos) return;
    const std::array parts = {strDate.substr(0, first),
                              strDate.substr(first + separator.size(), second - first - separator.size()),
                              strDate.substr(second + separator.size())};
    for (const std::string_view part : parts) {
        if (!isNumeric(part, locale)) return;
    }
    Day = toInteger(parts[0], locale);
    Month = toInteger(parts[1], locale);
    Year = toInteger(parts[2], locale);
    if (!IsDate()) Day = Month = Year = 0;
}

CalendarTime clsDate::getDate() const {
    if (!IsDate()) return 0;
    return fromCivil({expandTwoDigitYear(Year), Month, Day});
}

CalendarTime clsDate::getDate(const clsTime& objTime) const {
    const CalendarTime day = getDate();
    if (!IsDate() || objTime.hh_mm_ss().empty()) return day;
    if (objTime.hh_mm().empty() || objTime.Hours >= 24) raiseTypeMismatch();
    return fromCivil(toCivil(day), objTime.getTimeAsSeconds());
}

} // namespace kestrane
