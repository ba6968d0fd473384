// A chart as it is put on paper: its data, which parts are shown, and which part of it is visible.
#pragma once

#include "views/ChartData.h"

#include <memory>
#include <optional>

namespace kestrane {

// In the coordinates of the axes; row r is at r.
struct ChartPart {
    ChartRange Rows, Primary, Secondary;
};

struct ChartOnPage {
    std::shared_ptr<const ChartData> Data;
    bool HasLegend = true;
    bool HasFootnote = true;
    std::optional<ChartPart> Part; // nothing for the whole chart
};

} // namespace kestrane
