// What the user does to the rows of the exposure calculator. Each change is a step that can be undone. Rows are counted
// from 0; the row behind the last stands for the totals.
#pragma once

#include "calc/ExposureCalculator.h"
#include "platform/Message.h"

#include <string>

namespace kestrane {

CellEntry EnterCell(clsLog& log, std::size_t row, int column, const std::string& entry); // as enterExposureCell

// Both ask until the answer is valid, and return whether the rows have changed. Rows are inserted above the given one.
// The list of rows to delete is proposed with the number of the given row; from the totals nothing can be deleted.
bool InsertRows(clsLog& log, std::size_t row, const AskText& ask);
bool DeleteRows(clsLog& log, std::size_t row, const AskText& ask);

struct PasteOutcome {
    std::size_t Rows = 0;    // rows that took an entry
    std::size_t Refused = 0; // entries that were not accepted in these rows; when no entry was accepted, all
};

// Pastes lines of cells with tabs between them, from a cell on, each entry as if it had been typed. An entry that is
// not accepted leaves its cell empty. When there are more lines than rows, rows are added, each like the one above it
// but without level and note. Computed columns are skipped, and an empty cell leaves the old value. A first line in
// which no figure is accepted (captions) is left out. When no entry at all is accepted, nothing changes.
PasteOutcome pasteExposureRows(clsLog& log, std::size_t row, int column, const std::string& text);

} // namespace kestrane
