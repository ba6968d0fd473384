// The icons of the program: drawings in one style, rendered afresh for each size and scale. They follow the palette:
// brighter lines on a dark one, the text colour on a selected row, pale when disabled.
#pragma once

#include <QIcon>

namespace kestrane {

// By the file name of the drawing without its ending ("open", "log-closed"); empty for a name without a drawing.
QIcon iconOf(const char* name);

} // namespace kestrane
