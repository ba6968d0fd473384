// The grid of the exposure calculator: what it shows of a log's rows.
#pragma once

#include "calc/ExposureCalculator.h"

#include <array>
#include <string>
#include <vector>

namespace kestrane {

struct ExposureTable {
    std::vector<std::vector<std::string>> Rows;              // cells by ExposureColumn
    std::vector<std::array<bool, kExposureColumns>> Missing; // cells that are empty although they should have a value
    std::vector<std::string> Totals;
    std::vector<double> Shares;          // of the day's dose, 0..1, one for each row; 0 for a row that is not included
    std::vector<std::string> LevelNotes; // a remark on the level of each row; usually empty
};

ExposureTable exposureTable(const clsLog& log);

} // namespace kestrane
