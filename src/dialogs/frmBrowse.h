// Asks for a folder with the platform's dialog.
#pragma once

#include "model/Session.h"

class QWidget;

namespace kestrane {

class frmBrowse {
public:
    // Starts in the given folder. Returns an empty text when the user cancels and, after a message, when the chosen
    // folder cannot be opened.
    static std::string AskFolder(Session& session, QWidget* parent, const std::string& start);
};

} // namespace kestrane
