// What can be dragged out of the program's windows, in the terms of the desktop.
#pragma once

#include "app/DragFile.h"
#include "platform/desktop/DragOut.h"

class QTableView;

namespace kestrane {

// What was copied, and the same as a file with a title. Nothing when nothing was copied.
std::optional<DragOffer> offerOf(ClipboardForms forms, const std::string& title);

// Lets what is selected in a table be dragged out, as what copying gives.
void allowDragging(QTableView& view, std::function<ClipboardForms()> copy, std::string title);

} // namespace kestrane
