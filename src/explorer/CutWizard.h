// The decisions of the interval selection wizard, without its widgets: a first step that welcomes, then one range of
// rows a step; all ranges together say what is included in, or excluded from, a log's calculations. It holds no
// reference to the log between the calls.
#pragma once

#include "model/clsLog.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class CutWizard {
public:
    // With the ranges that the log has. The step of welcome is left out when the settings say so.
    explicit CutWizard(const clsLog& log);

    bool IsWelcome() const { return step_ == 0; }

    std::string Title() const; // of the step; empty for the welcome

    // What the step in front has chosen: rows counted from 1, 0 for none.
    std::int64_t From = 0, To = 0;
    std::optional<bool> ToBeIncluded; // of all ranges; nothing: not chosen yet

    bool CanGoBack() const { return step_ > firstStep_; }

    bool CanClear() const { return !IsWelcome() && (!ranges_.empty() || From != 0 || To != 0); }

    bool CanFinish() const { return !IsWelcome(); }

    // Takes the range in front and goes to the next step. False, with a message, when something is missing or wrong.
    bool Next();

    // Takes the range in front when it is good.
    void Back();

    // Drops the range in front, or the last one when the one in front is new, and goes back a step; the first step is
    // emptied. Raises an error when there is none to drop.
    void Clear();

    // Takes the range in front; when it is not good, asks whether to finish without it. False: the wizard stays. Not on
    // the welcome.
    bool Finish();

    // Hands the selection to the log. False when that changes nothing.
    bool Store(clsLog& log) const;

    bool SkipsWelcome() const;
    void SkipWelcome(bool isSkipped); // kept in the settings, for the next time

private:
    Text::Id fault() const; // what is wrong with the step in front; None: nothing
    void take();
    void drop(std::size_t step);
    void goTo(std::size_t step);

    Session& session_;
    std::vector<RowRange> ranges_;
    std::size_t firstStep_;
    std::size_t step_ = 0; // 0 the welcome, n the n-th range
};

} // namespace kestrane
