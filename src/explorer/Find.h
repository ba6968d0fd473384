// Finds a node of the explorer tree by its text, from the last match on and then from the top again. It knows the tree
// as data and the kinds of its nodes; the calling window selects what was found.
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
    bool Entire = false; // the whole text of the node must match
};

class NodeSearch {
public:
    // The key of the next matching node behind the last match. A text that differs from the last one starts at the top.
    // When the last match is the only one, it is found again. Nothing when no node matches or the text is empty.
    std::optional<std::string> Find(const std::vector<TreeNode>& nodes, const FindEntry& entry);

private:
    std::string what_;
    std::string lastHit_; // a key; its node may no longer exist
};

} // namespace kestrane
