#include "explorer/Edits.h"

#include "calc/Recalculation.h"
#include "explorer/NodeKeys.h"
#include "model/LogIdentity.h"
#include "model/Speaking.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

class LogStep : public EditStep {
public:
    LogStep(clsLog& log, Text::Id title) :
        EditStep(title), log_(log), kept_(log.session()), isToRecalculate_(log.IntervalsRecalculating) {
        kept_.Copy(log, 0, 0);
    }

    const clsLog& Kept() const { return kept_; }

    void exchange() override {
        clsLog present(log_.session());
        present.Copy(log_, 0, 0);
        log_.Copy(kept_, 0, 0);
        kept_.Copy(present, 0, 0);
        if (std::exchange(isToRecalculate_, false)) RecalcValues(log_, log_.RecalcMode);
        log_.RaiseLogValuesChanged();
    }

    void describe(HistoryLine& line) const override { describeChange(kept_, log_, line); }

    const clsLog* ofLog() const override { return &log_; }

private:
    clsLog& log_;
    clsLog kept_;
    bool isToRecalculate_; // whether the kept figures were still to be recalculated
};

class NameStep : public EditStep {
public:
    NameStep(std::string& name, std::string kept, const clsLog* log) :
        EditStep(Text::StepRename), name_(name), kept_(std::move(kept)), log_(log) {}

    void exchange() override {
        name_.swap(kept_);
        if (log_ != nullptr) log_->RaiseLogValuesChanged(); // its charts bear its name
    }

    void describe(HistoryLine& line) const override {
        line.Before = kept_;
        line.After = name_;
    }

    const clsLog* ofLog() const override { return log_; }

private:
    std::string& name_;
    std::string kept_;
    const clsLog* const log_; // whose name it is; null for that of a collection
};

// Renames a file back. A document that has been saved under another name since then is left as it is.
class FileNameStep : public EditStep {
public:
    FileNameStep(clsFile& file, std::string before) :
        EditStep(Text::StepRename), file_(file), given_(file.FileName), kept_(std::move(before)) {}

    void exchange() override {
        if (file_.FileName != given_) return;
        file_.RenameFile(kept_);
        given_.swap(kept_);
    }

    bool isOfContent() const override { return false; }

    void describe(HistoryLine& line) const override {
        line.Before = kept_;
        line.After = given_;
    }

private:
    clsFile& file_;
    std::string given_, kept_;
};

clsFile* ownerOf(const Session& session, const clsLog& log) {
    clsFile* owner = nullptr;
    for (const auto& file : session.OpenFiles) {
        forEachLog(*file, [&](const clsLog& item) {
            if (&item == &log) owner = file.get();
        });
    }
    return owner;
}

// The next step; null when there is none, and when the step's other half no longer exists, which ends the history.
const EditStep* stepOf(const clsFile& file, Direction direction) {
    const EditStep* const step = file.Edits.next(direction);
    return step != nullptr && step->Joined != nullptr && step->Joined.use_count() < 2 ? nullptr : step;
}

// The other document of a step; null when it has none.
clsFile* otherOf(const EditStep& step, const clsFile& file) {
    if (step.Joined == nullptr) return nullptr;
    return step.Joined->Source == &file ? step.Joined->Target : step.Joined->Source;
}

// Adds the line of a step that has just been done, undone or done again. Only figures may still be on their way.
void addLine(clsFile& file, const EditStep& step, std::string what) {
    HistoryLine line = historyLine(file.session(), std::move(what));
    if (const clsLog* const log = step.ofLog(); log != nullptr) {
        line.Log = log->Name;
        line.Identity = identityOf(file, *log);
    }
    step.describe(line);
    file.History.add(std::move(line), dynamic_cast<const LogStep*>(&step));
}

void markAgain(clsFile& file, bool isOfContent) {
    if (isOfContent) file.Changed = !file.Edits.isAtSaved();
}

void markOther(const EditStep& step, Direction direction) {
    const auto* const arrangement = dynamic_cast<const ArrangementStep*>(&step);
    const std::shared_ptr<clsFile> other = arrangement == nullptr ? nullptr : arrangement->Marked.lock();
    if (other == nullptr) return;
    other->Edits.mark(direction == Direction::Redo);
    other->Changed = !other->Edits.isAtSaved();
}

} // namespace

void recordStep(clsFile& file, std::unique_ptr<EditStep> step, bool wasChanged) {
    addLine(file, *step, file.session().texts.LoadData(step->Title));
    file.Edits.record(std::move(step), wasChanged);
}

void recordDownload(clsFile& file, Text::Id what) {
    HistoryLine line = historyLine(file.session(), file.session().texts.LoadData(what));
    forEachLog(file, [&line](const clsLog& log) { line.After += (line.After.empty() ? "" : "; ") + log.Name; });
    file.History.add(std::move(line));
}

void recordRecalculation(clsFile& file, const clsLog& log, const KeptFigures& before) {
    HistoryLine line = historyLine(file.session(), file.session().texts.LoadData(Text::HistoryRecalculatedOnOpening));
    if (!before.describe(log, line)) return;
    line.Log = log.Name;
    line.Identity = identityOf(file, log);
    file.History.add(std::move(line));
}

bool editLog(clsLog& log, Text::Id title, const std::function<bool()>& change) {
    Session& session = log.session();
    clsFile* const file = ownerOf(session, log);
    if (file == nullptr) return change();
    if (log.IntervalsToLoad || file->Hashing != nullptr) {
        session.ShowMessage(session.LoadText(Text::StillLoading), kIconInformation);
        return false;
    }
    file->History.settle();
    const bool wasChanged = file->Changed;
    auto step = std::make_unique<LogStep>(log, title);
    if (!change()) return false;
    if (ownerOf(session, log) != file) return true; // the file was closed while the user was asked
    const bool isBesideText =
        log.LogIntervals.CutIntervals != step->Kept().LogIntervals.CutIntervals ||
        log.LogIntervals.IntervalsToBeIncluded != step->Kept().LogIntervals.IntervalsToBeIncluded ||
        log.CutReason != step->Kept().CutReason || log.UserCalibration != step->Kept().UserCalibration;
    recordStep(*file, std::move(step), wasChanged);
    if (isBesideText) file->Changed = true; // the document text without rows does not show this change
    session.frame->EnableMenusAndButtons();
    return true;
}

void editLogName(clsFile& file, clsLog& log, const std::string& newName) {
    recordStep(file, std::make_unique<NameStep>(log.Name, std::exchange(log.Name, newName), &log), file.Changed);
    log.RaiseLogValuesChanged();
}

void editCollectionName(clsFile& file, clsInsData& data, const std::string& newName) {
    recordStep(file, std::make_unique<NameStep>(data.NameX, std::exchange(data.NameX, newName), nullptr), file.Changed);
}

void editFileName(clsFile& file, const std::string& newName) {
    std::string before = file.FileName;
    file.RenameFile(newName);
    recordStep(file, std::make_unique<FileNameStep>(file, std::move(before)), file.Changed);
}

ArrangementStep::ArrangementStep(clsFile& file, Text::Id title) :
    EditStep(title), file_(file), kept_(arrangementOf(file)) {}

std::vector<ArrangementStep::Place> ArrangementStep::arrangementOf(const clsFile& file) {
    std::vector<Place> places;
    for (const auto& data : file.InstrumentDatas) {
        places.push_back({data.get(), {}});
        forEachLog(*data, [&logs = places.back().logs](clsLog& log) {
            logs[static_cast<std::size_t>(log.Mode())].push_back(&log);
        });
    }
    return places;
}

void ArrangementStep::keep(std::unique_ptr<clsLog> log) {
    const clsLog* const key = log.get();
    logs_[key] = std::move(log);
}

void ArrangementStep::keep(std::unique_ptr<clsInsData> data) {
    for (const LogMode mode : kLogModes) {
        for (auto& log : data->logsOf(mode))
            keep(std::move(log));
        data->logsOf(mode).clear();
    }
    const clsInsData* const key = data.get();
    datas_[key] = std::move(data);
}

std::set<const clsLog*> ArrangementStep::logsOf(const std::vector<Place>& places) {
    std::set<const clsLog*> all;
    for (const Place& place : places)
        for (const auto& logs : place.logs)
            all.insert(logs.begin(), logs.end());
    return all;
}

// A name that several logs have or had is told apart.
std::string ArrangementStep::namesOf(const std::vector<Place>& places, const std::set<const clsLog*>& without,
                                     const std::multiset<std::string>& all) {
    std::string names;
    for (const Place& place : places)
        for (const auto& logs : place.logs)
            for (const clsLog* const log : logs)
                if (!without.contains(log))
                    names +=
                        (names.empty() ? "" : "; ") +
                        (all.count(log->Name) == 1 ? log->Name : toldApart(log->Name, identityOf(*place.data, *log)));
    return names;
}

void ArrangementStep::describe(HistoryLine& line) const {
    const std::vector<Place> present = arrangementOf(file_);
    const std::set<const clsLog*> before = logsOf(kept_), after = logsOf(present);
    std::set<const clsLog*> both = before;
    both.insert(after.begin(), after.end());
    std::multiset<std::string> names;
    for (const clsLog* const log : both)
        names.insert(log->Name);
    line.Before = namesOf(kept_, after, names);
    line.After = namesOf(present, before, names);
    if (line.Before.empty() && !line.After.empty()) line.Before = Source;
}

bool ArrangementStep::isUnchanged() const {
    return kept_ == arrangementOf(file_);
}

void ArrangementStep::exchange() {
    std::vector<Place> present = arrangementOf(file_);
    for (auto& data : file_.InstrumentDatas)
        keep(std::move(data));
    file_.InstrumentDatas.clear();
    for (const Place& place : kept_) {
        std::unique_ptr<clsInsData> data = std::move(datas_.extract(place.data).mapped());
        for (const LogMode mode : kLogModes)
            for (clsLog* const log : place.logs[static_cast<std::size_t>(mode)])
                data->logsOf(mode).push_back(std::move(logs_.extract(log).mapped()));
        file_.InstrumentDatas.push_back(std::move(data));
    }
    kept_ = std::move(present);
}

clsFile* documentToEdit(const Session& session, std::string_view selectedKey, Direction direction) {
    constexpr std::array kBetweenNodes = {Text::StepPaste, Text::StepMove, Text::StepMerge};
    const auto justChanged = std::ranges::find_if(session.OpenFiles, [&](const auto& file) {
        const EditStep* const step = stepOf(*file, direction);
        return step != nullptr && step->Turn == session.EditTurns &&
               std::ranges::find(kBetweenNodes, step->Title) != kBetweenNodes.end();
    });
    if (justChanged != session.OpenFiles.end()) return justChanged->get();
    if (clsFile* const selected = resolve(session, selectedKey).file; selected != nullptr) return selected;
    const auto found = std::find_if(session.OpenFiles.rbegin(), session.OpenFiles.rend(),
                                    [&](const auto& file) { return stepOf(*file, direction) != nullptr; });
    return found == session.OpenFiles.rend() ? nullptr : found->get();
}

bool canExchange(const clsFile* file, Direction direction) {
    return file != nullptr && stepOf(*file, direction) != nullptr && !file->IsBusy();
}

bool exchangeStep(Session& session, clsFile* file, Direction direction) {
    if (!canExchange(file, direction)) return false;
    const EditStep& step = *stepOf(*file, direction);
    const bool isOfContent = step.isOfContent();
    clsFile* const other = otherOf(step, *file);
    if (other != nullptr) {
        const EditStep* const half = other->Edits.next(direction);
        if (half == nullptr || half->Joined != step.Joined || other->IsBusy()) {
            session.ShowMessage(
                ReplaceText(session.LoadText(Text::StepChangesOtherFile), "^", other->ShortenedFileName()),
                kIconInformation);
            return false;
        }
    }
    try {
        for (clsFile* const each : {file, other}) {
            if (each == nullptr) continue;
            const EditStep& exchanged = *each->Edits.next(direction);
            each->History.settle();
            each->Edits.exchange(direction);
            const Speaking english = inEnglish(each->session());
            addLine(*each, exchanged, PlainCaption(exchangeText(session, exchanged.Title, direction)));
            markAgain(*each, isOfContent);
            AssignIdentities(session, false, each->FileId);
        }
    } catch (const RuntimeError& error) {
        session.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
        return false;
    }
    markOther(step, direction);
    session.frame->RebuildExplorerTrees();
    session.frame->EnableMenusAndButtons();
    return true;
}

std::string exchangeText(const Session& session, Text::Id title, Direction direction) {
    const Text::Id words = direction == Direction::Undo ? Text::UndoStep : Text::RedoStep;
    return ReplaceText(session.LoadText(words), "^", session.LoadText(title));
}

std::string exchangeText(const Session& session, const clsFile* file, Direction direction) {
    const EditStep* const step = file == nullptr ? nullptr : stepOf(*file, direction);
    if (step != nullptr) return exchangeText(session, step->Title, direction);
    return session.LoadText(direction == Direction::Undo ? Text::Undo : Text::Redo);
}

} // namespace kestrane
