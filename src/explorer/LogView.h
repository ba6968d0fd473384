// What an explorer window shows of a log: the tab in front, which tabs and panels a log gets, the choice of band,
// parameter, axis and channel, and which tabs are drawn. One for each window, owned by it. It refers to the log by its
// tree node key, and must not know widgets.
#pragma once

#include "explorer/DisplayBy.h"
#include "model/clsLog.h"
#include "protection/clsHP.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

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

// The tabs that a log can be seen on.
TabFlags enabledTabs(const clsLog& log);

// The tab shows cumulative figures of the log in view, and they are not those of its rows (wholeFiguresLine says so).
bool showsWholeFigures(const clsLog& inView, int tab);

// May a range of the opened log's rows be chosen to look at, or rows of the log in view be cut out of calculations?
// Both need more than one row, and a tab that shows rows or what is calculated from them.
bool IsZoomSelectable(const clsLog& opened, int tab);
bool IsCutIntervalSelectable(const clsLog& inView, int tab);

// The panels beside a tab's content.
struct LogPanels {
    bool DisplayBy = false;    // the list of bands or parameters, and what it offers
    bool ByParam = false;      // parameters can be offered, too
    bool Axis = false;         // dB or %
    bool Channel = false;      // channel A or B
    bool PanelChoice = false;  // which cumulative panel
    bool IntervalList = false; // the row on view
    bool ApplyChanges = false; // criterion, exchange rate, calibration date
    bool Protector = false;    // choosing a hearing protector
    bool ExposureRows = false; // inserting and deleting rows, and whether they are saved with the log
    bool WholeFigures = false; // what is said of the log in view while its figures are those of the whole log
};

LogPanels shownPanels(const clsLog& log, int tab);

// The chosen panel of the "Cumultv (Data)" tab that a log can have: a log without channel B has no panel of both.
int cumulativePanelOf(const clsLog& log, int chosen);

class LogView {
public:
    std::string Key; // of the log on view; empty: none
    int Tab = eTabFullLog;
    int Panel = 0;          // ePanelBothChannels, ePanelMainChannelA or ePanelAdvanced
    int Axis = kByDecibels; // or kByPercent
    std::int64_t IntervalRow = 1;
    bool ShowsNote = true;
    bool ShowsLegend = true;
    bool ShowsZoom = false; // its panel, where a zoom can be chosen

    // What the log is compared with; nothing: it is still to be chosen, which the user may have declined.
    std::optional<clsHP> Protector;
    int CorrectionFactor = 0;
    bool IsComparisonDeclined = false;

    // Puts another log on view: all choices as at first, but for the protector if the settings keep it, and a tab that
    // the log has.
    void open(const std::string& key, const clsLog& log, int panelSetting);
    void close();

    // All tabs are to be drawn anew; channel A is chosen.
    void ResetTabs();

    void chooseProtector(const clsHP& protector, int correctionFactor);

    // Forgets a protector that has no data of the kind that the log is compared by; and a band or parameter that the
    // log's list does not offer: the list goes to its default.
    void dropUnfitProtector(const clsLog& log);
    void dropUnfitEntry(const clsLog& log);

    // True when the tab in front has yet to be drawn; it counts as drawn from then on.
    bool takeDrawing();

    // Goes to a tab. False when the log does not have it. The panel's tab offers bands alone.
    bool chooseTab(int tab, const clsLog& log);

    // Each returns whether the tab in front is to be drawn anew.
    bool chooseListMode(int mode);                 // kByFreq or kByParam; the list goes to its default
    bool chooseEntry(const DisplayChoice& choice); // of the list
    bool chooseAxis(int axis);
    bool choosePanel(int panel);
    void followPanelSetting(int panelSetting); // a setting that is another one than the last becomes the choice
    bool chooseInterval(std::int64_t row);     // from 1
    bool chooseChannel(int channel); // with a band or parameter chosen, the list goes to its default and A stays

    int ListMode() const { return listMode_; }

    int Channel() const { return channel_; }

    const DisplayChoice& Choice() const { return choice_; } // of the list

    int PanelBand(const clsLog& log) const; // of the cumulative panels; 0: the overall figures

private:
    int listMode_ = kByFreq;
    DisplayChoice choice_;
    int channel_ = kChannelA;
    int panelSetting_ = 0; // last followed
    TabFlags drawn_{};
};

} // namespace kestrane
