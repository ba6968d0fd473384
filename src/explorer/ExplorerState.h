// What an explorer window remembers of its tree, and the rules of clicking a node, of rebuilding the tree and of
// bringing a log on view. It refers to objects by key alone, so nothing here dangles when a file closes. Owned by the
// window; it must not know widgets.
#pragma once

#include "explorer/ExplorerTree.h"
#include "views/LogView.h"
#include "views/Zoom.h"

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
enum class LogContent { Empty, Loading, Values };

class ExplorerState {
public:
    std::string SelectedKey;  // the node last clicked, of any kind; empty: none
    std::string DisplayedKey; // the log chosen for display; empty: none
    LogView View;             // of the log on view, which is another one while the chosen one's rows are not there
    Zoom ZoomRange;           // of the log on view

    bool IsLogSelected() const;
    bool IsLogDisplayed() const;

    // Takes a click. True when the log on display is to be shown anew; a second click on the selected node, and a click
    // on anything but a log, leave it as it is. A log that is selected but not displayed is opened.
    bool NodeClick(const std::string& key);

    // The tree of the open files. What was expanded stays so, by the nodes shown up to now; nodes that were not there
    // come expanded. Keys that have lost their node become empty; the node to select is then the log on display.
    std::vector<TreeNode> RebuildTree(Session& session, const std::vector<ShownNode>& shown);

    // Brings the log on display on view, unless it is there already or its rows are not. True when the view has
    // changed.
    bool takeDisplayed(const Session& session);
    void ResetControls(); // forgets the log

    clsLog* OpenedLog(const Session& session) const; // the log on view, all of it; null: none
    clsLog* LogInView(const Session& session) const; // the same, or the part of it that is zoomed to

    // Brings the range that the zoom panel has chosen on view; the row on view stays where it is part of it. False when
    // it was refused.
    bool ApplyZoom(const Session& session);

    // What a copy of a range was calculated by: criterion, exchange rate, calibration date, weighting and interval
    // selection of the opened log, as one text. When Undo or Redo has changed it, the copy gives way.
    std::string BasisOfFigures(const Session& session) const;
    bool endZoom(const Session& session); // back to the whole log; false when it is on view already
    LogContent Content(const Session& session) const;
    std::string Caption(const Session& session) const; // of the window
};

} // namespace kestrane
