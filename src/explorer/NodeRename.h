// Renaming a file, a collection or a log in the tree.
#pragma once

#include "model/Session.h"

#include <string>

namespace kestrane {

// Gives the node's object a new name: a file on disk, too. A failure is shown and changes nothing. An empty name is no
// name. False when nothing was changed. The trees are rebuilt by the caller.
bool renameNode(Session& session, const std::string& key, const std::string& newText);

// The text that is edited: of a collection its name alone.
std::string editableText(const Session& session, const std::string& key);

} // namespace kestrane
