// The family of an instrument, told from its name. All tests drop the blanks of the name; apart from the Corvane and
// Brevik tests they heed case.
#pragma once

#include "resources/basSoftwareByFirm.h"

#include <string_view>

namespace kestrane {

bool IsModel(std::string_view name, std::string_view model); // begins with the model's number

bool IsCorvane(std::string_view name);
bool IsMerrowan(std::string_view name);
bool IsOldTallix(std::string_view name);
bool IsOldDoseMeter(std::string_view name);
bool IsHalcyrMeter(std::string_view name);
bool IsHalcyrMeter116E(std::string_view name);
bool IsHalcyrDoseMeter(std::string_view name);
bool IsValidInstrument(std::string_view name); // the Brevik family is not in it

} // namespace kestrane
