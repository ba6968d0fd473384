// Which instrument answers, on which port.
#pragma once

#include "download/Transport.h"
#include "model/clsInsData.h"

#include <string>

namespace kestrane {

// Message: empty when an instrument has been named (or the search was cancelled), kReplyError, kNoLogs, or a text.
struct Identification {
    std::string Message;
    bool IsValid = false; // an instrument has been named; its port is open
};

// Tries the port last used, then the others of this machine in ascending order, up to the first on which an instrument
// tells its name or that it holds no logs. Fills name, type, firmware version and, where the answer has it, the serial
// number.
Identification IdentifyInstrument(Transport& line, clsInsData& data);

} // namespace kestrane
