// What a dialog with a chart gives to be printed.
#pragma once

#include "views/CellTable.h"
#include "views/ChartOnPage.h"

#include <functional>
#include <string>

class QWidget;

namespace kestrane {

struct PrintedChart {
    ChartOnPage Chart;
    CellTable Table;     // of the same figures; without rows when there is none
    std::string Below{}; // a text with both
    std::string Files{}; // the names of the files that it is made of; empty for that of the log in view
};

// Shows it in the print preview, in front of the dialog.
using PrintChart = std::function<void(const PrintedChart& printed, QWidget* dialog)>;

} // namespace kestrane
