#include "model/UndoStack.h"

#include <algorithm>

namespace kestrane {

std::ptrdiff_t UndoStack::contentSteps() const {
    return dropped_ + std::count_if(done_.begin(), done_.end(), [](const auto& step) { return step->isOfContent(); });
}

void UndoStack::record(std::unique_ptr<EditStep> step, bool wasChanged) {
    const std::ptrdiff_t place = contentSteps();
    const bool isSavedAhead = saved_ > place;
    const bool isChangedOtherwise = saved_ == place && wasChanged && !isMarked_;
    if (isSavedAhead || isChangedOtherwise) saved_ = kUnreachable;
    undone_.clear();
    step->Turn = ++turns_;
    done_.push_back(std::move(step));
    trim();
}

void UndoStack::markSaved() {
    saved_ = contentSteps();
    isMarked_ = false;
}

// Drops the oldest step when there are more than kSteps.
void UndoStack::trim() {
    if (done_.size() <= kSteps) return;
    if (done_.front()->isOfContent()) ++dropped_;
    done_.erase(done_.begin());
}

EditStep* UndoStack::next(Direction direction) const {
    const auto& steps = direction == Direction::Undo ? done_ : undone_;
    return steps.empty() ? nullptr : steps.back().get();
}

void UndoStack::exchange(Direction direction) {
    auto& from = direction == Direction::Undo ? done_ : undone_;
    auto& to = direction == Direction::Undo ? undone_ : done_;
    from.back()->exchange();
    from.back()->Turn = ++turns_;
    to.push_back(std::move(from.back()));
    from.pop_back();
}

} // namespace kestrane
