// What a tab shows of a log: all parameters, all parameters at one band, or one parameter at all bands. The lists from
// which a user chooses, and what a choice means.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <vector>

namespace kestrane {

// The four modes of the choice: the first two say what the list offers, the other two which axis a band chart shows.
enum DisplayMode : int { kByFreq, kByParam, kByDecibels, kByPercent };

// At most one of the two is chosen. The parameter is kept by number, so a change of its caption does not matter.
struct DisplayChoice {
    std::string BandText;                         // "1k"
    kestrane::Parameter Parameter = kNoParameter; // eLeq, eLmin, eLmax, eLn1..eLn10

    bool operator==(const DisplayChoice&) const = default;
};

struct DisplayEntry {
    std::string Text;
    DisplayChoice Choice;
};

// "Default", which chooses nothing, followed by the bands ("1k Hz (CHA)"), or by the banded parameters of channel A
// that are plotted in either kind. For a broadband log the list has only "Default"; for the modes kByDecibels and
// kByPercent it is empty.
std::vector<DisplayEntry> displayByList(const clsLog& log, DisplayMode mode);

// The index of a choice in a list; 0, which is the default, when the list does not have it.
std::size_t placeOf(const DisplayChoice& choice, const std::vector<DisplayEntry>& list);

// A banded parameter of channel A as the list shows it.
std::string parameterText(const clsLog& log, Parameter parameter);

// "1k Hz"; "AP" for band 0.
std::string bandLabel(const clsLog& log, int band);

} // namespace kestrane
