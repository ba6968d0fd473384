// The choice of a folder, through the platform's dialog.
#pragma once

#include "model/Session.h"

class QWidget;

namespace kestrane {

class frmBrowse {
public:
    // Starts in the given folder. Empty when the user cancels, or chooses a folder that cannot be opened, which is
    // told.
    static std::string AskFolder(Session& session, QWidget* parent, const std::string& start);
};

} // namespace kestrane
