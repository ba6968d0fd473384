// Copying, moving and deleting nodes: where a paste puts the objects, what is asked before a deletion, and which node
// is selected afterwards. Every change can be undone. The caller rebuilds the trees.
#pragma once

#include "explorer/ExplorerState.h"
#include "model/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// What Copy and Cut remember, for the whole program.
struct CopiedNode {
    std::string Key;   // empty when there is nothing to paste
    bool Move = false; // whether the source is removed when it is pasted
};

// Pastes the source at the target, according to the kinds of their keys:
// - a file on a file pastes each of its collections;
// - a collection can be pasted on a file or a collection; a group or a log on those, and on nodes of its own family.
// In a file, logs go to the collection with the same serial number, or to a new one like their own. When a collection
// is dropped on a collection of another file, that collection stands for its file. Logs dropped on a log go behind it,
// others to the end. With move, the source is removed. The documents then count as changed, and new objects get
// identities.
// Returns false when nothing was changed: a key names nothing, the keys do not go together, or logs are still loading
// (then the user gets a message).
// When logs went into a collection with another name because of its serial number, the user is informed.
bool PasteNode(Session& session, const std::string& sourceKey, const std::string& targetKey, bool move);

// The text for the user when logs of one collection have gone into another because of its serial number; empty when
// both have the same name or there are no logs.
std::string foldedText(const clsInsData& from, const clsInsData& into);

// The node to select when that of key is removed: the first of its siblings; when it is itself the first, its parent,
// or when it has no siblings its parent's parent (the parent, when that has no parent). Empty for a key that is not in
// the tree.
std::string nextSelection(const std::vector<TreeNode>& tree, std::string_view key);

// After a move: when the node of key is gone, the explorer selects next, and it forgets a displayed log that is gone.
void CutLog(const Session& session, ExplorerState& state, std::string_view key, const std::string& next);

// Asks the user, and then takes the object of the selected node out of its document. Returns false when nothing was
// deleted: it is a file, nothing is selected, logs are still loading (then the user gets a message), or the user
// declined.
bool DeleteNode(Session& session, ExplorerState& state);

// Forgets what was copied when it no longer exists.
void forgetVanished(const Session& session, CopiedNode& copied);

} // namespace kestrane
