// Captions that the program puts together, punctuated as the language that is shown does it.
#pragma once

#include "model/Session.h"

namespace kestrane {

// The caption with a colon behind it: French has a no-break space in front of one.
std::string withColon(const Session& session, const std::string& caption);

// The caption, a colon and a value.
std::string captioned(const Session& session, const std::string& caption, const std::string& value);

// The caption without the colon at its end, if it has one, and without the space in front of that.
std::string withoutColon(std::string caption);

} // namespace kestrane
