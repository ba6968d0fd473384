// What has been done to a document and can be undone, and what has been undone and can be done again, newest first. It
// also knows where the document was saved, so that one undone to that place counts as unchanged. Owned by the document;
// knows nothing of what a step does.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "resources/TextNames.h"

namespace kestrane {

class clsFile;

// One step of two documents: each has a half of it in its stack. It lives as long as both halves do: what the stack of
// one has lost can no longer be undone in the other.
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
    std::uint64_t Turn = 0; // when it was last done, undone or done again, counted over all documents

    // Exchanges what the document has with what is kept here: undoes, and the next time does again. Raises what stands
    // in the way, with both as they were.
    virtual void exchange() = 0;

    virtual bool isOfContent() const { return true; } // what is saved differs before and after
};

enum class Direction { Undo, Redo };

class UndoStack {
public:
    explicit UndoStack(std::uint64_t& turns) : turns_(turns) {} // counts the steps of all documents

    // Takes a step that has just been done; what could be done again is forgotten. wasChanged: the document counted as
    // changed before the step.
    void record(std::unique_ptr<EditStep> step, bool wasChanged);

    EditStep* next(Direction direction) const; // that would be exchanged; null: none
    void exchange(Direction direction);        // it; there must be one. Raises what the step raises

    void markSaved();

    // The document stands as it was loaded or last saved, and is not marked.
    bool isAtSaved() const { return saved_ == contentSteps() && !isMarked_; }

    // A step of another document counts as a change of this one, which it leaves as it is.
    void mark(bool isMarked) { isMarked_ = isMarked; }

    bool isMarked() const { return isMarked_; }

private:
    static constexpr std::size_t kSteps = 100;
    static constexpr std::ptrdiff_t kUnreachable = -1;

    std::ptrdiff_t contentSteps() const;
    void trim();

    std::uint64_t& turns_;
    std::vector<std::unique_ptr<EditStep>> done_, undone_; // the newest last
    std::ptrdiff_t dropped_ = 0;                           // content steps that fell off the far end
    bool isMarked_ = false;
    std::ptrdiff_t saved_ = 0; // content steps before the place of saving
};

} // namespace kestrane
