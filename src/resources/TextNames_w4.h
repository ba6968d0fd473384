#pragma once

#include "resources/TextNames.h"

namespace kestrane::Text {
inline constexpr Id HistoryRecalculatedOnOpening = Id(9205);
inline constexpr Id OpeningFile = Id(9390);
inline constexpr Id FiguresWithoutUnread = Id(9391);
} // namespace kestrane::Text
