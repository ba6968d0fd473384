// The decisions of the interval selection wizard, without its widgets: a welcome step, then a step for each range of
// rows. All ranges together say what is included in, or excluded from, the calculations of a log. It keeps no reference
// to the log between calls.
#pragma once

#include "model/clsLog.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class CutWizard {
public:
    // Starts with the ranges that the log has. The welcome step is skipped when the settings say so.
    explicit CutWizard(const clsLog& log);

    bool IsWelcome() const { return step_ == 0; }

    std::string Title() const; // of the current step; empty for the welcome

    // The range chosen in the current step: rows counted from 1, both included; 0 when not chosen.
    std::int64_t From = 0, To = 0;
    std::optional<bool> ToBeIncluded; // whether all ranges are included or excluded; nothing when not chosen yet

    std::string Reason; // why, in the user's words; may be empty

    bool CanGoBack() const { return step_ > firstStep_; }

    bool CanClear() const { return !IsWelcome() && (!ranges_.empty() || From != 0 || To != 0); }

    bool CanFinish() const { return !IsWelcome(); }

    // Stores the current range and goes to the next step. Returns false, after a message, when something is missing or
    // wrong.
    bool Next();

    // Goes back a step; the current range is stored when it is valid.
    void Back();

    // Removes the current range, or the last one when the current one has not been stored yet, and goes back a step, at
    // most to the first range. Raises an error unless CanClear().
    void Clear();

    // Stores the current range. When it is not valid, asks whether to finish without it. Returns false when the wizard
    // stays open. Must not be called in the welcome step.
    bool Finish();

    // Stores the selection in the log. Returns false when that changes nothing.
    bool Store(clsLog& log) const;

    bool SkipsWelcome() const;
    void SkipWelcome(bool isSkipped); // stored in the settings for the next time

private:
    Text::Id fault() const; // what is wrong with the current range; None when nothing is
    void take();
    void drop(std::size_t step);
    void goTo(std::size_t step);

    Session& session_;
    std::vector<RowRange> ranges_;
    std::size_t firstStep_;
    std::size_t step_ = 0; // 0 is the welcome, n is the n-th range
};

} // namespace kestrane
