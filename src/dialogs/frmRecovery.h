// Offers the copies of unsaved documents that were left when the program ended without saving them.
#pragma once

#include "app/Recovery.h"

#include <vector>

class QWidget;

namespace kestrane {

class frmRecovery {
public:
    // The choices of the user, one for each row. What is left undecided is kept for later.
    static std::vector<CopyChoice> Ask(Session& session, const std::vector<CopyRow>& rows, QWidget* parent);
};

} // namespace kestrane
