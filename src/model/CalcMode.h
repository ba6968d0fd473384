// The ways to recalculate a log.
#pragma once

namespace kestrane {

// How a recalculation treats figures that are not 0.
enum CalcMode : int {
    kCalcExposureTime,  // only the exposure time has changed
    kCalcFromIntervals, // fill in what is missing, but only in a log with rows
    kCalcAfterZoom,     // fill in what is missing
    kCalcUnmarked,      // compute everything again, without marking the log
    kCalcFull           // compute everything again, mark the log and rebuild its plottable table
};

} // namespace kestrane
