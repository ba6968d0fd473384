// What an explorer window shows of a log: the tab in front, the choice of band, parameter, axis and channel, and which
// tabs are drawn. One for each window, owned by it. It refers to the log by its tree node key, and must not know
// widgets.
#pragma once

#include "model/clsLog.h"
#include "protection/clsHP.h"
#include "views/DisplayBy.h"
#include "views/LogTabs.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

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
    void drawAnew(bool LogPanels::*choice); // the tabs that offer it

    int listMode_ = kByFreq;
    DisplayChoice choice_;
    int channel_ = kChannelA;
    int panelSetting_ = 0; // last followed
    TabFlags drawn_{};
};

} // namespace kestrane
