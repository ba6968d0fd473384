// A chart in words, for those who cannot see it.
#pragma once

#include "model/Session.h"
#include "views/ChartData.h"

#include <string>

namespace kestrane {

// One line for each sentence: the title; the first and the last row; the titles of the axes; for each series the lowest
// value, the arithmetic mean and the highest value of the rows that count; the number of rows that do not count; the
// footnote. Curves to compare with are left out.
std::string chartSummary(const Session& session, const ChartData& chart);

// Which rows are in view, by the names of the first and the last, counted from 0. Empty when all of them are, or when
// they have no names.
std::string partInView(const Session& session, const ChartData& chart, std::size_t first, std::size_t last);

} // namespace kestrane
