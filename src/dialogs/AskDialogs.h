// Small dialogs that ask for a line of text, and for one of a list, titled with the application's name.
#pragma once

#include "model/Session.h"

class QWidget;

namespace kestrane {

// Each lies above the parent, which must outlive it.
AskText textDialog(const Session& session, QWidget* parent);
AskChoice choiceDialog(const Session& session, QWidget* parent);

} // namespace kestrane
