// Finding a node of the explorer tree by its text: from the last hit on, and round again from the top. Knows the tree
// as data and the kinds of its nodes; the window that asks selects what was found.
#pragma once

#include "explorer/ExplorerTree.h"
#include "resources/TextNames.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrane {

// Where to search, in the order of the search list.
enum class FindIn { All, FileNames, Logs, Broadband, FullOctave, ThirdOctave };

constexpr Text::Id kFindInTexts[] = {Text::FindAll,       Text::FindFileNames,  Text::FindLogs,
                                     Text::TreeBroadband, Text::TreeFullOctave, Text::TreeThirdOctave};

struct FindEntry {
    std::string What;
    FindIn Where = FindIn::All;
    bool MatchCase = false;
    bool Entire = false; // the whole text of the node
};

class NodeSearch {
public:
    // The key of the next node that fits, behind the last hit; a text other than the last one starts at the top. The
    // last hit itself is found again when it is the only one. Nothing when no node fits, or the text is empty.
    std::optional<std::string> Find(const std::vector<TreeNode>& nodes, const FindEntry& entry);

private:
    std::string what_;
    std::string lastHit_; // a key, whose node may have gone
};

} // namespace kestrane
