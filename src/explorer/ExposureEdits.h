// What the user does to the rows of the exposure calculator. Each change is a step that can be undone. Rows are counted
// from 0; the place behind the last stands for the totals.
#pragma once

#include "calc/ExposureCalculator.h"
#include "platform/Message.h"

#include <string>

namespace kestrane {

CellEntry EnterCell(clsLog& log, std::size_t row, int column, const std::string& entry); // as enterExposureCell

// Each asks until the answer is good, and returns whether the rows have changed. Rows are inserted above the given one;
// deleting begins with its number, and only a row can be deleted.
bool InsertRows(clsLog& log, std::size_t row, const AskText& ask);
bool DeleteRows(clsLog& log, std::size_t row, const AskText& ask);

struct PasteOutcome {
    std::size_t Rows = 0;    // that took an entry
    std::size_t Refused = 0; // entries that did not fit their cells, in these rows or in all
};

// Takes lines of cells with tabs between them, from a cell on, each entry as if it had been typed; one that does not
// fit leaves its cell empty. Rows are added where the lines go past the last, each like the one above it but without
// level and note; computed columns and empty cells are left alone. A first line of which no figure fits (captions) is
// left out. Where no entry fits at all, nothing changes.
PasteOutcome pasteExposureRows(clsLog& log, std::size_t row, int column, const std::string& text);

} // namespace kestrane
