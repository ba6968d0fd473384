// An assessment as a JSON file. Members that the program does not know are kept from reading to saving.
#pragma once

#include "assessment/Assessment.h"

#include <string>
#include <string_view>

namespace kestrane {

constexpr std::int64_t kErrorAssessment = 110; // its text says what is wrong, and where: "$.groups[0].strategy: ..."

// Raises 110 for what is no JSON, for a member of the wrong type or with a word or number that has no meaning there,
// and for one that is missing though it is needed. Members that are null count as missing.
Assessment assessmentOfText(std::string_view text);
std::string assessmentText(const Assessment& assessment);

// The same from and to a file, saved atomically. Raises the system's error, too; then a file keeps what it held.
Assessment loadAssessment(const std::string& path);
void saveAssessment(const std::string& path, const Assessment& assessment);

// The path of a data file that an assessment at this path names.
std::string dataFileOf(const std::string& assessmentPath, const std::string& file);

// Keeps the hash of each data file that none is kept of yet. Files that cannot be read stay without.
void keepHashes(const std::string& assessmentPath, Assessment& assessment);

} // namespace kestrane
