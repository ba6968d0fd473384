// Where the frame stands on the screen, as the settings store keeps it: in twips, 15 to a pixel at 96 dpi. Knows
// numbers only; the frame says what screens there are.
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

// Nothing when the store holds no placement, or one that no window can have.
std::optional<Placement> readPlacement(const SettingsStore& store);
void savePlacement(SettingsStore& store, const Placement& placement);

// The width of the explorer tree, in pixels at 96 dpi. Nothing when the store holds none that a tree can have.
std::optional<int> readTreeWidth(const SettingsStore& store);
void saveTreeWidth(SettingsStore& store, int width);

// The placement moved, and where need be shrunk, so that it lies on the screen that it shares most of; on the first one
// when it shares none. Unchanged without screens.
Placement broughtOnScreen(Placement placement, const std::vector<Placement>& screens);

} // namespace kestrane
