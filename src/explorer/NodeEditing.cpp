#include "explorer/NodeEditing.h"

#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "model/LogIdentity.h"
#include "platform/RuntimeError.h"
#include "views/LogHistory.h"

#include <algorithm>
#include <optional>
#include <tuple>

namespace kestrane {

namespace {

struct PlacedLog {
    clsInsData* data;
    clsLog* log;
};

// The mode of the group that a key stands for; nothing for another kind of key.
std::optional<LogMode> groupMode(std::string_view key) {
    for (const LogMode mode : kLogModes)
        if (key.starts_with(groupKind(mode))) return mode;
    return std::nullopt;
}

// Whether the tree has a node for the key. It has none for a group without logs.
bool isThere(const Node& node, std::string_view key) {
    if (isLogKind(key)) return node.log != nullptr;
    if (key.starts_with(tFILE)) return node.file != nullptr;
    const std::optional<LogMode> mode = groupMode(key);
    return node.data != nullptr && (!mode || !node.data->logsOf(*mode).empty());
}

void addLogs(std::vector<PlacedLog>& logs, clsInsData& data, std::optional<LogMode> ofMode) {
    forEachLog(data, [&](clsLog& log) {
        if (!ofMode || *ofMode == log.Mode()) logs.push_back({&data, &log});
    });
}

// The logs below a node, or the log itself, in the order of the tree.
std::vector<PlacedLog> logsOf(const Node& node, std::string_view key) {
    std::vector<PlacedLog> logs;
    if (node.log != nullptr) {
        logs.push_back({node.data, node.log});
    } else if (node.data != nullptr) {
        addLogs(logs, *node.data, groupMode(key));
    } else {
        for (const auto& data : node.file->InstrumentDatas)
            addLogs(logs, *data, std::nullopt);
    }
    return logs;
}

bool isAnyBusy(const std::vector<PlacedLog>& logs) {
    return std::any_of(logs.begin(), logs.end(), [](const PlacedLog& placed) { return placed.log->IsBusy(); });
}

std::unique_ptr<clsLog> takeOut(const PlacedLog& placed) {
    LogCollection& logs = placed.data->logsOf(placed.log->Mode());
    const auto at = std::find_if(logs.begin(), logs.end(), [&](const auto& log) { return log.get() == placed.log; });
    std::unique_ptr<clsLog> log = std::move(*at);
    logs.erase(at);
    return log;
}

std::unique_ptr<clsInsData> takeOut(clsFile& file, const clsInsData& wanted) {
    auto& datas = file.InstrumentDatas;
    const auto at = std::find_if(datas.begin(), datas.end(), [&](const auto& data) { return data.get() == &wanted; });
    std::unique_ptr<clsInsData> data = std::move(*at);
    datas.erase(at);
    return data;
}

bool hasIdentity(const LogCollection& logs, std::int32_t identity) {
    return std::any_of(logs.begin(), logs.end(), [identity](const auto& log) { return log->LogId == identity; });
}

// A document by its name, with the hash of its file where that is known.
std::string sourceText(const clsFile& file) {
    const HistoryLine* const last = file.History.lastOfFile();
    const std::string& hash = file.OnDisk.Hash.empty() && last != nullptr ? last->After : file.OnDisk.Hash;
    return file.ShortenedFileName() + (hash.empty() ? "" : " (SHA-256 " + hash + ")");
}

// Adds a line that is not there yet. A line may be of several logs, and logs may be pasted more than once.
void addOnce(std::vector<HistoryLine>& lines, HistoryLine line) {
    const auto textsOf = [](const HistoryLine& of) {
        return std::tie(of.Time, of.What, of.Log, of.Identity, of.Before, of.After, of.Reason);
    };
    if (std::ranges::none_of(lines, [&](const HistoryLine& other) { return textsOf(other) == textsOf(line); }))
        lines.push_back(std::move(line));
}

// The lines of the document's history that are of these logs, the oldest first.
std::vector<HistoryLine> linesOf(const clsFile& file, const std::vector<PlacedLog>& logs) {
    std::vector<HistoryLine> lines;
    for (const PlacedLog& placed : logs) {
        for (LogChange& change : changesOf(file, *placed.data, *placed.log)) {
            if (change.Line.Log.empty()) continue;
            if (change.IsCertain) change.Line.Identity = identityOf(*placed.data, *placed.log);
            addOnce(lines, std::move(change.Line));
        }
    }
    std::ranges::stable_sort(lines, {}, &HistoryLine::Time);
    return lines;
}

// One paste, from checking it to recording its steps.
class Paste {
public:
    Paste(Session& session, const std::string& sourceKey, const std::string& targetKey, bool move) :
        session_(session),
        sourceKey_(sourceKey),
        targetKey_(targetKey),
        isMove_(move),
        source_(resolve(session, sourceKey)),
        target_(resolve(session, targetKey)) {}

    bool run();

private:
    bool isSameFile() const { return source_.file == target_.file; }

    void place();
    void placeFile();
    void placeLogs(clsInsData& to, const std::vector<PlacedLog>& logs);
    clsInsData* matchFor(const clsInsData& from);
    clsInsData& collectionFor(clsInsData& from);
    void record();

    Session& session_;
    const std::string& sourceKey_;
    const std::string& targetKey_;
    bool isMove_;
    std::vector<std::string> told_;
    std::vector<HistoryLine> lines_; // of what came from another document, which go with it
    Node source_, target_;
    std::unique_ptr<ArrangementStep> step_,
        sourceStep_; // the step of the target's file, and that of the source's when it is another file
};

bool Paste::run() {
    if (!isThere(source_, sourceKey_) || !isThere(target_, targetKey_)) return false;
    if (!SittingOnValidNode(sourceKey_, targetKey_, {})) return false;
    const bool isHashing = source_.file->Hashing != nullptr || target_.file->Hashing != nullptr;
    if (isHashing || isAnyBusy(logsOf(source_, sourceKey_))) {
        session_.ShowMessage(session_.LoadText(Text::StillLoading), kIconInformation);
        return false;
    }
    const Text::Id title = isMove_ ? Text::StepMove : sourceKey_.starts_with(tFILE) ? Text::StepMerge : Text::StepPaste;
    step_ = std::make_unique<ArrangementStep>(*target_.file, title);
    if (!isSameFile()) {
        sourceStep_ = std::make_unique<ArrangementStep>(*source_.file, title);
        step_->Source = sourceText(*source_.file);
        lines_ = linesOf(*source_.file, logsOf(source_, sourceKey_));
    }
    place();
    if (step_->isUnchanged() && (sourceStep_ == nullptr || sourceStep_->isUnchanged())) return false;
    try {
        AssignIdentities(session_, false, target_.file->FileId);
    } catch (const RuntimeError& error) { // there is no free identity
        step_->exchange();
        if (sourceStep_ != nullptr) sourceStep_->exchange();
        session_.ShowMessage(std::to_string(error.Number) + ": " + error.what(), kIconExclamation);
        return false;
    }
    record();
    for (const std::string& text : told_)
        session_.frame->Tell(text);
    return true;
}

void Paste::place() {
    if (sourceKey_.starts_with(tFILE)) return placeFile();
    const bool isWhole = sourceKey_.starts_with(tINST);
    const bool isInto = target_.data != nullptr && (!isWhole || isSameFile());
    clsInsData& to = isInto ? *target_.data : collectionFor(*source_.data);
    placeLogs(to, logsOf(source_, sourceKey_));
    if (!isMove_ || !isWhole || &to == source_.data) return;
    ArrangementStep& losing = isSameFile() ? *step_ : *sourceStep_;
    losing.keep(takeOut(*source_.file, *source_.data));
}

void Paste::placeFile() {
    for (const auto& data : source_.file->InstrumentDatas) {
        if (clsInsData* const to = matchFor(*data); to != nullptr) {
            std::vector<PlacedLog> logs;
            addLogs(logs, *data, std::nullopt);
            placeLogs(*to, logs);
        } else {
            target_.file->append(*data, isMove_, kAtEnd);
        }
    }
    if (!isMove_) return;
    for (auto& data : source_.file->InstrumentDatas)
        sourceStep_->keep(std::move(data));
    source_.file->InstrumentDatas.clear();
}

// The target file's collection with the same serial number; null when there is none.
clsInsData* Paste::matchFor(const clsInsData& from) {
    clsInsData* const match = target_.file->dataOfSerial(from.InsSerial);
    if (match == nullptr) return nullptr;
    if (std::string text = foldedText(from, *match); !text.empty()) told_.push_back(std::move(text));
    return match;
}

clsInsData& Paste::collectionFor(clsInsData& from) {
    clsInsData* const match = matchFor(from);
    if (match != nullptr) return *match;
    if (isMove_ && isSameFile()) return from;
    auto data = std::make_unique<clsInsData>(session_);
    data->Copy(from, false);
    data->InsDataId = 0;
    target_.file->InstrumentDatas.push_back(std::move(data));
    return *target_.file->InstrumentDatas.back();
}

// When a log is moved within a file, it stays the same object. When it is moved to another file, a copy goes there and
// the object itself is kept in the step of the file that it left.
void Paste::placeLogs(clsInsData& to, const std::vector<PlacedLog>& logs) {
    int after = isLogKind(targetKey_) ? target_.log->LogId : kAtEnd;
    for (const PlacedLog& placed : logs) {
        if (!isMove_) {
            to.append(*placed.log, after);
            continue;
        }
        if (placed.data == &to && (after == kAtEnd || logs.size() > 1)) return; // it is there already
        std::unique_ptr<clsLog> log = takeOut(placed);
        if (!isSameFile()) {
            auto copy = std::make_unique<clsLog>(session_);
            copy->Copy(*log, 0, 0);
            sourceStep_->keep(std::exchange(log, std::move(copy)));
        }
        if (hasIdentity(to.logsOf(log->Mode()), log->LogId)) log->LogId = 0; // it gets another one
        const int identity = log->LogId;
        to.append(std::move(log), after);
        if (after != kAtEnd && identity != 0) after = identity;
    }
}

void Paste::record() {
    clsFile& target = *target_.file;
    clsFile& source = *source_.file;
    const bool wasTargetChanged = target.Changed;
    const bool wasSourceChanged = source.Changed;
    if (sourceStep_ != nullptr && isMove_) {
        step_->Joined = sourceStep_->Joined = std::make_shared<JoinedStep>(JoinedStep{&source, &target});
        recordStep(source, std::move(sourceStep_), wasSourceChanged);
    } else if (!isSameFile() && (!wasSourceChanged || source.Edits.isMarked())) {
        step_->Marked = source.Life;
        source.Edits.mark(true);
    }
    std::vector<HistoryLine> lines = target.History.lines();
    const auto known = static_cast<std::ptrdiff_t>(lines.size());
    for (HistoryLine& line : lines_)
        addOnce(lines, std::move(line));
    std::for_each(lines.begin() + known, lines.end(), [&](HistoryLine& line) { target.History.add(std::move(line)); });
    recordStep(target, std::move(step_), wasTargetChanged);
    source.Changed = target.Changed = true;
}

// The path from a root of the tree to a node; empty when the node is not in the tree.
std::vector<const TreeNode*> pathTo(const std::vector<TreeNode>& nodes, std::string_view key) {
    for (const TreeNode& node : nodes) {
        if (node.Key == key) return {&node};
        std::vector<const TreeNode*> path = pathTo(node.Children, key);
        if (path.empty()) continue;
        path.insert(path.begin(), &node);
        return path;
    }
    return {};
}

struct Deletion {
    char kind;
    Text::Id question;
    Text::Id title;
};

constexpr Deletion kDeletions[] = {{tINST, Text::AskRemoveDataset, Text::StepDeleteDataset},
                                   {tLOCL, Text::AskRemoveBroadbandLogs, Text::StepDeleteLogs},
                                   {tLOCN, Text::AskRemoveBroadbandLog, Text::StepDeleteLog},
                                   {tOCTL, Text::AskRemoveOctaveLogs, Text::StepDeleteLogs},
                                   {tTOCL, Text::AskRemoveOctaveLogs, Text::StepDeleteLogs},
                                   {tOCTN, Text::AskRemoveOctaveLog, Text::StepDeleteLog},
                                   {tTOCN, Text::AskRemoveOctaveLog, Text::StepDeleteLog}};

} // namespace

std::string foldedText(const clsInsData& from, const clsInsData& into) {
    const std::string& name = collectionName(from);
    const std::string& other = collectionName(into);
    if (name == other || !from.hasLogs()) return {};
    return ReplaceText(ReplaceText(into.session().LoadText(Text::LogsWentInto), "*", other), "^", name);
}

bool PasteNode(Session& session, const std::string& sourceKey, const std::string& targetKey, bool move) {
    return Paste(session, sourceKey, targetKey, move).run();
}

std::string nextSelection(const std::vector<TreeNode>& tree, std::string_view key) {
    const std::vector<const TreeNode*> path = pathTo(tree, key);
    if (path.empty()) return {};
    const TreeNode* const parent = path.size() > 1 ? path[path.size() - 2] : nullptr;
    const std::vector<TreeNode>& siblings = parent != nullptr ? parent->Children : tree;
    if (siblings.front().Key != key) return siblings.front().Key;
    if (parent == nullptr) return {};
    return siblings.size() == 1 && path.size() > 2 ? path[path.size() - 3]->Key : parent->Key;
}

void CutLog(const Session& session, ExplorerState& state, std::string_view key, const std::string& next) {
    if (!isThere(resolve(session, state.DisplayedKey), state.DisplayedKey)) state.ResetControls();
    if (state.SelectedKey == key && !isThere(resolve(session, key), key)) state.SelectedKey = next;
}

bool DeleteNode(Session& session, ExplorerState& state) {
    const std::string key = state.SelectedKey;
    const auto* const deletion = std::find_if(std::begin(kDeletions), std::end(kDeletions),
                                              [&](const Deletion& row) { return key.starts_with(row.kind); });
    if (deletion == std::end(kDeletions) || !isThere(resolve(session, key), key)) return false;
    const auto answer = session.ShowMessage(session.LoadText(deletion->question), kButtonsOkCancel | kIconQuestion);
    const Node node = resolve(session, key); // resolved again, because the pump ran while the user was asked
    if (answer != Button::Ok || !isThere(node, key)) return false;
    const std::vector<PlacedLog> logs = logsOf(node, key);
    if (isAnyBusy(logs)) {
        session.ShowMessage(session.LoadText(Text::StillLoading), kIconInformation);
        return false;
    }
    const std::string next = nextSelection(buildTree(session), key);
    auto step = std::make_unique<ArrangementStep>(*node.file, deletion->title);
    if (deletion->kind == tINST) {
        step->keep(takeOut(*node.file, *node.data));
    } else {
        for (const PlacedLog& placed : logs)
            step->keep(takeOut(placed));
    }
    recordStep(*node.file, std::move(step), node.file->Changed);
    node.file->Changed = true;
    CutLog(session, state, key, next);
    return true;
}

void forgetVanished(const Session& session, CopiedNode& copied) {
    if (!isThere(resolve(session, copied.Key), copied.Key)) copied = {};
}

} // namespace kestrane
