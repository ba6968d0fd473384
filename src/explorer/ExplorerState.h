// What an explorer window remembers of its tree, and the rules of clicking a node and of rebuilding the tree. It refers
// to objects by key alone, so nothing here dangles when a file closes. Owned by the window; it must not know widgets.
#pragma once

#include "explorer/ExplorerTree.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A node as the window shows it just now.
struct ShownNode {
    std::string Key;
    bool Expanded = false;
};

// What the right side has to show of the displayed log.
enum class LogView { Empty, Loading, Values };

class ExplorerState {
public:
    std::string SelectedKey;  // the node last clicked, of any kind; empty: none
    std::string DisplayedKey; // the log on display; empty: none

    bool IsLogSelected() const;
    bool IsLogDisplayed() const;
    bool IsNodeEditable() const; // groups are not

    // Takes a click. True when the log on display is to be shown anew; a second click on the selected node, and a click
    // on anything but a log, leave it as it is.
    bool NodeClick(const std::string& key);

    // The tree of the open files. What was expanded stays so, by the nodes shown up to now; nodes that were not there
    // come expanded. Keys that have lost their node become empty; the node to select is then the log on display.
    std::vector<TreeNode> RebuildTree(Session& session, const std::vector<ShownNode>& shown);

    LogView View(const Session& session) const;
    std::string Caption(const Session& session) const; // of the window
};

} // namespace kestrane
