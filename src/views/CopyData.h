// What the copy commands put on the clipboard for each tab: text with tabs between cells, and the same as an HTML
// table, so that word processors and spreadsheets paste a table. Pictures of charts are drawn by charts/.
#pragma once

#include "model/clsOptions.h"
#include "platform/Clipboard.h"
#include "views/CellTable.h"
#include "views/ChartData.h"
#include "views/HPDComparison.h"
#include "views/IntervalTable.h"

#include <string>
#include <string_view>

namespace kestrane {

// Lines of cells as text and as a table. With hasHeading the first line is a heading.
ClipboardForms copiedLines(std::string text, bool hasHeading);

// The rows of the intervals table. The HTML form also names the log and its criterion, and explains the "*".
ClipboardForms copiedTable(const clsLog& log, const CopiedRows& rows, bool hasHeading);
ClipboardForms copiedCells(const CellTable& table); // with its captions as the heading
ClipboardForms copiedValues(const ChartData& chart, const Locale& locale);
ClipboardForms copiedPanel(const clsLog& log, int band,
                           PanelForm panel); // the figures that the panel shows, and their band
ClipboardForms copiedExposures(const clsLog& log);
// Puts a line in front of the text and of the table. An empty line changes nothing, and pictures are not changed.
ClipboardForms withLine(ClipboardForms forms, const std::string& line);

ClipboardForms copiedComparison(const HPDComparison& comparison); // its words, with a blank between caption and value

} // namespace kestrane
