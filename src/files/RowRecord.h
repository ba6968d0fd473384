// The record in which older files keep a row: its time and figures as fields between commas. Machine logs are made of
// such fields throughout; a project file may hold its rows so.
#pragma once

#include "model/LevelWriter.h"
#include "model/clsLog.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr int kRecordLns = 7; // Ln levels of a record

[[noreturn]] void raisePastEnd(); // 62, "Input past end of file"

// Takes a text apart into fields, each ended by a comma. Line ends in front of a field are no part of it.
class CommaFields {
public:
    // Of a closed text the end ends a field, too; of an open one, what stands behind the last comma is no field.
    explicit CommaFields(std::string_view text, bool isClosed = false) : rest_(text), isClosed_(isClosed) {}

    std::optional<std::string_view> next(); // nothing when there is none
    std::string_view take();                // raises 62 when there is none

    std::size_t left() const; // how many take() can give

    std::string_view last() const { return last_; } // the field given last

private:
    std::string_view rest_, last_;
    bool isClosed_;
};

// A level or dose. Empty is 0: a figure that is not there. Raises 13 for any other text that is no number.
float figureOf(std::string_view field);

// Puts records into rows of a log that are 0 so far. While it is in use, the rows must stay as many as they are from
// the first record on, and the log must have the same mode and channels.
class RecordRows {
public:
    explicit RecordRows(clsLog& log);

    std::size_t fields() const; // of a record; the time is one of them

    // row: counted from 0; it must be in use. start is the record's first field, taken already: the time, "hh:mm:ss".
    // Raises 13 for a field that is no figure or time, 62 when there are too few.
    void take(std::string_view start, CommaFields& fields, std::size_t row);

private:
    IntervalColumns& rows_;
    std::vector<LevelWriter> levels_; // in the order of the record
};

} // namespace kestrane
