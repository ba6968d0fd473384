// The colours that go with a verdict, a state or a fault, beside its symbol and word: told apart by those who see no
// red or green, too, and readable on every palette.
#pragma once

#include "protection/Standards.h"

#include <QColor>

class QPalette;

namespace kestrane {

enum class Signal { Good, Caution, Bad, None };

// The colour of a text on any ground of a palette; of Signal::None that of text.
QColor signalColour(Signal signal, const QPalette& palette);

QColor faultyGround(const QPalette& palette); // the ground of a cell whose entry cannot count; its text is as usual
QColor barColour(const QPalette& palette);    // of bars and marks that stand for a level

Signal signalOf(Verdict verdict);

} // namespace kestrane
