// The marks of exposure assessments.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kestrane::bench {

// A data file with one broadband log of so many rows under several names: one file on the disk with a name each.
std::vector<std::string> linkedFiles(const std::string& name, std::size_t rows, std::size_t count);

// Opens an assessment with a task for each of the files, until its result is there.
double assessSeconds(const std::vector<std::string>& files);

// Opens the same files one after the other as documents, until their rows are there.
double readSeconds(const std::vector<std::string>& files);

// From the entry of a task's hours to the repainted window; the median of some entries.
double entrySeconds(std::size_t groups, std::size_t tasks);

} // namespace kestrane::bench
