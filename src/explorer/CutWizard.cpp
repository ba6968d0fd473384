#include "explorer/CutWizard.h"

#include "model/Session.h"
#include "model/SettingsText.h"
#include "platform/RuntimeError.h"
#include "platform/Trimmed.h"
#include "views/Selection.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr std::string_view kSection = "Wizards/CutIntervals";
constexpr std::string_view kDoNotShowAgain = "DoNotShowAgain";

// The ranges of the log's selection, reduced to rows that the log has; ranges without such rows are dropped.
std::vector<RowRange> rangesOf(const clsLog& log) {
    std::vector<RowRange> ranges;
    for (const RowRange& range : selectionRanges(log.LogIntervals.CutIntervals)) {
        const RowRange cut = {std::max<std::int64_t>(range.From, 1), std::min(range.To, log.LogIntervals.Count())};
        if (cut.From <= cut.To) ranges.push_back(cut);
    }
    return ranges;
}

} // namespace

CutWizard::CutWizard(const clsLog& log) :
    Reason(log.CutReason), session_(log.session()), ranges_(rangesOf(log)), firstStep_(SkipsWelcome() ? 1 : 0) {
    if (!ranges_.empty()) ToBeIncluded = log.LogIntervals.IntervalsToBeIncluded;
    goTo(firstStep_);
}

bool CutWizard::SkipsWelcome() const {
    bool isSkipped = false;
    try {
        fromSettingsText(session_.settings.read(kSection, kDoNotShowAgain, settingsText(false)), isSkipped);
    } catch (const RuntimeError&) { // it is no Boolean, so the welcome is shown
    }
    return isSkipped;
}

void CutWizard::SkipWelcome(bool isSkipped) {
    try {
        session_.settings.write(kSection, kDoNotShowAgain, settingsText(isSkipped));
    } catch (const RuntimeError& error) {
        session_.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
    }
}

std::string CutWizard::Title() const {
    return IsWelcome() ? std::string() : session_.LoadText(Text::IntervalRangeNumber) + std::to_string(step_);
}

Text::Id CutWizard::fault() const {
    if (!ToBeIncluded) return Text::IncludeNotSelected;
    if (From == 0 || To == 0) return Text::BothIntervalsRequired;
    return From > To ? Text::RangeBackwards : Text::None;
}

void CutWizard::take() {
    if (IsWelcome()) return;
    if (step_ > ranges_.size()) ranges_.emplace_back();
    ranges_[step_ - 1] = {From, To};
}

void CutWizard::goTo(std::size_t step) {
    step_ = step;
    const bool isKnown = !IsWelcome() && step_ <= ranges_.size();
    From = isKnown ? ranges_[step_ - 1].From : 0;
    To = isKnown ? ranges_[step_ - 1].To : 0;
}

bool CutWizard::Next() {
    if (const Text::Id text = IsWelcome() ? Text::None : fault(); text != Text::None) {
        session_.ShowMessage(session_.LoadText(text), kIconExclamation);
        return false;
    }
    take();
    goTo(step_ + 1);
    return true;
}

void CutWizard::Back() {
    if (!CanGoBack()) return;
    if (fault() == 0) take();
    goTo(step_ - 1);
}

void CutWizard::drop(std::size_t step) {
    ranges_.erase(ranges_.begin() + static_cast<std::ptrdiff_t>(step) - 1);
}

void CutWizard::Clear() {
    if (!CanClear()) throw RuntimeError(kErrorApplication, "SHOULD NOT BE POSSIBLE");
    if (!ranges_.empty()) drop(std::min(step_, ranges_.size()));
    goTo(std::max<std::size_t>(step_ - 1, 1));
}

bool CutWizard::Finish() {
    if (const Text::Id text = fault(); text != Text::None) {
        const std::string question = session_.LoadText(text) + "\r\n\r\n" + session_.LoadText(Text::FinishAnyway);
        if (session_.ShowMessage(question, kButtonsOkCancel | kIconQuestion, session_.LoadText(Text::FinishAnyway)) !=
            Button::Ok)
            return false;
        if (step_ <= ranges_.size()) drop(step_);
        return true;
    }
    take();
    return true;
}

bool CutWizard::Store(clsLog& log) const {
    const std::string reason = ranges_.empty() ? std::string() : std::string(trimmed(Reason));
    const bool isReasonNew = std::exchange(log.CutReason, reason) != reason;
    return setIntervalSelection(log, ranges_, !ranges_.empty() && ToBeIncluded.value_or(false)) || isReasonNew;
}

} // namespace kestrane
