// What the short words in captions stand for. A view shows it beside the caption: as a tool tip, or to a screen reader.
#pragma once

#include "model/Session.h"

#include <string>
#include <string_view>

namespace kestrane {

// A sentence about the short word in a caption, such as "LEP,d(ET)". Empty when the caption has none.
std::string captionHint(const Session& session, std::string_view caption);

} // namespace kestrane
