#include "views/LogWarnings.h"

#include "model/Session.h"
#include "views/CalibrationText.h"

namespace kestrane {

std::string logWarnings(const clsLog& log) {
    std::string warnings;
    if (log.HasUnreadIntervals) warnings = log.session().LoadText(Text::FiguresWithoutUnread);
    const std::string drift = calibrationWarning(log);
    if (!warnings.empty() && !drift.empty()) warnings += '\n';
    return warnings + drift;
}

} // namespace kestrane
