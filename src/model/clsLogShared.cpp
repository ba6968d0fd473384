#include "model/clsLogShared.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <array>
#include <span>

namespace kestrane {

namespace {

constexpr std::array<std::string_view, 11> kOctaves = {"16", "31.5", "63", "125", "250", "500",
                                                       "1k", "2k",   "4k", "8k",  "16k"};
constexpr std::array<std::string_view, 33> kThirdOctaves = {
    "12.5", "16",   "20",    "25",  "31.5", "40",   "50",  "63",  "80",    "100",   "125",
    "160",  "200",  "250",   "315", "400",  "500",  "630", "800", "1k",    "1.25k", "1.6k",
    "2k",   "2.5k", "3.15k", "4k",  "5k",   "6.3k", "8k",  "10k", "12.5k", "16k",   "20k"};

std::span<const std::string_view> bandsOf(LogMode mode) {
    switch (mode) {
    case modeFullOctave:
        return kOctaves;
    case modeThirdOctave:
        return kThirdOctaves;
    default:
        return {};
    }
}

} // namespace

int lastBand(LogMode mode) {
    return static_cast<int>(bandsOf(mode).size());
}

int e(LogMode mode, std::string_view bandText) {
    const auto bands = bandsOf(mode);
    if (bandText == "Last") return lastBand(mode);
    const auto found = std::find(bands.begin(), bands.end(), bandText);
    return found == bands.end() ? 0 : static_cast<int>(found - bands.begin()) + 1;
}

std::string_view eStr(LogMode mode, int band) {
    return band < 1 || band > lastBand(mode) ? std::string_view() : bandsOf(mode)[static_cast<std::size_t>(band) - 1];
}

LogMode toLogMode(int number) {
    if (number < modeBroadband || number > modeThirdOctave) throw RuntimeError(kErrorApplication, "Invalid mode");
    return static_cast<LogMode>(number);
}

} // namespace kestrane
