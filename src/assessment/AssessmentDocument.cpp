#include "assessment/AssessmentDocument.h"

#include "assessment/AssessmentFile.h"

namespace kestrane {

AssessmentDocument::AssessmentDocument(Assessment first, std::string path) : path_(std::move(path)) {
    saved_ = assessmentText(first);
    states_.push_back({Text::None, std::move(first), saved_});
}

AssessmentDocument AssessmentDocument::ofFile(const std::string& path) {
    AssessmentDocument document(loadAssessment(path), path);
    document.onDisk_ = hashedStampOf(path);
    return document;
}

AssessmentDocument AssessmentDocument::ofCopy(Assessment kept, std::string path, FileStamp onDisk) {
    AssessmentDocument document(std::move(kept), std::move(path));
    document.MarkChanged();
    document.onDisk_ = std::move(onDisk);
    return document;
}

bool AssessmentDocument::IsChanged() const {
    return states_[at_].text != saved_;
}

void AssessmentDocument::Change(Text::Id title, Assessment next) {
    std::string text = assessmentText(next);
    if (text == states_[at_].text) return;
    states_.erase(states_.begin() + static_cast<std::ptrdiff_t>(at_) + 1, states_.end());
    states_.push_back({title, std::move(next), std::move(text)});
    if (states_.size() > kStates) states_.pop_front();
    at_ = states_.size() - 1;
}

void AssessmentDocument::Amend(Assessment present) {
    const bool wasChanged = IsChanged();
    State& now = states_[at_];
    now.text = assessmentText(present);
    now.assessment = std::move(present);
    if (!wasChanged) saved_ = now.text;
}

bool AssessmentDocument::CanExchange(Direction direction) const {
    return direction == Direction::Undo ? at_ > 0 : at_ + 1 < states_.size();
}

Text::Id AssessmentDocument::Title(Direction direction) const {
    return states_[direction == Direction::Undo ? at_ : at_ + 1].title;
}

void AssessmentDocument::Exchange(Direction direction) {
    at_ = direction == Direction::Undo ? at_ - 1 : at_ + 1;
}

void AssessmentDocument::Save(const std::string& path) {
    std::deque<State> moved = states_;
    if (path != path_)
        for (State& state : moved) {
            moveDataFiles(state.assessment, path_, path);
            state.text = assessmentText(state.assessment);
        }
    saveAssessment(path, moved[at_].assessment);
    states_ = std::move(moved);
    path_ = path;
    onDisk_ = hashedStampOf(path);
    saved_ = states_[at_].text;
}

} // namespace kestrane
