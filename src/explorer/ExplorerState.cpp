#include "explorer/ExplorerState.h"

#include "explorer/NodeKeys.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::string_view kKinds = "FIXLYOZT";

struct GroupFlag {
    LogMode mode;
    bool clsInsData::*expanded;
};

constexpr GroupFlag kGroups[] = {{modeBroadband, &clsInsData::ExpandedL},
                                 {modeFullOctave, &clsInsData::ExpandedO},
                                 {modeThirdOctave, &clsInsData::ExpandedT}};

void clearFlags(Session& session) {
    for (const auto& file : session.OpenFiles) {
        file->Expanded = false;
        for (const auto& data : file->InstrumentDatas) {
            data->Expanded = false;
            for (const GroupFlag& group : kGroups)
                (*data).*group.expanded = false;
        }
    }
    forEachLog(session, [](clsLog& log) { log.IsOpen = false; });
}

// Keeps nodes expanded. A group of third-octave logs stays expanded only when an expanded node of its own file precedes
// it; that is meant.
void keepExpanded(Session& session, const std::vector<ShownNode>& shown) {
    const clsFile* fileBefore = nullptr;
    for (const ShownNode& node : shown) {
        if (!node.Expanded || node.Key.empty() || isLogKind(node.Key)) continue;
        const Node found = resolve(session, node.Key);
        const char kind = node.Key.front();
        if (kind != tTOCL) fileBefore = found.file;
        if (kind == tFILE && found.file != nullptr) found.file->Expanded = true;
        if (found.data == nullptr) continue;
        if (kind == tINST) found.data->Expanded = true;
        for (const GroupFlag& group : kGroups) {
            if (kind != groupKind(group.mode)) continue;
            if (kind != tTOCL || found.file == fileBefore) found.data->*group.expanded = true;
        }
    }
}

void expandNew(Session& session, const std::vector<ShownNode>& shown) {
    const auto isNew = [&](const std::string& key) {
        return std::none_of(shown.begin(), shown.end(), [&](const ShownNode& node) { return node.Key == key; });
    };
    for (const auto& file : session.OpenFiles) {
        if (isNew(fileKey(*file))) file->Expanded = true;
        for (const auto& data : file->InstrumentDatas) {
            if (isNew(dataKey(*data, *file))) data->Expanded = true;
            for (const GroupFlag& group : kGroups) {
                if (isNew(groupKey(group.mode, *data, *file))) (*data).*group.expanded = true;
            }
        }
    }
}

bool isInTree(const std::vector<TreeNode>& nodes, const std::string& key) {
    return std::any_of(nodes.begin(), nodes.end(),
                       [&](const TreeNode& node) { return node.Key == key || isInTree(node.Children, key); });
}

} // namespace

bool ExplorerState::IsLogSelected() const {
    return isLogKind(SelectedKey);
}

bool ExplorerState::IsLogDisplayed() const {
    return isLogKind(DisplayedKey);
}

bool ExplorerState::NodeClick(const std::string& key) {
    const bool isShown = !isLogKind(key) || key == DisplayedKey;
    if (key.empty() || (key == SelectedKey && isShown)) return false;
    if (kKinds.find(key.front()) != std::string_view::npos) SelectedKey = key;
    if (!isLogKind(key)) return false;
    DisplayedKey = key;
    return true;
}

std::vector<TreeNode> ExplorerState::RebuildTree(Session& session, const std::vector<ShownNode>& shown) {
    clearFlags(session);
    keepExpanded(session, shown);
    expandNew(session, shown);
    if (clsLog* log = resolve(session, DisplayedKey).log; log != nullptr) log->IsOpen = true;
    std::vector<TreeNode> nodes = buildTree(session);
    if (!isInTree(nodes, DisplayedKey)) DisplayedKey.clear();
    if (!isInTree(nodes, SelectedKey)) SelectedKey = DisplayedKey;
    return nodes;
}

bool ExplorerState::takeDisplayed(const Session& session) {
    const clsLog* log = resolve(session, DisplayedKey).log;
    if (log == nullptr) {
        const bool hadLog = !View.Key.empty();
        View.close();
        ZoomRange.end();
        return hadLog;
    }
    if (log->IsBusy() || View.Key == DisplayedKey) return false;
    View.open(DisplayedKey, *log, static_cast<PanelForm>(session.Options.CumulativePanel));
    ZoomRange.open(*log);
    return true;
}

void ExplorerState::ResetControls() {
    DisplayedKey.clear();
    View.close();
    ZoomRange.end();
}

clsLog* ExplorerState::OpenedLog(const Session& session) const {
    return resolve(session, View.Key).log;
}

clsLog* ExplorerState::LogInView(const Session& session) const {
    clsLog* const opened = OpenedLog(session);
    return opened != nullptr && ZoomRange.copy() != nullptr ? ZoomRange.copy() : opened;
}

bool ExplorerState::ApplyZoom(const Session& session) {
    clsLog* const opened = OpenedLog(session);
    const std::int64_t rowBefore = ZoomRange.firstRow() + View.IntervalRow;
    if (opened == nullptr || !ZoomRange.apply(*opened)) return false;
    const std::int64_t row = rowBefore - ZoomRange.firstRow();
    View.IntervalRow = row >= 1 && row <= LogInView(session)->LogIntervals.Count() ? row : 1;
    View.ResetTabs();
    return true;
}

std::string ExplorerState::BasisOfFigures(const Session& session) const {
    const clsLog* const opened = OpenedLog(session);
    if (opened == nullptr) return {};
    std::string basis = std::to_string(opened->Criterion) + '|' + std::to_string(opened->Exchange) + '|' +
                        opened->CalibDate.Format() + '|' + opened->FreqWeightA() + '|' +
                        std::to_string(opened->LogIntervals.IntervalsToBeIncluded) + '|' +
                        std::to_string(opened->UserCalibration.Offset);
    for (const std::string& range : opened->LogIntervals.CutIntervals)
        basis += '|' + range;
    return basis;
}

bool ExplorerState::endZoom(const Session& session) {
    const clsLog* const opened = OpenedLog(session);
    if (opened == nullptr || ZoomRange.copy() == nullptr) return false;
    ZoomRange.open(*opened);
    View.IntervalRow = 1;
    View.ResetTabs();
    return true;
}

LogContent ExplorerState::Content(const Session& session) const {
    if (LogInView(session) != nullptr) return LogContent::Values;
    return resolve(session, DisplayedKey).log != nullptr ? LogContent::Loading : LogContent::Empty;
}

std::string ExplorerState::Caption(const Session& session) const {
    const clsFile* file = IsLogDisplayed() ? resolve(session, DisplayedKey).file : nullptr;
    if (file == nullptr) return session.LoadText(Text::ExplorerTitle);
    return ReplaceText(session.LoadText(Text::ExploringTitle), "^", file->ShortenedFileName() + markOf(*file));
}

} // namespace kestrane
