// Copies of documents with unsaved changes, so that a fault, a kill or a power cut costs no more than the last seconds
// of work. They are written on a worker thread, never into the document's own file, and removed as soon as the document
// is saved or its user has closed it. What a program left behind is offered by the next one.
#pragma once

#include "app/KeptCopies.h"
#include "assessment/AssessmentDocument.h"
#include "model/Session.h"

#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class BackgroundWork;

enum class CopyChoice { Open, KeepForLater, Discard };

// What the dialog shows of a copy.
struct CopyRow {
    std::string Name, Time, Difference;
    std::string File; // its own file; empty when it was never saved
};

class Recovery {
public:
    // Seconds between two looks for what has changed. A copy is on the disk within 30 seconds of a change: there is the
    // time until the next look, and that of writing the copies of a large document.
    static constexpr int kSecondsBetweenLooks = 10;

    // assessments gives the assessments that are open.
    Recovery(Session& session, std::function<std::vector<const AssessmentDocument*>()> assessments);
    ~Recovery(); // waits for a copy that is being written; the copies stay

    // Begins to write a copy of every document with unsaved changes that the last copy does not have. Does nothing
    // while the copies before are still being written. A document whose rows are not all there is left out, since its
    // copy would not be whole.
    void Look();

    // The same, at once and on this thread: the program is about to end by a fault.
    void WriteNow();

    // Removes the copies of documents that are saved or closed.
    void Tidy();

    // Everything was saved or given up by the user. Removes all copies of this program, and makes no more.
    void End();

    bool IsWriting() const { return work_ != nullptr; }

    // What programs that did not end as they should have left behind, and how a user is told of it.
    std::vector<LeftCopy> Left() { return copies_ ? copies_->Left() : std::vector<LeftCopy>(); }

    CopyRow RowOf(const LeftCopy& copy) const;

    // Does with each copy what was chosen for it. A document that is opened counts as changed and knows its own file.
    // One that cannot be opened stays where it is, after a message. show opens the window of an assessment and gives
    // the document in it.
    using ShowAssessment = std::function<const AssessmentDocument&(AssessmentDocument)>;
    void Settle(const std::vector<LeftCopy>& left, const std::vector<CopyChoice>& choices, const ShowAssessment& show);

private:
    // What a copy was made of. Two documents with the same state have the same content.
    struct State {
        DocumentMark mark;      // of a data file
        std::uint64_t turn = 0; // of its last step
        std::string text;       // of an assessment
        std::string name;

        bool operator==(const State&) const = default;
    };

    struct Entry {
        int number = 0;
        std::optional<State> written; // nothing: the copy was made by an earlier program
    };

    struct Task;

    static State stateOf(const clsFile& file);
    static State stateOf(const AssessmentDocument& document);
    std::vector<Task> tasks();
    Entry& entryOf(const void* document);
    void ended(const std::vector<Task>& tasks);
    CopyNote noteOf(const clsFile& file) const;
    CopyNote noteOf(const AssessmentDocument& document) const;
    CopyNote note(std::string name, std::string file, std::optional<Text::Id> lastStep) const;
    bool openFile(const LeftCopy& copy);
    bool openAssessment(const LeftCopy& copy, const ShowAssessment& show);
    void adopt(const LeftCopy& copy, const void* document);

    Session& session_;
    const std::function<std::vector<const AssessmentDocument*>()> assessments_;
    std::unique_ptr<KeptCopies> copies_;   // null: there is no folder for them, or the program is ending
    std::map<const void*, Entry> entries_; // by document
    int last_ = 0;                         // number given
    std::shared_ptr<BackgroundWork> work_; // while copies are being written
    std::future<void> written_;
    bool looksAgain_ = false;
    bool hasToldFailure_ = false;
};

} // namespace kestrane
