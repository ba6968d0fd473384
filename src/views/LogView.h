// What an explorer window shows of a log: the tab in front, the choice of band, parameter, axis and channel, and which
// tabs have been drawn. Each window owns one. It refers to the log by its tree node key and must not know widgets.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"
#include "protection/clsHP.h"
#include "views/DisplayBy.h"
#include "views/LogTabs.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// The form of the "Cumultv (Data)" tab for a log: the chosen one, except that a log without channel B has no form with
// both channels.
PanelForm cumulativePanelOf(const clsLog& log, PanelForm chosen);

class LogView {
public:
    std::string Key; // of the log that is shown; empty for none
    LogTab Tab = eTabFullLog;
    PanelForm Panel = ePanelBothChannels; // ePanelBothChannels, ePanelMainChannelA or ePanelAdvanced
    DisplayMode Axis = kByDecibels;       // or kByPercent
    std::int64_t IntervalRow = 1;
    bool ShowsNote = true;
    bool ShowsLegend = true;
    bool ShowsRange = false; // whether the strip with the figures of a marked range is shown
    bool ShowsZoom = false;  // whether its panel is shown where a zoom can be chosen

    // The protector that the log is compared with; nothing when it is still to be chosen (the user may have declined
    // to).
    std::optional<clsHP> Protector;
    CorrectionKind CorrectionFactor = kCorrectionNone;
    bool IsComparisonDeclined = false;

    // Shows another log. All choices return to their defaults, except the protector when the settings keep it; the tab
    // stays when the log has it.
    void open(const std::string& key, const clsLog& log, PanelForm panelSetting);
    void close();

    // All tabs must be drawn again; channel A is chosen.
    void ResetTabs();

    void chooseProtector(const clsHP& protector, CorrectionKind correctionFactor);

    // Forget a protector without data of the kind that the log needs, or a band or parameter that the log's list does
    // not offer; the list then goes to its default.
    void dropUnfitProtector(const clsLog& log);
    void dropUnfitEntry(const clsLog& log);

    // Returns true when the tab in front must still be drawn. It counts as drawn from then on.
    bool takeDrawing();

    // Goes to a tab. Returns false when the log does not have it. On the tab of the cumulative panel the list offers
    // only bands.
    bool chooseTab(LogTab tab, const clsLog& log);

    // Each returns whether the tab in front is to be drawn again.
    bool chooseListMode(DisplayMode mode);         // kByFreq or kByParam; the list goes to its default
    bool chooseEntry(const DisplayChoice& choice); // an entry of the list
    bool chooseAxis(DisplayMode axis);
    bool choosePanel(PanelForm panel);
    void followPanelSetting(PanelForm panelSetting); // a setting that differs from the last one becomes the choice
    bool chooseInterval(std::int64_t row);           // counted from 1
    // When a band or parameter was chosen, the list goes to its default and channel A stays.
    bool chooseChannel(LogChannel channel);

    DisplayMode ListMode() const { return listMode_; }

    LogChannel Channel() const { return channel_; }

    const DisplayChoice& Choice() const { return choice_; } // the entry of the list that is chosen

    int PanelBand(const clsLog& log) const; // the band of the cumulative panels; 0 for the overall figures

private:
    void drawAnew(bool LogPanels::*choice); // marks the tabs that offer it to be drawn again

    DisplayMode listMode_ = kByFreq;
    DisplayChoice choice_;
    LogChannel channel_ = kChannelA;
    PanelForm panelSetting_ = ePanelBothChannels; // the setting that was followed last
    TabFlags drawn_{};
};

} // namespace kestrane
