// The list of keys: every command with its place in the menus and its keys, to search, copy and print.
#pragma once

#include "model/Session.h"

#include <string>
#include <vector>

class QWidget;

namespace kestrane {

struct KeyRow {
    std::string Place;   // the menus that lead to it, with " > " between them
    std::string Command; // as it stands in the menu, without its mnemonic
    std::string Keys;    // in the user's language, with ", " between them; empty for none
};

// Returns when the user closes the list. The dialogs of a print command come up over it.
void ShowKeys(Session& session, std::vector<KeyRow> rows, QWidget* parent);

} // namespace kestrane
