// The explorer tree as data: which nodes there are, in which order, with their texts and images. A window shows it and
// only remembers which nodes are expanded.
#pragma once

#include "model/Session.h"

#include <string>
#include <vector>

namespace kestrane {

struct TreeNode {
    std::string Key;
    std::string Text;
    std::string Image; // "FILE", "INSTRUMENT", "FILEOPEN" or "FILECLOSE"
    std::string Tag;   // the serial number, for an instrument's node
    bool Expanded = false;
    std::vector<TreeNode> Children;
};

// The nodes of all open files, grouped by format and within a format in the order of OpenFiles. Which nodes are
// expanded or open follows from the flags of the objects.
std::vector<TreeNode> buildTree(const Session& session);

// The marks behind the name of a document that has unsaved changes, and of one that is open for reading only.
std::string markOf(const clsFile& file);

// The user's name for a collection; when it has none, the name of its instrument.
const std::string& collectionName(const clsInsData& data);

// "name [serial]", followed by the file's name when the settings say that file names are shown there.
std::string instrumentText(const clsInsData& data, const clsFile& file);

} // namespace kestrane
