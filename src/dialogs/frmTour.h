// The tour: what the program does, in a few pictures.
#pragma once

#include "model/Session.h"

class QWidget;

namespace kestrane {

// Shows the tour until the user closes it, or has seen its last picture.
void ShowTour(const Session& session, QWidget* parent);

} // namespace kestrane
