// In which colours the program shows itself: a choice of the user. Reports and pictures are made for paper, whatever is
// chosen here.
#pragma once

#include "platform/Settings.h"

namespace kestrane {

enum class Appearance { AsSystem, Light, Dark, HighContrast };

Appearance readAppearance(const SettingsStore& store);             // AsSystem for an entry that is not understood
void storeAppearance(SettingsStore& store, Appearance appearance); // raises what the store raises

} // namespace kestrane
