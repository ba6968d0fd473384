// The three fields over the cumulative figures that a user can change: criterion level, exchange rate and date of the
// last calibration; what is wrong with an entry, and what applying them does. Also the recalculation that a user
// forces.
#pragma once

#include "model/clsLog.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

// The levels and rates that can be entered by hand, dB.
constexpr int kLowestEntry = 1;
constexpr int kHighestCriterion = 140;
constexpr int kHighestExchange = 10;

enum class CalculationField { Criterion, Exchange, UserCal };

struct CalculationEntries {
    std::string Criterion, Exchange; // whole numbers, dB
    std::string UserCal;             // "dd/mm/yyyy"; empty: none

    bool operator==(const CalculationEntries&) const = default;
};

CalculationEntries calculationEntries(const clsLog& log); // as the log has them

std::vector<std::string> criterionChoices(const clsLog& log);
std::vector<std::string> exchangeChoices(const clsLog& log);

// A calibration date as it is kept on leaving the field: "dd/mm/yyyy" for a date, else the text from before.
std::string acceptedUserCal(const Session& session, const std::string& entered, const std::string& before);

// Checks the entries, asks where the user must decide, stores them and recalculates. displayed is the log opened in the
// tree, inView the same or its zoomed range. A wrong entry is given to focus before its message shows. False when
// nothing was changed.
bool applyChanges(clsLog& displayed, clsLog& inView, const CalculationEntries& entries,
                  const std::function<void(CalculationField)>& focus);

// Recalculates everything, of both logs, asking first when that takes long. False when the user would rather not.
bool FullRecalc(clsLog& displayed, clsLog& inView);

} // namespace kestrane
