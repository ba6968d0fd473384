// The tabs of a log as one table, a row a tab: which logs get it, what stands on it, which choices the bar above it
// offers, and what the copy, print and picture commands may do there. The window and the command line read it; nothing
// else knows tabs by their numbers.
#pragma once

#include "model/clsLog.h"
#include "resources/TextNames.h"
#include "views/ChartData.h"
#include "views/DisplayBy.h"
#include "views/HPDComparison.h"

#include <array>
#include <cstdint>
#include <optional>

namespace kestrane {

enum LogTab : int {
    eTabFullLog,
    eTabIntervalsTable,
    eTabIntervalsGraph,
    eTabCumulativeGraph,
    eTabNoiseRating,
    eTabCompareHPD,
    eTabCumulativeData,
    eTabExposureCalculator
};

constexpr int kLogTabs = 8;
using TabFlags = std::array<bool, kLogTabs>;

// Whose figures stand on a tab: those of the rows, those of the log in view as a whole, or the exposure calculator's,
// which are of the opened log.
enum class TabFigures { OfRows, Cumulative, Exposures };

// The panels beside a tab's content.
struct LogPanels {
    bool DisplayBy = false;    // the list of bands or parameters, and what it offers
    bool ByParam = false;      // parameters can be offered, too
    bool Axis = false;         // dB or %
    bool Channel = false;      // channel A or B
    bool FigurePanel = false;  // the cumulative panel, whose form is chosen on every tab
    bool IntervalList = false; // the row on view
    bool ApplyChanges = false; // criterion, exchange rate, calibration date
    bool Protector = false;    // choosing a hearing protector
    bool ExposureRows = false; // inserting and deleting rows, and whether they are saved with the log
    bool WholeFigures = false; // what is said of the log in view while its figures are those of the whole log
};

// What a chart is drawn by, apart from the log.
struct ChartChoice {
    DisplayChoice Choice;
    int Axis = kByDecibels;                    // or kByPercent
    std::int64_t Interval = 1;                 // the row that a chart of one row shows, from 1
    const HPDComparison* Comparison = nullptr; // null: none has been made
};

struct TabRow {
    Text::Id Caption;
    TabFigures Figures;
    bool (*IsOf)(const clsLog& log); // the log can be seen on it
    LogPanels Panels;                // those that a log can have there
    std::optional<ChartData> (*Chart)(const clsLog& log, const ChartChoice& choice) = nullptr; // null: it is no chart
    bool IsOverTime = false;  // the chart of all rows: it has a note, a part of it can be zoomed to, and 3D may be slow
    bool IsNarrowed = false;  // by zooming to rows, or cutting rows out of calculations
    bool HidesLegend = false; // when the legend of charts is switched off
    bool CopiesValues = false; // of its chart
    bool SavesPicture = false;
};

const TabRow& tabRow(int tab); // of LogTab

// The tabs that a log can be seen on.
TabFlags enabledTabs(const clsLog& log);

// The panels that stand beside a tab of a log.
LogPanels shownPanels(const clsLog& log, int tab);

// The tab shows cumulative figures of the log in view, and they are not those of its rows (wholeFiguresLine says so).
bool showsWholeFigures(const clsLog& inView, int tab);

// May a range of the opened log's rows be chosen to look at, or rows of the log in view be cut out of calculations?
// Both need more than one row, and a tab that shows rows or what is calculated from them.
bool IsZoomSelectable(const clsLog& opened, int tab);
bool IsCutIntervalSelectable(const clsLog& inView, int tab);

// May a tab be copied, or the values of its chart alone? hasContent: there is something on it to be copied.
bool IsCopyable(int tab, bool valuesOnly, bool hasContent);

// The chart of a tab. Nothing when there is nothing to show, and of a tab that is no chart. Raises 9 for a row that is
// not there.
std::optional<ChartData> chartOfTab(const clsLog& log, int tab, const ChartChoice& choice);

} // namespace kestrane
