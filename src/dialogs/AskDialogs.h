// Small dialogs that ask for a line of text or for one entry of a list, with the application's name as their title.
#pragma once

#include "model/Session.h"

class QWidget;

namespace kestrane {

// The dialogs are shown above parent, which must outlive the functions.
AskText textDialog(const Session& session, QWidget* parent);
AskChoice choiceDialog(const Session& session, QWidget* parent);

} // namespace kestrane
