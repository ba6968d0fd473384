// The exposure calculator of a log: rows that make up a working day, each a level and a duration, with their totals;
// what may be typed into a cell; inserting and deleting rows. The rows live with the log (DoseLogIntervals). Source:
// ISO 9612 (exposure level of a day from its tasks) and the dose definition of ANSI S1.25; the totals are instrument
// convention.
#pragma once

#include "model/clsLog.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The columns of the grid; the first shows the row's number.
enum ExposureColumn : int {
    eColumnNumber,
    eColumnCriterion,
    eColumnExchange,
    eColumnDate,
    eColumnTime,
    eColumnNote,
    eColumnLeq,
    eColumnExposureTime,
    eColumnLex,
    eColumnDose,
    eColumnIncluded
};

constexpr int kExposureColumns = 11;

std::vector<std::string> exposureCaptions(const Session& session);
int exposureMaxLength(int column); // of an entry; 0 for a column that cannot be edited

// The entries that a cell offers to choose from; none where anything may be typed.
std::vector<std::string> exposureChoices(const Session& session, int column);

struct DoseTotals {
    clsValue Leq, Lex, Dose; // dB, dB, %
    clsTime Duration;
};

// Over the included rows. Leq is the plain energy mean of the rows, Lex their energy sum; each is 0 as soon as a row
// without one is included. Dose and duration are sums.
DoseTotals doseTotals(const clsLog& log);

// A log that has no rows gets the one that its own figures make.
void fillExposureRows(clsLog& log);

// A row as the cells of the grid; lineNo 1.. or -1 for a row without a number. And the totals below the rows.
std::vector<std::string> exposureLine(const Session& session, const clsDoseLogSample& row, int lineNo);
std::vector<std::string> exposureTotalsLine(const clsLog& log);

enum class CellEntry { Refused, Same, Stored };

// Takes what was typed into a cell of a row (from 0). Refused, and the same as before, leave the cell as it is.
CellEntry enterExposureCell(clsLog& log, std::size_t row, int column, const std::string& entry);

// Why an entry of the column is refused, and what it must be.
std::string exposureRefusal(const Session& session, int column, const std::string& entry);

// Empties a cell: the row has no such figure then, and is not included when the cell was the one that says so. What
// such a cell would count for is missing.
void clearExposureCell(clsDoseLogSample& row, int column);
bool isMissing(const clsDoseLogSample& row, int column);

// How many rows to insert, from what was typed: 1 to 100. Nothing when it is no good.
std::optional<int> insertCount(const std::string& entry, const Locale& locale);

// Inserts copies of the row at position (from 0; one past the last row stands for the last) above it, without their
// notes; into an empty table, rows of 90 dB for a minute from now.
void insertExposureRows(clsLog& log, std::size_t position, int count);

// The rows (from 0, in order, each once) of a list such as "1:10,15" of a table of so many rows. Nothing when it is no
// good.
std::optional<std::vector<std::size_t>> rowList(const std::string& entry, std::size_t rows);
void deleteExposureRows(clsLog& log, const std::vector<std::size_t>& rows);

} // namespace kestrane
