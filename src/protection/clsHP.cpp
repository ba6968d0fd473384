#include "protection/clsHP.h"

#include "platform/RuntimeError.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::array<std::string_view, kProtectorBands> kBands = {"63", "125", "250", "500", "1k", "2k", "4k", "8k"};
constexpr std::array<std::string_view, 2> kTypes = {"Earplug", "Earmuff"};

template <class Bands>
bool hasAny(const Bands& bands) {
    return std::any_of(bands.begin(), bands.end(), [](float value) { return value != 0; });
}

} // namespace

std::string_view protectorBand(int i) {
    if (i < 1 || i > kProtectorBands) raiseIndexOutOfRange();
    return kBands[static_cast<std::size_t>(i) - 1];
}

std::size_t clsHP::index(int i) {
    if (i < 1 || i > kProtectorBands) raiseIndexOutOfRange();
    return static_cast<std::size_t>(i) - 1;
}

std::string_view clsHP::GetTipeStr() const {
    return kTypes[Tipe == 1 ? 1 : 0];
}

void clsHP::SetTipeFromStr(std::string_view s) {
    const auto* const type = std::find(kTypes.begin(), kTypes.end(), s);
    if (type != kTypes.end()) Tipe = static_cast<std::int16_t>(type - kTypes.begin());
}

bool clsHP::HasOctaves() const {
    return hasAny(mean_) || hasAny(sd_);
}

bool clsHP::HasOctavesUS() const {
    return hasAny(meanUS_) || hasAny(sdUS_);
}

} // namespace kestrane
