// The numbers of a log's tabs. What is known of each stands in LogTabs.h.
#pragma once

#include <array>

namespace kestrane {

enum LogTab : int {
    eTabFullLog,
    eTabIntervalsTable,
    eTabIntervalsGraph,
    eTabCumulativeGraph,
    eTabNoiseRating,
    eTabCompareHPD,
    eTabCumulativeData,
    eTabExposureCalculator,
    eTabCriteria
};

inline constexpr std::array kAllLogTabs = {eTabFullLog,         eTabIntervalsTable,     eTabIntervalsGraph,
                                           eTabCumulativeGraph, eTabNoiseRating,        eTabCompareHPD,
                                           eTabCumulativeData,  eTabExposureCalculator, eTabCriteria};

} // namespace kestrane
