#pragma once

// The names of texts about what a report says of its log.

#include "resources/TextNames.h"

namespace kestrane::Text {

constexpr Id OfAnotherOfItsName = static_cast<Id>(9420);
constexpr Id OfEarlierDose = static_cast<Id>(9421);
constexpr Id ChangedByOtherSince = static_cast<Id>(9422);
constexpr Id HistoryNotRead = static_cast<Id>(9423);

} // namespace kestrane::Text
