// A chart as it goes on paper: its data, which parts are shown, and what is in view.
#pragma once

#include "views/ChartData.h"

#include <memory>
#include <optional>

namespace kestrane {

// In coordinates of the axes; row r lies at r.
struct ChartPart {
    ChartRange Rows, Primary, Secondary;
};

struct ChartOnPage {
    std::shared_ptr<const ChartData> Data;
    bool HasLegend = true;
    bool HasFootnote = true;
    std::optional<ChartPart> Part; // nothing: the whole
};

} // namespace kestrane
