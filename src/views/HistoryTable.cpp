#include "views/HistoryTable.h"

#include "model/Session.h"
#include "platform/TabbedText.h"

namespace kestrane {

HistoryTable historyTable(const clsFile& file) {
    HistoryTable table;
    for (const Text::Id caption : {Text::TimeColumn, Text::HistoryWhatColumn, Text::HistoryLogColumn,
                                   Text::HistoryBeforeColumn, Text::HistoryAfterColumn, Text::HistoryReasonColumn})
        table.Captions.push_back(file.session().LoadText(caption));
    for (const HistoryLine& line : file.History.lines())
        table.Rows.push_back(
            {ReplaceText(line.Time, "T", " "), line.What, line.Log, line.Before, line.After, line.Reason});
    return table;
}

std::string changeText(const Session& session, const HistoryLine& line) {
    const bool isTold = !line.Before.empty() || !line.After.empty();
    return withReason(session, isTold ? line.Before + " \u2192 " + line.After : std::string(), line.Reason);
}

// The text or the reason may itself contain what stands for the other.
std::string withReason(const Session& session, const std::string& text, const std::string& reason) {
    if (reason.empty()) return text;
    std::string words = session.LoadText(Text::ExcludedBecause);
    words.replace(words.find('*'), 1, reason);
    return words.replace(words.find('^'), 1, text);
}

std::string historyText(const HistoryTable& table) {
    std::string text;
    addTabbedLine(text, table.Captions);
    for (const auto& row : table.Rows)
        addTabbedLine(text, row);
    return text;
}

} // namespace kestrane
