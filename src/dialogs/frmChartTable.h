// The values of a chart as a table that can be read with the arrow keys or by a screen reader.
#pragma once

#include "model/Session.h"
#include "views/CellTable.h"
#include "views/ChartData.h"

#include <memory>

class QWidget;

namespace kestrane {

CellTable chartCells(std::shared_ptr<const ChartData> chart, const Locale& locale); // with a caption for every column

// Returns when the user has closed the dialog.
void ShowChartTable(const Session& session, std::shared_ptr<const ChartData> chart, QWidget* parent);

} // namespace kestrane
