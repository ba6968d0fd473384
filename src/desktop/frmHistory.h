// The window with the history of a document, as a table.
#pragma once

#include "model/clsFile.h"

class QWidget;

namespace kestrane {

// Shows it until the user closes it. Its size is remembered.
void ShowHistory(const clsFile& file, QWidget* parent);

} // namespace kestrane
