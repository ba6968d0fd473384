// The exposure calculator of a log: rows that make up a working day, each a level and a duration, and their totals;
// what may be typed into a cell; inserting and deleting rows. The rows are part of the log (DoseLogIntervals). Sources:
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
int exposureMaxLength(int column); // characters of an entry; 0 for a column that cannot be edited

// The entries that a cell offers; an empty list where anything may be typed.
std::vector<std::string> exposureChoices(const Session& session, int column);

struct DoseTotals {
    clsValue Leq, Lex, Dose; // dB, dB, %
    clsTime Duration;
};

// The totals over the included rows. Leq is the energy mean of the rows, not weighted by their durations; that is
// meant. Lex is the energy sum of their exposure levels. Each of the two is 0 as soon as an included row lacks it. Dose
// and duration are sums.
DoseTotals doseTotals(const clsLog& log);

// Gives a log that has no rows one row, made of the log's own figures.
void fillExposureRows(clsLog& log);

// A row as the cells of the grid, with lineNo from 1 on, or -1 for a row without a number; and the totals below the
// rows.
std::vector<std::string> exposureLine(const Session& session, const clsDoseLogSample& row, int lineNo);
std::vector<std::string> exposureTotalsLine(const clsLog& log);

enum class CellEntry { Refused, Same, Stored };

// Takes what was typed into a cell of a row (counted from 0). Refused and Same leave the cell as it is.
CellEntry enterExposureCell(clsLog& log, std::size_t row, int column, const std::string& entry);

// The text that says why an entry of the column is refused and what it must be.
std::string exposureRefusal(const Session& session, int column, const std::string& entry);

// Empties a cell: the row then has no such figure; an emptied "included" cell means that the row is not included.
// isMissing tells whether a cell is empty in this sense.
void clearExposureCell(clsDoseLogSample& row, int column);
bool isMissing(const clsDoseLogSample& row, int column);

// The number of rows to insert, 1 to 100, from what was typed; nothing when it is anything else.
std::optional<int> insertCount(const std::string& entry, const Locale& locale);

// Inserts count copies of the row at position (counted from 0) above it, without the note. A position one past the last
// row inserts copies of the last row at the end. An empty table gets rows of 90 dB for one minute, at the present time.
void insertExposureRows(clsLog& log, std::size_t position, int count);

// The rows (counted from 0, in order, each once) of a list such as "1:10,15" in a table of so many rows. Nothing when
// the list is malformed, empty or names a row that does not exist.
std::optional<std::vector<std::size_t>> rowList(const std::string& entry, std::size_t rows);
void deleteExposureRows(clsLog& log, const std::vector<std::size_t>& rows);

} // namespace kestrane
