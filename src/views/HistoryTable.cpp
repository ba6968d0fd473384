#include "views/HistoryTable.h"

#include "model/Session.h"
#include "platform/TabbedText.h"
#include "platform/Utf8.h"
#include "views/LogHistory.h"

#include <algorithm>
#include <string_view>

namespace kestrane {

namespace {

struct PairedValue {
    std::string_view caption, before, after; // the caption with its ": "
};

std::vector<std::string_view> partsOf(std::string_view list) {
    constexpr std::string_view kBetween = "; ";
    std::vector<std::string_view> parts;
    while (!list.empty()) {
        parts.push_back(list.substr(0, list.find(kBetween)));
        list.remove_prefix(std::min(parts.back().size() + kBetween.size(), list.size()));
    }
    return parts;
}

// The values before and after of each caption; empty when the two lists are not of the same captions.
std::vector<PairedValue> pairedValues(const HistoryLine& line) {
    const std::vector<std::string_view> before = partsOf(line.Before);
    const std::vector<std::string_view> after = partsOf(line.After);
    std::vector<PairedValue> pairs;
    for (std::size_t i = 0; before.size() == after.size() && i < before.size(); ++i) {
        const std::size_t end = before[i].find(": ");
        if (end == std::string_view::npos || !after[i].starts_with(before[i].substr(0, end + 2))) return {};
        pairs.push_back({before[i].substr(0, end + 2), before[i].substr(end + 2), after[i].substr(end + 2)});
    }
    return pairs;
}

} // namespace

HistoryTable historyTable(const clsFile& file) {
    HistoryTable table;
    for (const Text::Id caption : {Text::TimeColumn, Text::HistoryWhatColumn, Text::HistoryLogColumn,
                                   Text::HistoryBeforeColumn, Text::HistoryAfterColumn, Text::HistoryReasonColumn})
        table.Captions.push_back(file.session().LoadText(caption));
    const std::vector<HistoryLine> lines = file.History.oldestFirst();
    const std::vector<std::string> logs = logsOfLines(file, lines);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const HistoryLine& line = lines[i];
        table.Rows.push_back(
            {ReplaceText(line.Time, "T", " "), line.What, logs[i], line.Before, line.After, line.Reason});
    }
    return table;
}

std::string changeText(const HistoryLine& line, std::size_t longestValue) {
    std::string text;
    const auto add = [&](std::string_view value) {
        text.append(firstBytes(value, longestValue)).append(value.size() > longestValue ? "\u2026" : "");
    };
    const auto addPair = [&](std::string_view before, std::string_view after) {
        add(before);
        text.append(" \u2192 ");
        add(after);
    };
    if (const auto pairs = pairedValues(line); !pairs.empty()) {
        for (const auto& [caption, before, after] : pairs) {
            text.append(text.empty() ? "" : "; ").append(caption);
            addPair(before, after);
        }
    } else if (!line.Before.empty() || !line.After.empty()) {
        addPair(line.Before, line.After);
    }
    return text;
}

// The text or the reason may itself contain what stands for the other.
std::string withReason(const Session& session, const std::string& text, const std::string& reason) {
    if (reason.empty()) return text;
    std::string words = session.LoadText(Text::ExcludedBecause);
    words.replace(words.find('*'), 1, reason);
    return words.replace(words.find('^'), 1, text);
}

std::string historyText(const HistoryTable& table) {
    return tabbedText(table.Captions, table.Rows);
}

} // namespace kestrane
