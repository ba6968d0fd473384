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

constexpr std::string_view kEnDash = "\u2013";
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

// The two ends of a range such as "4-6", "4 6", or "4 to 6" in any language, since a word without a digit only stands
// between them. An end is empty when nothing is on its side of the dash. Nothing when the entry is no range: nothing of
// what was typed may go, and a dash is never a sign.
using Ends = std::array<std::string, 2>;

std::optional<Ends> endsOf(const std::string& entry) {
    const std::string plain = ReplaceText(entry, kEnDash, "-");
    const std::size_t dash = plain.find('-');
    if (dash != std::string::npos) {
        const Ends ends{trimmed(plain.substr(0, dash)), trimmed(plain.substr(dash + 1))};
        const bool isOneRange = ends[1].find('-') == std::string::npos && !(ends[0].empty() && ends[1].empty());
        return isOneRange ? std::optional(ends) : std::nullopt;
    }
    std::vector<std::string> words = wordsOf(plain);
    if (words.size() == 3 && words[1].find_first_of("0123456789") == std::string::npos) words.erase(words.begin() + 1);
    return words.size() == 2 ? std::optional(Ends{words[0], words[1]}) : std::nullopt;
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

bool takeRange(const Session& session, const std::string& entry, std::optional<std::array<double, 2>>& range) {
    range.reset();
    if (entry.empty()) return true;
    const auto ends = endsOf(entry);
    std::array<double, 2> hours{};
    if (!ends || !takeHours(session, (*ends)[0], hours[0]) || !takeHours(session, (*ends)[1], hours[1])) return false;
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

std::string noLevelIn(const Session& session, const std::string& entry) {
    const std::vector<std::string> words = wordsOf(entry);
    const auto found =
        std::ranges::find_if(words, [&](const std::string& word) { return !typedNumber(word, session.locale); });
    return found == words.end() ? std::string() : *found;
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

bool takeRows(const std::string& entry, LogRows& rows) {
    rows.From.reset();
    rows.To.reset();
    if (entry.empty()) return true;
    const auto ends = endsOf(entry);
    if (!ends) {
        const bool isRow = takeRow(entry, rows.From);
        rows.To = rows.From;
        return isRow;
    }
    const auto& [from, to] = *ends;
    return (from.empty() || takeRow(from, rows.From)) && (to.empty() || takeRow(to, rows.To));
}

std::string rowsText(const LogRows& rows) {
    if (!rows.From && !rows.To) return {};
    return (rows.From ? std::to_string(*rows.From) : "1") + "-" + (rows.To ? std::to_string(*rows.To) : "");
}

} // namespace kestrane
