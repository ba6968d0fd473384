// The record in which older files keep a row: its time and its figures, separated by commas. Machine logs consist of
// such fields throughout; a project file may hold its rows in this form.
#pragma once

#include "model/LevelWriter.h"
#include "model/clsLog.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace kestrane {

constexpr int kRecordLns = 7; // the number of Ln levels in a record

[[noreturn]] void raisePastEnd(); // 62, "Input past end of file"

// Splits a text into fields, each ended by a comma. Line ends in front of a field are not part of it.
class CommaFields {
public:
    // In a closed text the end of the text ends a field, too; in an open one the text behind the last comma is no
    // field.
    explicit CommaFields(std::string_view text, bool isClosed = false) : rest_(text), isClosed_(isClosed) {}

    std::optional<std::string_view> next(); // the next field; nothing at the end
    std::string_view take();                // the next field; raises 62 at the end

    std::size_t left() const; // how many times take() can be called

    std::string_view last() const { return last_; } // the field that was returned last

private:
    std::string_view rest_, last_;
    bool isClosed_;
};

// A level or dose. An empty field is 0, an absent figure. Raises 13 for any other text that is no number.
float figureOf(std::string_view field);

// Puts records into rows of a log that are 0 so far. From the first record on, the number of rows must not change, nor
// the log's mode and channels.
class RecordRows {
public:
    explicit RecordRows(clsLog& log);

    std::size_t fields() const; // the number of fields of a record, including the time

    // Takes one record into a row (counted from 0), which must exist. start is the record's first field, the time
    // "hh:mm:ss", which the caller has taken already. Raises 13 for a field that is no figure or time, 62 when there
    // are too few fields.
    void take(std::string_view start, CommaFields& fields, std::size_t row);

private:
    IntervalColumns& rows_;
    std::vector<LevelWriter> levels_; // in the order of the record
};

} // namespace kestrane
