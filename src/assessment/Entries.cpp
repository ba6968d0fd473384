#include "assessment/Entries.h"

#include "calc/ExposureTime.h"
#include "platform/Format.h"
#include "platform/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace kestrane {

namespace {

constexpr std::string_view kExact = "##0.0#########";

// The words of an entry, with blanks or semicolons between them.
std::vector<std::string> wordsOf(std::string_view entry) {
    std::vector<std::string> words;
    while (true) {
        const std::size_t first = entry.find_first_not_of(" ;\t");
        if (first == std::string_view::npos) return words;
        entry.remove_prefix(first);
        const std::size_t end = std::min(entry.find_first_of(" ;\t"), entry.size());
        words.emplace_back(entry.substr(0, end));
        entry.remove_prefix(end);
    }
}

} // namespace

std::string exact(const Session& session, double value) {
    return formatNumber(value, kExact, session.locale);
}

std::string exact(const Session& session, const std::optional<double>& value) {
    return value ? exact(session, *value) : std::string();
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, text.find_last_not_of(" \t") + 1 - first));
}

bool takeLevel(const Session& session, const std::string& entry, std::optional<double>& level) {
    level.reset();
    if (entry.empty()) return true;
    level = typedNumber(entry, session.locale);
    return level.has_value();
}

bool takeHours(const Session& session, const std::string& entry, double& hours) {
    if (entry.find(':') == std::string::npos) {
        const auto number = typedNumber(entry, session.locale);
        hours = number.value_or(hours);
        return number.has_value();
    }
    const auto duration = durationHours(entry, session.locale);
    if (!duration) return false;
    constexpr double kSecondsOfAnHour = 3600; // whole ones, because the duration is a single
    hours = std::round(*duration * kSecondsOfAnHour) / kSecondsOfAnHour;
    return true;
}

bool takeRange(const Session& session, std::string entry, std::optional<std::array<double, 2>>& range) {
    range.reset();
    std::ranges::replace(entry, '-', ' ');
    std::vector<std::string> words = wordsOf(entry);
    if (words.empty()) return true;
    if (words.size() == 3) words.erase(words.begin() + 1);
    if (words.size() != 2) return false;
    std::array<double, 2> hours{};
    for (std::size_t i = 0; i < hours.size(); ++i)
        if (!takeHours(session, words[i], hours[i])) return false;
    range = hours;
    return true;
}

bool takeLevels(const Session& session, const std::string& entry, std::vector<Sample>& samples) {
    std::vector<Sample> taken;
    for (const std::string& word : wordsOf(entry)) {
        const auto level = typedNumber(word, session.locale);
        if (!level) return false;
        taken.emplace_back(*level);
    }
    std::ranges::copy_if(samples, std::back_inserter(taken),
                         [](const Sample& sample) { return std::holds_alternative<LogRows>(sample); });
    samples = std::move(taken);
    return true;
}

std::string levelsText(const Session& session, const std::vector<Sample>& samples) {
    std::string text;
    for (const Sample& sample : samples) {
        const double* level = std::get_if<double>(&sample);
        if (level != nullptr) text += (text.empty() ? "" : "  ") + exact(session, *level);
    }
    return text;
}

bool takeRow(std::string_view word, std::optional<std::int64_t>& row) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    row = number;
    return error == std::errc() && end == word.data() + word.size();
}

bool takeRows(std::string entry, LogRows& rows) {
    std::ranges::replace(entry, '-', ' ');
    const std::vector<std::string> words = wordsOf(entry);
    rows.From.reset();
    rows.To.reset();
    if (words.empty()) return true;
    return words.size() <= 2 && takeRow(words.front(), rows.From) && takeRow(words.back(), rows.To);
}

std::string rowsText(const LogRows& rows) {
    if (!rows.From && !rows.To) return {};
    return (rows.From ? std::to_string(*rows.From) : "1") + "-" + (rows.To ? std::to_string(*rows.To) : "");
}

} // namespace kestrane
