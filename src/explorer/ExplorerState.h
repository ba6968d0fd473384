// What an explorer window remembers of its tree, and the rules for clicking a node, rebuilding the tree and showing a
// log. It refers to objects only by key, so that nothing here dangles when a file closes. Owned by the window; it must
// not know widgets.
#pragma once

#include "explorer/ExplorerTree.h"
#include "views/LogView.h"
#include "views/Zoom.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// A node as the window shows it at the moment.
struct ShownNode {
    std::string Key;
    bool Expanded = false;
};

// What the right side of the window has to show for the displayed log.
enum class LogContent { Empty, Loading, Values };

class ExplorerState {
public:
    std::string SelectedKey;  // the node that was clicked last, of any kind; empty for none
    std::string DisplayedKey; // the log that was chosen for display; empty for none
    LogView View; // of the log that is actually shown, which is another one until the rows of the chosen one are there
    Zoom ZoomRange; // of the log that is shown

    bool IsLogSelected() const;
    bool IsLogDisplayed() const;

    // Handles a click. Returns true when the displayed log is to be shown again. A second click on the selected node
    // and a click on anything but a log change nothing there. A log that is selected but not displayed is displayed.
    bool NodeClick(const std::string& key);

    // The tree of the open files. Of the nodes in shown, those that were expanded stay expanded; nodes that are not in
    // shown are expanded. A key whose node is gone becomes empty; the displayed log is then the node to select.
    std::vector<TreeNode> RebuildTree(Session& session, const std::vector<ShownNode>& shown);

    // Shows the displayed log, unless it is shown already or its rows have not come yet. Returns true when the view has
    // changed.
    bool takeDisplayed(const Session& session);
    void ResetControls(); // forgets the log

    clsLog* OpenedLog(const Session& session) const; // the whole log that is shown; null for none
    clsLog* LogInView(const Session& session) const; // the same log, or the part of it that is zoomed to

    // Shows the range that the zoom panel has chosen. The interval shown stays the same when it is in the range, else
    // it is the first. Returns false when the range was refused.
    bool ApplyZoom(const Session& session);

    // What the figures of a copy of a range depend on, as one text: criterion, exchange rate, calibration date,
    // weighting and interval selection of the opened log. When Undo or Redo has changed it, the copy is dropped.
    std::string BasisOfFigures(const Session& session) const;
    bool endZoom(const Session& session); // shows the whole log again; false when it is shown already
    LogContent Content(const Session& session) const;
    std::string Caption(const Session& session) const; // of the window
};

} // namespace kestrane
