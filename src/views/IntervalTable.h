// The grid of the "Intervals (Table)" tab: a row for each interval, a column for each parameter or for each band of one
// parameter. Cells are made when they are asked for, so that a table of any length is there at once. It shares the
// log's columns and keeps no reference to the log: a table shows the figures as they were when it was made. It knows
// nothing of widgets.
#pragma once

#include "model/clsLog.h"
#include "platform/Locale.h"
#include "views/DisplayBy.h"
#include "views/RowTimes.h"

#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

// Rows as they are copied, with tabs between cells and CR LF behind rows. Overloaded rows are left out.
struct CopiedRows {
    std::string Text;
    std::size_t LeftOut = 0;
    bool HasExcluded = false; // whether "*" precedes a time
};

// Rows and columns are counted from 0; the line of captions is not a row.
class IntervalTable {
public:
    IntervalTable() = default; // the table of no log

    // channel is kChannelA or kChannelB; a log without channel B always shows A. A chosen parameter is always shown for
    // channel A.
    IntervalTable(const clsLog& log, LogChannel channel, const DisplayChoice& choice);

    std::size_t rowCount() const; // may be more than the intervals: an old Tallix instrument may have more peaks

    std::size_t columnCount() const { return columns_.size(); }

    const std::string& caption(std::size_t column) const { return columns_[column].caption; }

    std::string cell(std::size_t row, std::size_t column) const; // empty for a missing value

    // Whether the row is to be marked; false when the overload column is not shown.
    bool isOverloaded(std::size_t row) const;
    bool isExcluded(std::size_t row) const; // whether the row is left out of calculations

    // Writes the captions, then the rows, with tabs between cells and CR LF behind rows.
    void write(std::ostream& out) const;

    // A cell as it is copied and printed: "*" precedes the time of an excluded row.
    std::string copiedCell(std::size_t row, std::size_t column) const;
    CopiedRows copiedRows() const; // captions and rows

private:
    enum class Kind { Time, Level, Overload, PeakTime, PeakValue };

    struct TableColumn {
        std::string caption;
        Kind kind = Kind::Level;
        Quantity quantity = Quantity::End; // of a level; Quantity::End when the rows do not have it
        int band = 0;
    };

    void addParameters(const clsLog& log, const std::string& bandText);
    void addBands(const clsLog& log, Parameter parameter);
    void addPeaks(const clsLog& log);

    std::string intervalCell(std::size_t row, const TableColumn& column) const;
    std::string peakCell(std::size_t row, const TableColumn& column) const;
    std::string captionLine() const;

    std::vector<TableColumn> columns_;
    IntervalColumns rows_;
    RowTimes times_;
    std::vector<clsPeak> peaks_;
    Column<std::uint8_t> overloads_;
    LogChannel channel_ = kChannelA;
    bool showsOverload_ = false;
    std::string yes_, no_;
    Locale locale_;
};

} // namespace kestrane
