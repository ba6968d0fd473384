// The grid of the "Intervals (Table)" tab: a row for each interval, a column for each parameter or each band of one
// parameter. Cells are made when asked for, so that a table of any length stands at once. Shares the log's columns and
// keeps no reference to the log: a table shows the figures as they were when it was made. Knows nothing of widgets.
#pragma once

#include "model/clsLog.h"
#include "platform/Locale.h"
#include "views/DisplayBy.h"
#include "views/RowTimes.h"

#include <ostream>
#include <string>
#include <vector>

namespace kestrane {

// Rows as they are copied: tabs between cells, CR LF behind rows. Overloaded ones are left out.
struct CopiedRows {
    std::string Text;
    std::size_t LeftOut = 0;
    bool HasExcluded = false; // "*" stands in front of a time
};

// Rows and columns are counted from 0; the captions are no row.
class IntervalTable {
public:
    IntervalTable() = default; // of no log

    // channel: kChannelA or kChannelB; a log without channel B shows A. A chosen parameter shows channel A.
    IntervalTable(const clsLog& log, int channel, const DisplayChoice& choice);

    std::size_t rowCount() const; // an old Tallix instrument may have more peaks than intervals

    std::size_t columnCount() const { return columns_.size(); }

    const std::string& caption(std::size_t column) const { return columns_[column].caption; }

    std::string cell(std::size_t row, std::size_t column) const; // empty for a missing value

    bool isOverloaded(std::size_t row) const; // while the overload column is shown: the row is to be marked
    bool isExcluded(std::size_t row) const;   // left out of calculations

    // The captions, then the rows: tabs between cells, CR LF behind rows.
    void write(std::ostream& out) const;

    // A cell as it is copied and printed: the time of an excluded row has "*" in front.
    std::string copiedCell(std::size_t row, std::size_t column) const;
    CopiedRows copiedRows() const; // captions and rows

private:
    enum class Kind { Time, Level, Overload, PeakTime, PeakValue };

    struct TableColumn {
        std::string caption;
        Kind kind = Kind::Level;
        Quantity quantity = Quantity::End; // of a level; Quantity::End: the rows have none
        int band = 0;
    };

    void addParameters(const clsLog& log, const std::string& bandText);
    void addBands(const clsLog& log, int parameter);
    void addPeaks(const clsLog& log);

    std::string intervalCell(std::size_t row, const TableColumn& column) const;
    std::string peakCell(std::size_t row, const TableColumn& column) const;
    std::string captionLine() const;

    std::vector<TableColumn> columns_;
    IntervalColumns rows_;
    RowTimes times_;
    std::vector<clsPeak> peaks_;
    Column<std::uint8_t> overloads_;
    int channel_ = kChannelA;
    bool showsOverload_ = false;
    std::string yes_, no_;
    Locale locale_;
};

} // namespace kestrane
