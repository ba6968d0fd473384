#include "views/LogWarnings.h"

#include "calc/CalibrationText.h"
#include "calc/Recalculation.h"
#include "model/Captions.h"
#include "model/LogParameters.h"
#include "model/Session.h"

#include <algorithm>

namespace kestrane {

namespace {

// Which figures do not belong to the log's dose; empty for none.
std::string notUpToDate(const clsLog& log) {
    std::string names;
    for (const Parameter parameter : {eDoseHour, eTWA}) {
        const bool isStale = std::ranges::any_of(kChannels, [&](LogChannel channel) {
            return log.objLogOptions.Plottable(channel, kCumulative, parameter) &&
                   isToBeRecalculated(log, channel, parameter);
        });
        if (isStale) names += (names.empty() ? "" : ", ") + levelCaption(log, kChannelA, parameter);
    }
    return names.empty() ? names : ReplaceText(log.session().LoadText(Text::NotUpToDate), "^", names);
}

} // namespace

std::string logWarnings(const clsLog& log) {
    const std::string unread =
        log.HasUnreadIntervals ? log.session().LoadText(Text::FiguresWithoutUnread) : std::string();
    // Nothing is computed from no interval, and what there is is not overwritten.
    const bool isAllExcluded =
        !log.HasWholeFigures && log.LogIntervals.Count() > 0 && log.LogIntervals.IncludedCount() == 0;
    const std::string excluded = isAllExcluded ? log.session().LoadText(Text::EveryIntervalExcluded) : std::string();
    std::string warnings;
    for (const std::string& warning : {unread, calibrationWarning(log), notUpToDate(log), excluded}) {
        if (!warnings.empty() && !warning.empty()) warnings += '\n';
        warnings += warning;
    }
    return warnings;
}

} // namespace kestrane
