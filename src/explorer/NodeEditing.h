// Copying, moving and deleting of nodes: which objects a paste takes where, what a deletion asks first, and which node
// is selected then. Every change can be undone. The trees are rebuilt by the caller.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// What Copy and Cut remember, for the whole program.
struct CopiedNode {
    std::string Key;   // empty: nothing
    bool Move = false; // the source goes when it is pasted
};

// Pastes the source at the target, by the kinds of their keys:
// - a file on a file: each collection;
// - a collection on a file or collection; a group or log on those, and on nodes of its own family.
// In a file, logs go to the collection of the same serial number, or to a new one like their own; a collection of
// another file stands for that file when a collection is dropped on it. Logs dropped on a log go behind it, others to
// the end. With move the source goes. The documents then count as changed, and identities are given.
// False when nothing was changed: keys that name nothing or do not go together, logs that are still loading (the user
// is told).
// Logs that went into a collection of another name, since it has the serial number of theirs: the user is told.
bool PasteNode(Session& session, const std::string& sourceKey, const std::string& targetKey, bool move);

// What is to be told when logs of one collection have gone into another by its serial number; mostly nothing (empty).
std::string foldedText(const clsInsData& from, const clsInsData& into);

// The node to select when that of key goes: the first of its siblings; when it is the first itself its parent, or, with
// no sibling left, the parent's parent (the parent, if that has none). Empty for a key that is not in the tree.
std::string nextSelection(const std::vector<TreeNode>& tree, std::string_view key);

// Behind a move: where the node of key has gone, the explorer selects next, and forgets a displayed log that went.
void CutLog(const Session& session, ExplorerState& state, std::string_view key, const std::string& next);

// Asks, and takes the selected node's object out of its document. False when nothing was deleted: a file, no selection,
// logs that are still loading (the user is told), or the user would rather not.
bool DeleteNode(Session& session, ExplorerState& state);

// What was copied has gone: there is nothing to paste any more.
void forgetVanished(const Session& session, CopiedNode& copied);

} // namespace kestrane
