// An open assessment: its path, and the states that it has been through, so that every change can be undone.
#pragma once

#include "assessment/Assessment.h"
#include "model/UndoStack.h"
#include "platform/FileLock.h"
#include "platform/FileStamp.h"

#include <deque>
#include <memory>
#include <string>

namespace kestrane {

class AssessmentDocument {
public:
    // path is where it was read from; it is empty when the assessment has never been saved.
    AssessmentDocument(Assessment first, std::string path);

    // Raises what loadAssessment raises.
    static AssessmentDocument ofFile(const std::string& path);

    // An assessment that was kept before it could be saved: it counts as changed. onDisk is of the file at path, as it
    // was when the changes were made.
    static AssessmentDocument ofCopy(Assessment kept, std::string path, FileStamp onDisk);

    std::shared_ptr<FileLock> Held; // tells other running programs that the file is open here
    bool ReadOnly = false;          // another one has it open, so that it is saved under other names only

    const std::string& Path() const { return path_; }

    const Assessment& Now() const { return states_[at_].assessment; }

    const FileStamp& OnDisk() const { return onDisk_; } // of the file as it was last read or saved

    void SetOnDisk(FileStamp onDisk) { onDisk_ = std::move(onDisk); }

    void MarkChanged() { saved_.clear(); } // it differs from its file, whatever was read or saved

    bool IsChanged() const; // since it was read or saved

    // Makes a change; title names what was done. What could be redone is forgotten. Does nothing when nothing differs.
    void Change(Text::Id title, Assessment next);

    // Replaces the present state by one with more information, which does not count as a change by the user.
    void Amend(Assessment present);

    bool CanExchange(Direction direction) const;
    Text::Id Title(Direction direction) const; // of the step that would be exchanged, which must exist
    void Exchange(Direction direction);        // this step

    // Saves it under its path or another one, to which the data files are then relative. Raises the system's error, and
    // then leaves everything as it was.
    void Save(const std::string& path);

private:
    struct State {
        Text::Id title; // of the change that led here
        Assessment assessment;
        std::string text; // of the assessment, as it would be saved
    };

    static constexpr std::size_t kStates = 101;

    std::string path_;
    FileStamp onDisk_;
    std::deque<State> states_;
    std::size_t at_ = 0;
    std::string saved_; // its text
};

} // namespace kestrane
