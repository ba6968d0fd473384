// Charts that are dragged out of a window, as a picture.
#pragma once

#include "platform/Clipboard.h"

namespace kestrane {

class chaTab;

ClipboardForms pictureOf(const chaTab& chart); // the visible part, as copying gives it

// Lets a chart be dragged out: from outside its axes, or with Ctrl.
void allowDragging(chaTab& chart);

} // namespace kestrane
