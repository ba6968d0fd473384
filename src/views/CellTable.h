// A table as data whose cells are made when they are asked for.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kestrane {

struct CellTable {
    std::vector<std::string> Captions; // of the columns
    std::size_t RowCount = 0;
    std::function<std::string(std::size_t row, std::size_t column)> Cell; // both counted from 0
};

} // namespace kestrane
