#pragma once
// Names of texts about downloads, other programs and the history.

#include "resources/TextNames.h"

namespace kestrane::Text {

inline constexpr Id LengthOfLog = Id(9201);
inline constexpr Id OtherLogsOnInstrument = Id(9202);
inline constexpr Id HistoryDownload = Id(9203);
inline constexpr Id HistoryDownloadRecovered = Id(9204);

} // namespace kestrane::Text
