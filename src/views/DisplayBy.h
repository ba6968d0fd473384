// What of a log a tab shows: all parameters, all parameters at one band, or one parameter at all bands. The lists that
// a user chooses from, and what a choice means.
#pragma once

#include "model/clsLog.h"

#include <string>
#include <vector>

namespace kestrane {

// The four modes of the choice: 0 and 1 say what the list offers, 2 and 3 which axis a band chart shows.
constexpr int kByFreq = 0;
constexpr int kByParam = 1;
constexpr int kByDecibels = 2;
constexpr int kByPercent = 3;

// At most one of the two is chosen. A parameter stays the same whatever its caption becomes.
struct DisplayChoice {
    std::string BandText; // "1k"
    int Parameter = 0;    // eLeq, eLmin, eLmax, eLn1..eLn10

    bool operator==(const DisplayChoice&) const = default;
};

struct DisplayEntry {
    std::string Text;
    DisplayChoice Choice;
};

// "Default", which chooses nothing, and then the bands ("1k Hz (CHA)"), or the parameters of channel A that are plotted
// in any kind. A broadband log has "Default" alone; the modes kByDecibels and kByPercent have no list.
std::vector<DisplayEntry> displayByList(const clsLog& log, int mode);

// Where a choice stands in a list; 0, the default, when the list does not offer it.
std::size_t placeOf(const DisplayChoice& choice, const std::vector<DisplayEntry>& list);

// A banded parameter of channel A as the list shows it.
std::string parameterText(const clsLog& log, int parameter);

// "1k Hz"; "AP" for band 0.
std::string bandLabel(const clsLog& log, int band);

} // namespace kestrane
