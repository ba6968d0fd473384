#include "desktop/NodeEdits.h"

#include "desktop/frmExplorer.h"
#include "dialogs/Words.h"
#include "explorer/NodeRename.h"
#include "platform/desktop/QtClipboard.h"

namespace kestrane {

NodeEdits::NodeEdits(Session& session, OpenFiles openFiles) : session_(session), openFiles_(std::move(openFiles)) {}

// The name also goes to the clipboard, which removes files that were copied before.
void NodeEdits::Copy(frmExplorer& explorer, bool move) {
    copied_ = {explorer.State().SelectedKey, move};
    QtClipboard().Set({editableText(session_, copied_.Key), {}, {}, {}});
    session_.frame->EnableMenusAndButtons();
}

void NodeEdits::Paste(frmExplorer& explorer) {
    const std::vector<std::string> files = QtClipboard().GetClipboardFiles();
    if (files.empty()) {
        const CopiedNode copied = copied_;
        Drop(explorer, copied.Key, explorer.State().SelectedKey, copied.Move);
        return;
    }
    QStringList paths;
    for (const std::string& file : files)
        paths.push_back(shown(file));
    openFiles_(paths);
}

void NodeEdits::Drop(frmExplorer& explorer, const std::string& source, const std::string& target, bool move) {
    const std::string next = nextSelection(buildTree(session_), source);
    if (!PasteNode(session_, source, target, move)) return;
    if (move) CutLog(session_, explorer.State(), source, next);
    if (move && copied_.Key == source) copied_ = {};
    refresh();
}

void NodeEdits::Delete(frmExplorer& explorer) {
    if (DeleteNode(session_, explorer.State())) refresh();
}

void NodeEdits::Exchange(const std::string& selectedKey, Direction direction) {
    exchangeStep(session_, documentToEdit(session_, selectedKey, direction), direction);
}

void NodeEdits::refresh() {
    session_.frame->RebuildExplorerTrees();
    session_.frame->EnableMenusAndButtons();
}

} // namespace kestrane
