// The texts of the "Cumultv (Data)" tab: which label shows which value of a log. The tab lays them out, the command
// line prints them.
#pragma once

#include "model/clsLog.h"
#include "model/clsOptions.h"

#include <string>
#include <vector>

namespace kestrane {

// A label of the panel. An empty text means that the value is not shown.
struct PanelLabel {
    std::string Name;       // "lblLeqA"
    std::string Caption;    // "LAeq"
    std::string Text;       // "85.0"
    bool IsWarning = false; // to be marked with the highlight colour
    std::string Note{};     // a remark on the figure; usually empty
};

// The frame of the tab that a label is in.
enum class PanelSection { Levels, Exposure, Measurement, Instrument };

// The value of a label with its unit, which may be empty, and its note; empty when the label has no text.
std::string valueText(const PanelLabel& label, const std::string& unit);

struct PanelRow {
    PanelSection Section;
    std::string Caption;
    std::string Unit; // "dB"; empty when the caption contains it or there is none
    PanelLabel A;     // channel A, or the only value
    PanelLabel B;     // an empty name means that the row has only one value
};

// What a screen reader reads out for a value: caption, channel (when the row has both), value with unit and note; empty
// for a label without a text. channel is kChannelA or kChannelB.
std::string heardText(const Session& session, const PanelRow& row, LogChannel channel);

// All rows of the panel in order. band is 0 for the overall figures, else the chosen band (1..last).
std::vector<PanelRow> cumulativePanel(const clsLog& log, int band);

// Whether a form of the tab (ePanelBothChannels, ePanelMainChannelA or ePanelAdvanced) has a section of figures, and
// whether it has channel B. Every form has the sections of measurement and instrument.
bool isShownIn(PanelForm panel, PanelSection section);
bool showsChannelB(PanelForm panel);

// The labels of the panel that show a value.
std::vector<PanelLabel> shownLabels(const clsLog& log, int band);

} // namespace kestrane
