// The colours that go with a verdict or a state, beside its symbol and word: told apart by those who see no red or
// green, too, and readable on light and dark palettes.
#pragma once

#include "protection/Standards.h"

#include <QColor>

class QPalette;

namespace kestrane {

enum class Signal { Good, Caution, Bad, None };

QColor signalColour(Signal signal, const QPalette& palette); // of Signal::None that of text

Signal signalOf(Verdict verdict);

} // namespace kestrane
