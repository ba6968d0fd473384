#include "app/Recovery.h"

#include "app/Assessments.h"
#include "app/Documents.h"
#include "app/OtherPrograms.h"
#include "assessment/AssessmentFile.h"
#include "explorer/NodeKeys.h"
#include "files/HistoryFile.h"
#include "files/Loaders.h"
#include "files/XmlWriter.h"
#include "platform/Format.h"
#include "platform/RuntimeError.h"
#include "platform/Sha256.h"
#include "server/KestraneThread.h"

#include <algorithm>
#include <vector>

namespace kestrane {

// One copy to be written.
struct Recovery::Task {
    const void* document;
    State state;
    std::string path;
    CopyNote note;
    std::shared_ptr<const clsFile> snapshot; // shares the columns of the rows; null for an assessment
    std::vector<HistoryLine> history;        // what is not kept beside the document's own file
    std::string error;                       // set by the worker

    void write() {
        try {
            Sha256 hash;
            KeptCopies::Write(path, note, [&](const FileSink& sink) {
                if (snapshot == nullptr) return sink(state.text);
                WriteDocument(*snapshot, [&](std::string_view piece) {
                    hash.add(piece);
                    sink(piece);
                });
            });
            if (snapshot != nullptr) WriteHistoryOfCopy(path, *snapshot, history, hash.text());
        } catch (const std::exception& raised) {
            error = raised.what();
        }
        snapshot.reset(); // before anybody waits no longer for this
    }
};

namespace {

bool hasUnsavedRows(const clsLog& log) {
    return log.AreDoseRowsEdited && !log.SaveDoseCalc && !log.DoseLogIntervals.empty();
}

// A cheap look that, unlike IsChanged, leaves the document as it is.
bool isUnsaved(const clsFile& file) {
    bool isUnsaved = file.IsUnsaved() || MarkOf(file) != file.SavedMark;
    forEachLog(file, [&](const clsLog& log) { isUnsaved = isUnsaved || hasUnsavedRows(log); });
    return isUnsaved;
}

std::shared_ptr<const clsFile> snapshotOf(const clsFile& file) {
    auto copy = std::make_shared<clsFile>(file.session(), file.FileName);
    for (const auto& data : file.InstrumentDatas)
        copy->append(*data, true, kAtEnd);
    forEachLog(*copy, [](clsLog& log) { log.SaveDoseCalc = log.SaveDoseCalc || hasUnsavedRows(log); });
    return copy;
}

std::uint64_t lastTurn(const UndoStack& edits) {
    std::uint64_t turn = 0;
    for (const Direction direction : {Direction::Undo, Direction::Redo})
        if (const EditStep* const step = edits.next(direction); step != nullptr) turn = std::max(turn, step->Turn);
    return turn;
}

std::vector<HistoryLine> unkeptLines(const DocumentHistory& history) {
    std::vector<HistoryLine> lines = history.lines();
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(history.Kept, lines.size())));
    return lines;
}

// The history of a document that was opened from a copy: that of its own file, and what the copy adds to it. Lines that
// say what a file is are about the copy.
DocumentHistory historyOfCopy(const Session& session, const std::string& own, const DocumentHistory& ofCopy) {
    DocumentHistory history = own.empty() ? DocumentHistory() : ReadHistory(session, own);
    for (HistoryLine& line : ofCopy.lines())
        if (!line.OfFile) history.add(std::move(line));
    return history;
}

} // namespace

Recovery::Recovery(Session& session, std::function<std::vector<const AssessmentDocument*>()> assessments) :
    session_(session),
    assessments_(std::move(assessments)),
    copies_(session.StateFolder.empty() ? nullptr : std::make_unique<KeptCopies>(session.StateFolder + "recovery/")) {}

Recovery::~Recovery() {
    if (written_.valid()) written_.wait();
}

Recovery::State Recovery::stateOf(const clsFile& file) {
    return {MarkOf(file), lastTurn(file.Edits), {}, file.FileName};
}

Recovery::State Recovery::stateOf(const AssessmentDocument& document) {
    return {{}, 0, assessmentText(document.Now()), document.Path()};
}

Recovery::Entry& Recovery::entryOf(const void* document) {
    Entry& entry = entries_[document];
    if (entry.number == 0) entry.number = ++last_;
    return entry;
}

CopyNote Recovery::note(std::string name, std::string file, std::optional<Text::Id> lastStep) const {
    CopyNote note;
    note.Difference = session_.LoadText(file.empty() ? Text::DifferenceNeverSaved : Text::DifferenceChanged);
    if (!file.empty() && lastStep)
        note.Difference = ReplaceText(session_.LoadText(Text::DifferenceLast), "^", session_.LoadText(*lastStep));
    note.Name = std::move(name);
    note.File = std::move(file);
    note.Time = formatDate(session_.clock.now(), "yyyy-mm-dd hh:nn:ss");
    note.Version = KESTRANE_VERSION_TEXT;
    return note;
}

CopyNote Recovery::noteOf(const clsFile& file) const {
    const EditStep* const step = file.Edits.next(Direction::Undo);
    CopyNote kept = note(file.ShortenedFileName(), file.JustAcquired() ? std::string() : file.FileName,
                         step == nullptr ? std::nullopt : std::optional(step->Title));
    kept.OnDisk = file.OnDisk;
    kept.IsOldStyle = file.IsOldStyle();
    return kept;
}

CopyNote Recovery::noteOf(const AssessmentDocument& document) const {
    const bool hasStep = document.CanExchange(Direction::Undo);
    CopyNote kept = note(assessmentName(session_, document), document.Path(),
                         hasStep ? std::optional(document.Title(Direction::Undo)) : std::nullopt);
    kept.OnDisk = document.OnDisk();
    return kept;
}

std::vector<Recovery::Task> Recovery::tasks() {
    std::vector<Task> tasks;
    const auto add = [&](const auto& document, std::string_view extension) -> Task* {
        State state = stateOf(document);
        const Entry& entry = entryOf(&document);
        if (entry.written == state) return nullptr;
        std::string path = copies_->PathFor(entry.number, extension);
        tasks.push_back({&document, std::move(state), std::move(path), noteOf(document), nullptr, {}, {}});
        return &tasks.back();
    };
    for (const auto& file : session_.OpenFiles) {
        if (file->IsBusy() || !AreRowsRead(*file) || !isUnsaved(*file)) continue;
        Task* const task = add(*file, kDataFileCopy);
        if (task == nullptr) continue;
        task->snapshot = snapshotOf(*file);
        task->history = unkeptLines(file->History);
    }
    for (const AssessmentDocument* document : assessments_())
        if (document->IsChanged()) add(*document, kAssessmentCopy);
    return tasks;
}

void Recovery::Look() {
    if (!copies_) return;
    if (IsWriting()) {
        looksAgain_ = true;
        return;
    }
    Tidy();
    const auto due = std::make_shared<std::vector<Task>>();
    try {
        *due = tasks();
    } catch (const RuntimeError& error) { // there is no folder
        *due = {Task{nullptr, {}, {}, {}, nullptr, {}, error.what()}};
        return ended(*due);
    }
    if (due->empty()) return;
    const auto done = std::make_shared<std::promise<void>>();
    written_ = done->get_future();
    const auto write = [due, done] {
        for (Task& task : *due)
            task.write();
        done->set_value();
    };
    if (session_.server == nullptr) {
        write();
        return ended(*due);
    }
    work_ = session_.server->Run(write, [this, due] { ended(*due); });
}

void Recovery::WriteNow() {
    if (!copies_) return;
    if (written_.valid()) written_.wait();
    for (Task& task : tasks())
        task.write();
}

void Recovery::ended(const std::vector<Task>& tasks) {
    work_.reset();
    if (!copies_) return;
    bool hasFailed = false;
    for (const Task& task : tasks) {
        if (!task.error.empty()) {
            hasFailed = true;
            if (std::exchange(hasToldFailure_, true)) continue;
            const std::string text = ReplaceText(session_.LoadText(Text::RecoveryFailed), "^", task.error);
            session_.frame->SetPanel(Frame::Panel::Error, text);
        } else if (const auto entry = entries_.find(task.document); entry != entries_.end()) {
            entry->second.written = task.state;
        } else { // it was saved or closed meanwhile
            std::error_code ignored;
            KeptCopies::Discard({task.note, task.path});
        }
    }
    if (!hasFailed) hasToldFailure_ = false;
    if (std::exchange(looksAgain_, false)) Look();
}

void Recovery::Tidy() {
    if (!copies_) return;
    const std::vector<const AssessmentDocument*> assessments = assessments_();
    const auto isNeeded = [&](const void* document) {
        for (const auto& file : session_.OpenFiles)
            if (file.get() == document) return file->IsBusy() || isUnsaved(*file);
        return std::ranges::any_of(assessments, [&](const AssessmentDocument* assessment) {
            return assessment == document && assessment->IsChanged();
        });
    };
    std::erase_if(entries_, [&](const auto& entry) {
        if (isNeeded(entry.first)) return false;
        copies_->Remove(entry.second.number);
        return true;
    });
}

void Recovery::End() {
    if (!copies_) return;
    if (written_.valid()) written_.wait();
    copies_->RemoveAll();
    copies_.reset();
}

CopyRow Recovery::RowOf(const LeftCopy& copy) const {
    CopyRow row{copy.Note.Name, copy.Note.Time, copy.Note.Difference, copy.Note.File};
    if (hasOtherContent(copy.Note.File, copy.Note.OnDisk, true))
        row.Difference += session_.LoadText(Text::DifferenceOfOthers);
    return row;
}

void Recovery::Settle(const std::vector<LeftCopy>& left, const std::vector<CopyChoice>& choices,
                      const ShowAssessment& show) {
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (choices[i] == CopyChoice::Discard) {
            KeptCopies::Discard(left[i]);
        } else if (choices[i] == CopyChoice::KeepForLater) {
            KeptCopies::KeepForLater(left[i]);
        } else if (!(left[i].IsAssessment() ? openAssessment(left[i], show) : openFile(left[i]))) {
            session_.frame->SetPanel(Frame::Panel::Error,
                                     ReplaceText(session_.LoadText(Text::RecoveryDamaged), "^", left[i].Note.Name));
        }
    }
    if (copies_) copies_->Release();
}

void Recovery::adopt(const LeftCopy& copy, const void* document) {
    try {
        copies_->Adopt(copy, entryOf(document).number);
    } catch (const RuntimeError&) {
        entries_.erase(document); // it stays where it was until the next start
    }
}

bool Recovery::openFile(const LeftCopy& copy) {
    const std::string& own = copy.Note.File;
    clsFile* const open = own.empty() ? nullptr : openFileOfName(session_, own);
    if (open != nullptr && isUnsaved(*open)) return false;
    auto file = std::make_unique<clsFile>(session_, copy.Path);
    if (!FileOpen(*file)) return false;
    WaitForHash(*file);
    if (open != nullptr) std::erase_if(session_.OpenFiles, [&](const auto& other) { return other.get() == open; });
    file->FileName = own.empty() ? copy.Note.Name : own;
    file->History = historyOfCopy(session_, own, file->History);
    file->Changed = true;
    file->OldStyle = copy.Note.IsOldStyle;
    file->OnDisk = copy.Note.OnDisk;
    file->ReadOnly = !HoldFile(session_, *file);
    const clsFile& opened = TakeUp(session_, std::move(file));
    adopt(copy, &opened);
    ShowOpened(session_, {opened.FileName});
    return true;
}

bool Recovery::openAssessment(const LeftCopy& copy, const ShowAssessment& show) {
    try {
        AssessmentDocument document =
            AssessmentDocument::ofCopy(loadAssessment(copy.Path), copy.Note.File, copy.Note.OnDisk);
        if (!document.Path().empty()) document.ReadOnly = !HoldFile(session_, document.Path(), document.Held);
        adopt(copy, &show(std::move(document)));
        return true;
    } catch (const RuntimeError& error) {
        session_.ShowMessage(
            ReplaceText(session_.LoadText(Text::UnableToOpen), "^", copy.Path) + "\r\n\r\n" + error.what(), kIconStop);
        return false;
    }
}

} // namespace kestrane
