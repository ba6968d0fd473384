#include "explorer/ExposureEdits.h"

#include "explorer/Edits.h"

#include "model/Session.h"
#include "platform/Trimmed.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace kestrane {

namespace {

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

std::string_view cutNote(std::string_view note) {
    return firstBytes(note, static_cast<std::size_t>(exposureMaxLength(eColumnNote)));
}

// Asks again until use accepts the answer. Returns false when the user cancels or enters nothing.
bool askUntil(const Session& session, Text::Id prompt, std::string proposal, const AskText& ask,
              const std::function<bool(const std::string&)>& use) {
    std::string question = session.LoadText(prompt);
    for (;;) {
        const std::optional<std::string> answer = ask(question, proposal);
        if (!answer || trimmed(*answer).empty()) return false;
        if (use(*answer)) return true;
        question = session.LoadText(Text::SelectionError) + "\r\n\r\n" + session.LoadText(prompt);
        proposal = *answer;
    }
}

struct LineOutcome {
    std::size_t figures = 0; // accepted
    std::size_t notes = 0;   // accepted
    std::size_t refused = 0;
};

LineOutcome pasteLine(clsLog& log, std::size_t row, int column, std::string_view line) {
    LineOutcome outcome;
    if (line.ends_with('\r')) line.remove_suffix(1);
    for (const std::string_view cell : split(line, '\t')) {
        const int target = column++;
        if (target >= kExposureColumns || exposureMaxLength(target) == 0 || trimmed(cell).empty()) continue;
        const std::string text(target == eColumnNote ? cutNote(cell) : cell);
        const CellEntry entry = enterExposureCell(log, row, target, text);
        if (entry == CellEntry::Refused) clearExposureCell(log.DoseLogIntervals[row], target);
        (entry == CellEntry::Refused ? outcome.refused : target == eColumnNote ? outcome.notes : outcome.figures)++;
    }
    return outcome;
}

PasteOutcome pasteLines(clsLog& log, std::size_t row, int column, const std::string& text) {
    PasteOutcome outcome;
    std::vector<clsDoseLogSample>& rows = log.DoseLogIntervals;
    const std::vector<clsDoseLogSample> before = rows;
    std::size_t refusedCaptions = 0;
    bool isFirst = true;
    bool isAnyTaken = false;
    row = std::min(row, rows.size());
    for (const std::string_view line : split(text, '\n')) {
        // A blank line; a line of empty cells still counts as a row.
        if (line.find_first_not_of(" \r") == std::string_view::npos) continue;
        if (row == rows.size()) {
            insertExposureRows(log, row, 1);
            rows[row].Leq.Value(0);
        }
        const LineOutcome pasted = pasteLine(log, row, column, line);
        const bool isTaken = pasted.figures > 0 || (pasted.notes > 0 && pasted.refused == 0);
        isAnyTaken = isAnyTaken || isTaken;
        if (std::exchange(isFirst, false) && !isTaken) {
            rows = before;
            refusedCaptions = pasted.refused;
            continue;
        }
        ++row;
        ++outcome.Rows;
        outcome.Refused += pasted.refused;
    }
    if (isAnyTaken) return outcome;
    rows = before;
    return {0, outcome.Refused + refusedCaptions};
}

// A step after which the rows count as edited by the user. Every window that shows the log then shows them anew, unless
// there are none left: a table that is shown anew without rows gets one of the log's own.
bool editRows(clsLog& log, const std::function<bool()>& change) {
    const bool isEdited = editLog(log, Text::StepExposureRows, [&] {
        const bool isChanged = change();
        log.AreDoseRowsEdited = log.AreDoseRowsEdited || isChanged;
        return isChanged;
    });
    if (isEdited && !log.DoseLogIntervals.empty()) log.RaiseLogValuesChanged();
    return isEdited;
}

} // namespace

bool InsertRows(clsLog& log, std::size_t row, const AskText& ask) {
    return editRows(log, [&] {
        return askUntil(log.session(), Text::AskRowsInserted, "1", ask, [&](const std::string& answer) {
            const std::optional<int> count = insertCount(answer, log.session().locale);
            if (count) insertExposureRows(log, row, *count);
            return count.has_value();
        });
    });
}

bool DeleteRows(clsLog& log, std::size_t row, const AskText& ask) {
    if (row >= log.DoseLogIntervals.size()) return false;
    return editRows(log, [&] {
        return askUntil(log.session(), Text::AskRowsDeleted, std::to_string(row + 1), ask,
                        [&](const std::string& answer) {
                            const auto rows = rowList(answer, log.DoseLogIntervals.size());
                            if (rows) deleteExposureRows(log, *rows);
                            return rows.has_value();
                        });
    });
}

CellEntry EnterCell(clsLog& log, std::size_t row, int column, const std::string& entry) {
    CellEntry outcome = CellEntry::Same;
    editRows(log, [&] {
        outcome = enterExposureCell(log, row, column, entry);
        return outcome == CellEntry::Stored;
    });
    return outcome;
}

PasteOutcome pasteExposureRows(clsLog& log, std::size_t row, int column, const std::string& text) {
    PasteOutcome outcome;
    editRows(log, [&] {
        outcome = pasteLines(log, row, column, text);
        return outcome.Rows > 0;
    });
    return outcome;
}

} // namespace kestrane
