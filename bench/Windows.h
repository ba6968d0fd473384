// The windows' marks, taken offscreen.
#pragma once

#include <string>

namespace kestrane::bench {

// From the application object to the first explorer window painted, with a file opened and its log on view.
double startSeconds(const std::string& file);

// Showing a tab of an octave log of so many rows in its window, painted: the slowest of all its tabs.
double tabSeconds(std::size_t rows);

// One step of scrolling the intervals table of a log of so many rows, painted.
double scrollSeconds(std::size_t rows);

} // namespace kestrane::bench
