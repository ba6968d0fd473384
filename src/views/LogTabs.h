// The tabs of a log as one table with a row for each tab: which logs have it, what it shows, which choices the bar
// above it offers, and what the copy, print and picture commands can do there. The window and the command line read it;
// nothing else refers to tabs by number.
#pragma once

#include "model/clsLog.h"
#include "resources/TextNames.h"
#include "views/ChartData.h"
#include "views/DisplayBy.h"
#include "views/HPDComparison.h"
#include "views/LogTab.h"

#include <array>
#include <cstdint>
#include <optional>

namespace kestrane {

using TabFlags = std::array<bool, kAllLogTabs.size()>;

// Whose figures a tab shows: those of the rows, those of the whole log in view, or those of the exposure calculator,
// which belong to the opened log.
enum class TabFigures { OfRows, Cumulative, Exposures };

// The panels beside a tab's content.
struct LogPanels {
    bool DisplayBy = false;    // the list of bands or parameters, and the choice of what it offers
    bool ByParam = false;      // parameters can be offered, too
    bool Axis = false;         // dB or %
    bool Channel = false;      // channel A or B
    bool FigurePanel = false;  // the cumulative panel; its form is chosen on every tab
    bool IntervalList = false; // the choice of the interval
    bool ApplyChanges = false; // criterion, exchange rate, calibration date
    bool Protector = false;    // choosing a hearing protector
    bool ExposureRows = false; // inserting and deleting rows, and the choice to save them with the log
    bool WholeFigures = false; // the note that the log in view has the figures of the whole log
};

// What a chart depends on, apart from the log.
struct ChartChoice {
    DisplayChoice Choice;
    DisplayMode Axis = kByDecibels;            // or kByPercent
    std::int64_t Interval = 1;                 // the row that a chart of one row shows, counted from 1
    const HPDComparison* Comparison = nullptr; // null when none has been made
};

struct TabRow {
    Text::Id Caption;
    TabFigures Figures;
    bool (*IsOf)(const clsLog& log); // whether a log has this tab
    Text::Id Lack = Text::None;      // what is said of a log that does not have it
    LogPanels Panels;                // the panels that this tab can have
    // Null when the tab is no chart.
    std::optional<ChartData> (*Chart)(const clsLog& log, const ChartChoice& choice) = nullptr;
    bool IsOverTime = false;  // the chart of all rows: it has a note, a part of it can be zoomed to, and 3D may be slow
    bool IsNarrowed = false;  // zooming to rows and cutting rows out of calculations change what it shows
    bool HidesLegend = false; // it follows the switch for the legend of charts
    bool CopiesValues = false; // the values of its chart can be copied
    bool SavesPicture = false;
};

const TabRow& tabRow(LogTab tab); // tab is a LogTab

// The tabs that a log has.
TabFlags enabledTabs(const clsLog& log);

// The panels beside a tab for a log.
LogPanels shownPanels(const clsLog& log, LogTab tab);

// Whether the tab shows cumulative figures of the log in view that are not those of its rows (wholeFiguresLine says
// so).
bool showsWholeFigures(const clsLog& inView, LogTab tab);

// Whether the user may choose a range of the opened log's rows to look at, or cut rows of the log in view out of
// calculations. Both need more than one row, and a tab that shows rows or what is calculated from them.
bool IsZoomSelectable(const clsLog& opened, LogTab tab);
bool IsCutIntervalSelectable(const clsLog& inView, LogTab tab);

// Whether a tab, or with valuesOnly the values of its chart, can be copied. hasContent says that there is something on
// it.
bool IsCopyable(LogTab tab, bool valuesOnly, bool hasContent);

// The chart of a tab. Nothing when there is nothing to show, and for a tab that is no chart. Raises 9 for a row that
// does not exist.
std::optional<ChartData> chartOfTab(const clsLog& log, LogTab tab, const ChartChoice& choice);

} // namespace kestrane
