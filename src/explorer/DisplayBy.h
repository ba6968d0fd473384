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

// At most one of the two is not empty.
struct DisplayChoice {
    std::string BandText;      // "1k"
    std::string ParameterText; // a caption as the list shows it
};

// "Default" and then the bands ("1k Hz (CHA)"), or the parameters of channel A that are plotted in any kind. A
// broadband log has "Default" alone; the modes kByDecibels and kByPercent have no list.
std::vector<std::string> displayByList(const clsLog& log, int mode);

// The choice behind a text of that list; "Default" and an empty text choose nothing.
DisplayChoice displayChoice(const clsLog& log, int mode, const std::string& text);

// The parameter of a choice's text (eLeq, eLmin, eLmax, eLn1..eLn10); 0 when the text names none.
int chosenParameter(const clsLog& log, const std::string& text);

// "1k Hz"; "AP" for band 0.
std::string bandLabel(const clsLog& log, int band);

} // namespace kestrane
