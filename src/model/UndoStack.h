// The steps of a document that can be undone, and those that were undone and can be done again. It also remembers at
// which step the document was saved, so that undoing back to that point makes it count as unchanged. Owned by the
// document; it does not know what a step does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "resources/TextNames.h"

namespace kestrane {

class clsFile;
class clsLog;
struct HistoryLine;

// One step that changes two documents: each has half of it in its stack. It lives as long as both halves do: when one
// stack has dropped its half, the other half can no longer be undone.
struct JoinedStep {
    clsFile* Source;
    clsFile* Target;
};

class EditStep {
public:
    explicit EditStep(Text::Id title) : Title(title) {}

    virtual ~EditStep() = default;

    const Text::Id Title; // number of the text that names what was done
    std::shared_ptr<const JoinedStep> Joined;
    std::uint64_t Turn = 0; // when it was last done, undone or done again, as counted over all documents

    // Exchanges what the document has with what is kept here: the first call undoes the step, the next does it again.
    // When something prevents that it raises an error and leaves both as they were.
    virtual void exchange() = 0;

    // Writes into a line of the document's history what the step changed: the state before, which is kept here, and
    // the present one.
    virtual void describe(HistoryLine&) const {}

    virtual const clsLog* ofLog() const { return nullptr; } // the log that it changes; null for another kind of step

    virtual bool isOfContent() const { return true; } // whether what is saved differs before and after the step
};

enum class Direction { Undo, Redo };

class UndoStack {
public:
    explicit UndoStack(std::uint64_t& turns) : turns_(turns) {} // counts the steps of all documents

    // Takes a step that has just been done and forgets the steps that could be done again. wasChanged says whether the
    // document counted as changed before the step.
    void record(std::unique_ptr<EditStep> step, bool wasChanged);

    EditStep* next(Direction direction) const; // the step that exchange would take; null when there is none
    void exchange(Direction direction);        // there must be a next step; raises what the step raises

    void markSaved();

    // Whether the document is as it was when it was loaded or last saved, and is not marked.
    bool isAtSaved() const { return saved_ == contentSteps() && !isMarked_; }

    // Marks this document as changed by a step of another document that leaves its own content as it is.
    void mark(bool isMarked) { isMarked_ = isMarked; }

    bool isMarked() const { return isMarked_; }

private:
    static constexpr std::size_t kSteps = 100;
    static constexpr std::ptrdiff_t kUnreachable = -1;

    std::ptrdiff_t contentSteps() const;
    void trim();

    std::uint64_t& turns_;
    std::vector<std::unique_ptr<EditStep>> done_, undone_; // the newest step is the last
    std::ptrdiff_t dropped_ = 0; // steps of content that were dropped because there were more than kSteps
    bool isMarked_ = false;
    std::ptrdiff_t saved_ = 0; // steps of content that were done when the document was saved
};

} // namespace kestrane
