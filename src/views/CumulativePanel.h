// The texts of the "Cumultv (Data)" tab: which label shows what of a log. The tab lays them out, the command line
// prints them.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <vector>

namespace kestrane {

// A label of the panel. An empty text is a value that is not shown.
struct PanelLabel {
    std::string Name;       // "lblLeqA"
    std::string Caption;    // "LAeq"
    std::string Text;       // "85.0"
    bool IsWarning = false; // to be marked with the highlight colour
    std::string Note{};     // what is to be said of the figure; mostly empty
};

// Which frame of the tab a label stands in.
enum class PanelSection { Levels, Exposure, Measurement, Instrument };

// The value with its unit, which may be empty, and its note.
std::string valueText(const PanelLabel& label, const std::string& unit);

struct PanelRow {
    PanelSection Section;
    std::string Caption;
    std::string Unit; // "dB"; empty where the caption says it, or there is none
    PanelLabel A;     // or the only value
    PanelLabel B;     // empty name: the row has one value
};

// What is heard of a value: caption, channel where the row has both, value with unit and note; nothing of an empty
// one. channel: kChannelA or kChannelB.
std::string heardText(const Session& session, const PanelRow& row, int channel);

// All rows of the panel in order. band: 0 the overall figures, else the band chosen (1..last).
std::vector<PanelRow> cumulativePanel(const clsLog& log, int band);

// A frame of the tab, chosen by ePanelBothChannels, ePanelMainChannelA or ePanelAdvanced: whether it has a section of
// figures and channel B; every frame has the sections of measurement and instrument.
bool isShownIn(int panel, PanelSection section);
bool showsChannelB(int panel);

// Those labels that show a value.
std::vector<PanelLabel> shownLabels(const clsLog& log, int band);

} // namespace kestrane
