// The explorer tree as data: which nodes there are, in which order, with their texts and images. A window shows it and
// keeps nothing of its own but which nodes are open.
#pragma once

#include "model/Session.h"

#include <string>
#include <vector>

namespace kestrane {

struct TreeNode {
    std::string Key;
    std::string Text;
    std::string Image; // "FILE", "INSTRUMENT", "FILEOPEN" or "FILECLOSE"
    std::string Tag;   // the serial of an instrument's node
    bool Expanded = false;
    std::vector<TreeNode> Children;
};

// The nodes of all open files: grouped by format, within a format in the order of OpenFiles. Expanded and open state
// come from the flags of the objects.
std::vector<TreeNode> buildTree(const Session& session);

// What stands behind a document's name while it has not been saved; else empty.
std::string markOf(const clsFile& file);

// The user's name for a collection, or its instrument's while it has none.
const std::string& collectionName(const clsInsData& data);

// "name [serial]", and the file's name where files are shown beside.
std::string instrumentText(const clsInsData& data, const clsFile& file);

} // namespace kestrane
