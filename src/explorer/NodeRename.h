// Renaming a file, a collection or a log in the tree.
#pragma once

#include "model/Session.h"

#include <string>

namespace kestrane {

// Renames the node's object; a file is renamed on disk, too. A failure is shown and changes nothing. Returns false when
// nothing was changed, which includes an empty name. The caller rebuilds the trees.
bool renameNode(Session& session, const std::string& key, const std::string& newText);

// The text that is edited; for a collection only its name.
std::string editableText(const Session& session, const std::string& key);

} // namespace kestrane
