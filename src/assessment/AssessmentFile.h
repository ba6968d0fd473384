// An assessment as a JSON file. Members that the program does not know are read and saved again.
#pragma once

#include "assessment/Assessment.h"

#include <string>
#include <string_view>

namespace kestrane {

constexpr std::int64_t kErrorAssessment = 110; // its text says what is wrong, and where: "$.groups[0].strategy: ..."

// Reads an assessment. Raises 110 for a text that is not JSON, for a member of the wrong type or with a word or number
// that has no meaning there, and for a required member that is missing. Members that are null count as missing.
Assessment assessmentOfText(std::string_view text);
std::string assessmentText(const Assessment& assessment);

// The same from and to a file, which is saved atomically. They also raise the system's error; a failed save leaves the
// file as it was.
Assessment loadAssessment(const std::string& path);
void saveAssessment(const std::string& path, const Assessment& assessment);

// The path of a data file named in the assessment at assessmentPath.
std::string dataFileOf(const std::string& assessmentPath, const std::string& file);

// Names the data files anew for an assessment that goes from one path (empty: it has none yet) to another: relative to
// its folder where that leads to the same file, else absolute.
void moveDataFiles(Assessment& assessment, const std::string& from, const std::string& to);

} // namespace kestrane
