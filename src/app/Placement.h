// The place of the frame on the screen, as the settings store keeps it: in twips, of which 15 are a pixel at 96 dpi. It
// only knows numbers; the frame knows the screens.
#pragma once

#include "platform/Settings.h"

#include <optional>
#include <vector>

namespace kestrane {

// In pixels at 96 dpi.
struct Placement {
    int Left = 0, Top = 0, Width = 0, Height = 0;

    bool operator==(const Placement&) const = default;
};

// Nothing when the store has no placement, or one that is impossible for a window.
std::optional<Placement> readPlacement(const SettingsStore& store);
void savePlacement(SettingsStore& store, const Placement& placement);

// Moves the placement and the width of the tree to another store, which keeps values of its own.
void movePlacement(SettingsStore& from, SettingsStore& to);

// The width of the explorer tree in pixels at 96 dpi. Nothing when the store has none or an impossible one.
std::optional<int> readTreeWidth(const SettingsStore& store);
void saveTreeWidth(SettingsStore& store, int width);

// The placement moved, and reduced if necessary, so that it lies within one screen: the screen with which it shares the
// largest area, or the first one when it shares none. Without screens it is returned unchanged.
Placement broughtOnScreen(Placement placement, const std::vector<Placement>& screens);

} // namespace kestrane
