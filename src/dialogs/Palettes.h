// The colours of the windows for each appearance, and how the running program takes one on.
#pragma once

#include "app/Appearance.h"

#include <QFontMetrics>
#include <QPalette>

namespace kestrane {

// The colours of an appearance; those of the desktop, as far as they can be read, for AsSystem.
QPalette paletteOf(Appearance appearance);

inline constexpr int kLeastHit = 24; // pixels, the height of what a hand hits (WCAG 2.2, success criterion 2.5.8)

// The height of the rows of a table with this font, pixels.
int tableRowHeight(const QFontMetrics& font);

// Shows the whole program in an appearance, at once.
void showAppearance(Appearance appearance);

// To be called when the colours of the desktop have changed: quiet texts get a shade in which they can be read.
void keepQuietTextReadable();

} // namespace kestrane
