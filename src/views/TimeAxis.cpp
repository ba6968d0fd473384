#include "views/TimeAxis.h"

#include "model/clsTime.h"
#include "platform/Format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace kestrane {

namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kFirstDay = 2; // 1 January 1900; a row at or before it has no date
constexpr double kClose = 0.6;        // of the usual distance between marks

constexpr std::array kSteps = {
    std::int64_t{1}, std::int64_t{2}, std::int64_t{5}, std::int64_t{10}, std::int64_t{15}, std::int64_t{30},
    kMinute,         2 * kMinute,     5 * kMinute,     10 * kMinute,     15 * kMinute,     30 * kMinute,
    kHour,           2 * kHour,       3 * kHour,       6 * kHour,        12 * kHour,       kDay};

// The seconds from one mark to the next, so that passed seconds have at most so many.
std::int64_t stepFor(std::int64_t passed, std::size_t most) {
    const auto least = (passed + static_cast<std::int64_t>(most) - 1) / static_cast<std::int64_t>(most);
    const auto* const step = std::ranges::lower_bound(kSteps, least);
    return step != kSteps.end() ? *step : (least + kDay - 1) / kDay * kDay;
}

std::string labelOf(std::int64_t time, bool hasSeconds, std::int64_t& day) {
    clsTime ofDay;
    ofDay.setTimeFromSeconds(static_cast<std::int32_t>(time % kDay));
    std::string label = hasSeconds ? ofDay.hh_mm_ss() : ofDay.hh_mm();
    if (time / kDay == day || time / kDay <= kFirstDay) return label;
    day = time / kDay;
    return label + "\n" + formatDate(static_cast<CalendarTime>(day), "dd/mm/yy");
}

// The place of the last multiple of step that is passed between row - 1 and row; nothing when none is, and inside a
// gap.
struct Passing {
    std::int64_t time;
    double position;
};

std::optional<Passing> passingAt(std::span<const std::int64_t> begins, std::size_t row, std::int64_t step) {
    const std::int64_t now = begins[row];
    const std::int64_t time = now / step * step;
    if (time == now) return Passing{time, static_cast<double>(row)};
    if (row == 0) return std::nullopt;
    const std::int64_t before = begins[row - 1];
    if (before >= time || now - before > step) return std::nullopt;
    const double part = static_cast<double>(time - before) / static_cast<double>(now - before);
    return Passing{time, static_cast<double>(row) - 1 + part};
}

} // namespace

std::vector<TimeMark> timeMarks(std::span<const std::int64_t> begins, double lower, double upper, std::size_t most) {
    std::vector<TimeMark> marks;
    const double last = static_cast<double>(begins.size()) - 1;
    if (begins.empty() || most == 0 || lower > last || upper < 0) return marks;
    const auto begin = static_cast<std::size_t>(std::clamp(std::ceil(lower), 0.0, last));
    const auto end = static_cast<std::size_t>(std::clamp(std::floor(upper) + 1, 0.0, last)) + 1;
    std::int64_t passed = 1;
    for (std::size_t row = begin + 1; row < end; ++row) {
        const std::int64_t length = begins[row] - begins[row - 1];
        if (length > 0 && length <= kDay) passed += length;
    }
    const std::int64_t step = stepFor(passed, most);
    const double close = kClose * (upper - lower) / static_cast<double>(most);
    std::int64_t day = -1;
    double labelled = lower - 2 * close;
    std::int64_t slot = begins[begin] / step * step; // the multiple of step that was passed last
    for (std::size_t row = begin; row < end; ++row) {
        if (row > begin && begins[row] >= slot && begins[row] < slot + step) continue;
        slot = begins[row] / step * step;
        const auto passing = passingAt(begins, row, step);
        if (!passing || passing->position < lower || passing->position > upper) continue;
        const bool isLabelled = passing->position - labelled >= close;
        marks.push_back(
            {passing->position, isLabelled ? labelOf(passing->time, step % kMinute != 0, day) : std::string()});
        if (isLabelled) labelled = passing->position;
    }
    return marks;
}

} // namespace kestrane
