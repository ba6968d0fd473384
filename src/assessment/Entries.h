// What a user types into the cells and fields of an assessment, as values and back.
#pragma once

#include "assessment/Assessment.h"
#include "model/Session.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A number with all of its digits, as it is typed; empty for nothing.
std::string exact(const Session& session, double value);
std::string exact(const Session& session, const std::optional<double>& value);

std::string trimmed(std::string_view text); // without blanks at both ends

// Each of the following reads an entry into a value and returns false when the entry does not fit. An empty entry
// stands for nothing, where nothing is possible.

bool takeLevel(const Session& session, const std::string& entry, std::optional<double>& level);

bool takeHours(const Session& session, const std::string& entry, double& hours); // such as "1.5" or "1:30"

// The shortest and the longest duration, such as "4 6", "4-6" or "4 to 6".
bool takeRange(const Session& session, const std::string& entry, std::optional<std::array<double, 2>>& range);

// Levels, which replace those among the samples; the samples that are rows of a log stay, behind them.
bool takeLevels(const Session& session, const std::string& entry, std::vector<Sample>& samples);
std::string levelsText(const Session& session, const std::vector<Sample>& samples);

// The first word of such an entry that is no number; empty when all are.
std::string noLevelIn(const Session& session, const std::string& entry);

// A range of rows, such as "1-60", "61-" to the end, "-60" from the first row, or one row; nothing stands for all rows.
bool takeRows(const std::string& entry, LogRows& rows);
std::string rowsText(const LogRows& rows);

bool takeRow(std::string_view word, std::optional<std::int64_t>& row); // a whole number

} // namespace kestrane
