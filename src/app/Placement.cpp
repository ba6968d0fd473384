#include "app/Placement.h"

#include "model/SettingsText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace kestrane {

namespace {

constexpr std::string_view kSettings = "Settings";
constexpr std::string_view kTreeWidth = "TreeWidth";
constexpr int kTwipsPerPixel = 15;
constexpr float kFarthestTwip = 1e6F;

struct Field {
    std::string_view key;
    int Placement::*member;
};

constexpr Field kFields[] = {{"MainLeft", &Placement::Left},
                             {"MainTop", &Placement::Top},
                             {"MainWidth", &Placement::Width},
                             {"MainHeight", &Placement::Height}};

std::int64_t sharedArea(const Placement& a, const Placement& b) {
    const int width = std::min(a.Left + a.Width, b.Left + b.Width) - std::max(a.Left, b.Left);
    const int height = std::min(a.Top + a.Height, b.Top + b.Height) - std::max(a.Top, b.Top);
    return width <= 0 || height <= 0 ? 0 : std::int64_t{width} * height;
}

} // namespace

std::optional<Placement> readPlacement(const SettingsStore& store) {
    Placement placement;
    for (const Field& field : kFields) {
        float twips = 0;
        try {
            fromSettingsText(store.read(kSettings, field.key, {}), twips);
        } catch (const RuntimeError&) {
            return std::nullopt;
        }
        if (!(std::abs(twips) <= kFarthestTwip)) return std::nullopt;
        placement.*field.member = static_cast<int>(std::lround(twips / kTwipsPerPixel));
    }
    if (placement.Width <= 0 || placement.Height <= 0) return std::nullopt;
    return placement;
}

void savePlacement(SettingsStore& store, const Placement& placement) {
    for (const Field& field : kFields)
        store.write(kSettings, field.key, std::to_string(placement.*field.member * kTwipsPerPixel));
}

void movePlacement(SettingsStore& from, SettingsStore& to) {
    for (const Field& field : kFields)
        moveSetting(from, to, kSettings, field.key);
    moveSetting(from, to, kSettings, kTreeWidth);
}

std::optional<int> readTreeWidth(const SettingsStore& store) {
    std::int16_t width = 0;
    try {
        fromSettingsText(store.read(kSettings, kTreeWidth, {}), width);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    return width > 0 ? std::optional<int>(width) : std::nullopt;
}

void saveTreeWidth(SettingsStore& store, int width) {
    store.write(kSettings, kTreeWidth, std::to_string(width));
}

Placement broughtOnScreen(Placement placement, const std::vector<Placement>& screens) {
    if (screens.empty()) return placement;
    const Placement& screen =
        *std::max_element(screens.begin(), screens.end(), [&](const Placement& a, const Placement& b) {
            return sharedArea(placement, a) < sharedArea(placement, b);
        });
    placement.Width = std::min(placement.Width, screen.Width);
    placement.Height = std::min(placement.Height, screen.Height);
    placement.Left = std::clamp(placement.Left, screen.Left, screen.Left + screen.Width - placement.Width);
    placement.Top = std::clamp(placement.Top, screen.Top, screen.Top + screen.Height - placement.Height);
    return placement;
}

} // namespace kestrane
