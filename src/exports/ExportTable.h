// The rows of logs, or the logs themselves, as one table with named columns, for programs that know nothing of ours.
// Figures are those that tables show (CalcValue); one that is absent is an empty cell.
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

// Nothing, a text (UTF-8), or a number; a flag is 0 or 1.
using ExportCell = std::variant<std::monostate, std::string, double>;

// A single as the double that has the same shortest text.
double shortestDouble(float value);

// Adding shares the columns of a log: the log may go. A column is there once a log has a figure for it, so the columns
// are known when all logs have been added.
class ExportTable {
public:
    ExportTable();

    // The rows of a log, a line each. file, key: as they are to be named.
    void addRows(const std::string& file, const std::string& key, const clsLog& log);

    // A log as one line. serial: of its instrument.
    void addSummary(const std::string& file, const std::string& key, const std::string& serial, const clsLog& log);

    const std::vector<std::string>& columns() const { return names_; }

    std::int64_t lines() const { return lines_; }

    // Calls visit with the cells of each line, one a column.
    void forEachLine(const std::function<void(std::span<const ExportCell>)>& visit) const;

private:
    using Fetch = std::function<ExportCell(std::size_t row)>;

    struct Part {
        std::size_t lines;
        std::vector<std::pair<std::size_t, Fetch>> cells; // by column
    };

    std::size_t column(const std::string& name);
    void addHead(Part& part, const std::string& file, const std::string& key, const clsLog& log);
    void put(Part& part, const std::string& name, ExportCell cell); // the same in every line; nothing makes no column

    std::vector<std::string> names_;
    std::map<std::string, std::size_t, std::less<>> places_;
    std::vector<Part> parts_;
    std::int64_t lines_ = 0;
};

} // namespace kestrane
