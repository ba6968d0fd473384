// More names of texts.
#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {

// Settings
inline constexpr Id MarkSeries = Id(9101);
inline constexpr Id AppearanceGroup = Id(9102);
inline constexpr Id AppearanceLabel = Id(9103);
inline constexpr Id AppearanceAsSystem = Id(9104);
inline constexpr Id AppearanceLight = Id(9105);
inline constexpr Id AppearanceDark = Id(9106);
inline constexpr Id AppearanceHighContrast = Id(9107);
// The list of keys
inline constexpr Id CommandKeys = Id(9110);
inline constexpr Id TipKeys = Id(9111);
inline constexpr Id KeysTitle = Id(9112);
inline constexpr Id KeysSearch = Id(9113);
inline constexpr Id KeysPlace = Id(9114);
inline constexpr Id KeysCommand = Id(9115);
inline constexpr Id KeysKeys = Id(9116);
inline constexpr Id KeysMenuOfTree = Id(9117);
inline constexpr Id KeysMenuOfLog = Id(9118);

} // namespace kestrane::Text
