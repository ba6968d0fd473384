// The rule of the menus: which commands can be given just now, from what is open and what is selected. The frame asks
// here whenever a menu drops or something changes; nothing is kept.
#pragma once

#include "model/Session.h"

#include <string>

namespace kestrane {

enum class MenuItem { FileOpen, FileClose, FileCloseAll, FileSave, FileSaveAs };

// selectedKey: the tree node selected in the explorer in front; empty without one.
bool IsMenuEnabled(const Session& session, MenuItem item, const std::string& selectedKey);

} // namespace kestrane
