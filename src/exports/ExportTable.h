// The rows of logs, or the logs themselves, as one table with named columns, for programs that know nothing of ours.
// Figures are those that tables show (CalcValue); an absent figure is an empty cell.
#pragma once

#include "model/clsLog.h"

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace kestrane {

// A cell: nothing, a text (UTF-8), or a number; a flag is 0 or 1.
using ExportCell = std::variant<std::monostate, std::string, double>;

// The double whose shortest text is that of the single.
double shortestDouble(float value);

// Adding a log shares its columns, so the log itself need not be kept. A column is created when a log has a figure for
// it, so the columns are complete when all logs have been added.
class ExportTable {
public:
    ExportTable();

    // Adds the rows of a log, one line each: all of them, or those of a range, which must be in the log. file and key
    // are the names under which the log is listed.
    void addRows(const std::string& file, const std::string& key, const clsLog& log);
    void addRows(const std::string& file, const std::string& key, const clsLog& log, RowRange rows);

    // Adds a log as one line. serial is the serial number of its instrument.
    void addSummary(const std::string& file, const std::string& key, const std::string& serial, const clsLog& log);

    const std::vector<std::string>& columns() const { return names_; }

    std::int64_t lines() const { return lines_; }

    // The same lines with only the columns that are wanted.
    ExportTable withColumns(const std::function<bool(const std::string& name)>& isWanted) const;

    // Calls visit for each line with its cells, one for each column. goesOn is asked before each line, with the number
    // of lines that are done. Returns false when it ended the lines.
    bool forEachLine(const std::function<void(std::span<const ExportCell>)>& visit,
                     const std::function<bool(std::int64_t done)>& goesOn = {}) const;

private:
    using Fetch = std::function<ExportCell(std::size_t row)>;

    struct Part {
        std::size_t firstRow; // of the log, from 0
        std::size_t lines;
        std::vector<std::pair<std::size_t, Fetch>> cells; // by column
    };

    std::size_t column(const std::string& name);
    void addHead(Part& part, const std::string& file, const std::string& key, const clsLog& log);
    // The same cell in every line; an empty cell creates no column.
    void put(Part& part, const std::string& name, ExportCell cell);

    std::vector<std::string> names_;
    std::map<std::string, std::size_t, std::less<>> places_;
    std::vector<Part> parts_;
    std::int64_t lines_ = 0;
};

} // namespace kestrane
