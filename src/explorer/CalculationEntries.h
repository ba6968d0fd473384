// The three fields above the cumulative figures that a user can change: criterion level, exchange rate and date of the
// last calibration; what is wrong with an entry, and what applying the entries does. Also the recalculation that a user
// forces.
#pragma once

#include "model/clsLog.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

// The range of the levels and rates that can be entered, in dB.
constexpr int kLowestEntry = 1;
constexpr int kHighestCriterion = 140;
constexpr int kHighestExchange = 10;

enum class CalculationField { Criterion, Exchange, UserCal };

struct CalculationEntries {
    std::string Criterion, Exchange; // whole numbers, dB
    std::string UserCal;             // "dd/mm/yyyy"; empty when there is none

    bool operator==(const CalculationEntries&) const = default;
};

CalculationEntries calculationEntries(const clsLog& log); // as the log has them

std::vector<std::string> criterionChoices(const clsLog& log);
std::vector<std::string> exchangeChoices(const clsLog& log);

// The text of the calibration date after the field is left: "dd/mm/yyyy" when entered is a date, else before.
std::string acceptedUserCal(const Session& session, const std::string& entered, const std::string& before);

// Checks the entries, asks the user where a decision is needed, stores them and recalculates. displayed is the log
// opened in the tree; inView is the same log or its zoomed range. For a wrong entry, focus is called with its field
// before the message is shown. Returns false when nothing was changed.
bool applyChanges(clsLog& displayed, clsLog& inView, const CalculationEntries& entries,
                  const std::function<void(CalculationField)>& focus);

// Recalculates all figures of both logs, after a question when that takes long. Returns false when the user declines.
bool FullRecalc(clsLog& displayed, clsLog& inView);

} // namespace kestrane
