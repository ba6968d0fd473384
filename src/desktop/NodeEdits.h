// The commands on the nodes of the trees: Cut, Copy, Paste, Delete, dropping on a node, Undo and Redo. It remembers
// what was copied, for all explorer windows; what a command does is decided in the core.
#pragma once

#include "explorer/Edits.h"
#include "explorer/NodeEditing.h"
#include "model/Session.h"

#include <QStringList>

#include <functional>

namespace kestrane {

class frmExplorer;

class NodeEdits {
public:
    using OpenFiles = std::function<void(const QStringList& paths)>;

    NodeEdits(Session& session, OpenFiles openFiles);

    const CopiedNode& Copied() const { return copied_; }

    void Copy(frmExplorer& explorer, bool move);
    void Paste(frmExplorer& explorer); // at the selected node; files on the clipboard are opened instead
    void Drop(frmExplorer& explorer, const std::string& source, const std::string& target, bool move);
    void Delete(frmExplorer& explorer); // the selected node
    void Exchange(const std::string& selectedKey, Direction direction);

    void TreesRebuilt() { forgetVanished(session_, copied_); }

private:
    void refresh();

    Session& session_;
    OpenFiles openFiles_;
    CopiedNode copied_;
};

} // namespace kestrane
