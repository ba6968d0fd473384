// The grid of the exposure calculator: what it shows of a log's rows.
#pragma once

#include "calc/ExposureCalculator.h"

#include <array>
#include <string>
#include <vector>

namespace kestrane {

struct ExposureTable {
    std::vector<std::vector<std::string>> Rows;              // cells by ExposureColumn
    std::vector<std::array<bool, kExposureColumns>> Missing; // cells that should hold something and are empty
    std::vector<std::string> Totals;
    std::vector<double> Shares;          // of the day's dose, 0..1, one for each row; 0 for one that takes no part
    std::vector<std::string> LevelNotes; // one for each row: what is to be said of its level; mostly empty
};

ExposureTable exposureTable(const clsLog& log);

} // namespace kestrane
