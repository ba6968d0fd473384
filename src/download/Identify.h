// Finds out which instrument answers, and on which port.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Message is empty when an instrument was found (or the search was cancelled); otherwise it is kReplyError, kNoLogs or
// a text.
struct Identification {
    std::string Message;
    bool IsValid = false; // an instrument has given its name, and its port is open
};

// Tries the port that was used last, then the other ports of this machine in ascending order, and stops at the first on
// which an instrument gives its name or says that it holds no logs. Stores its name, type, firmware version and, when
// the answer contains it, the serial number.
Identification IdentifyInstrument(Transport& line, clsInsData& data);

} // namespace kestrane
