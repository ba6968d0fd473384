// The events of a log, stretches at or above a level, as a table and in one sentence.
#pragma once

#include "calc/RowAnalysis.h"
#include "model/clsLog.h"
#include "views/CellTable.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrane {

using AnalysedRows = std::shared_ptr<const std::vector<AnalysedRow>>; // of a log

class EventTable {
public:
    // The events of a log whose analysed rows are these. The log must outlive the object.
    EventTable(const clsLog& log, AnalysedRows rows, EventRule rule);

    // A row for each event: when it began, how long it lasted, its LAeq and Lmax, its share of the sound energy of the
    // rows that count. It may outlive this object, not the log.
    CellTable Table() const;

    std::string Summary() const; // how many there are, how long they last together, their share

    RowRange RowsOf(std::size_t event) const; // counted from 1

private:
    std::span<const AnalysedRow> rowsOf(const Stretch& event) const;

    const clsLog& log_;
    AnalysedRows rows_;
    std::shared_ptr<const std::vector<Stretch>> events_;
    double exposure_; // of all rows
};

} // namespace kestrane
