// The icons of the program: drawings in one style, rendered separately for each size and scale. They follow the
// palette: brighter lines on a dark palette, the text colour on a selected row, pale when disabled.
#pragma once

#include <QIcon>

namespace kestrane {

// The icon by the file name of its drawing without the extension ("open", "log-closed"); empty when there is no such
// drawing.
QIcon iconOf(const char* name);

} // namespace kestrane
