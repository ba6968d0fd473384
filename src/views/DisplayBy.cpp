#include "views/DisplayBy.h"

#include "model/LogParameters.h"
#include "model/Session.h"

#include <algorithm>

namespace kestrane {

namespace {

std::string bandEnding(const Session& session) {
    return " " + session.LoadText(Text::Hertz) + " " + session.LoadText(Text::OfChannelA);
}

void addBands(std::vector<DisplayEntry>& list, const clsLog& log) {
    const std::string ending = bandEnding(log.session());
    for (int band = 1; band <= lastBand(log.Mode()); ++band)
        list.push_back({std::string(log.eStr(band)) + ending, {std::string(log.eStr(band)), kNoParameter}});
}

void addParameters(std::vector<DisplayEntry>& list, const clsLog& log) {
    const PlotTable isPlotted = displayOptions(log).IsPlotted;
    for (const Parameter parameter : kParameters) {
        const bool isShown = isPlotted(kChannelA, kCumulative, parameter) || isPlotted(kChannelA, kInterval, parameter);
        if (isBanded(parameter) && isShown) list.push_back({parameterText(log, parameter), {{}, parameter}});
    }
}

} // namespace

std::vector<DisplayEntry> displayByList(const clsLog& log, DisplayMode mode) {
    if (mode != kByFreq && mode != kByParam) return {};
    std::vector<DisplayEntry> list = {{log.session().LoadText(Text::DefaultChoice), {}}};
    if (log.IsOctaveLog()) (mode == kByFreq ? addBands : addParameters)(list, log);
    return list;
}

std::size_t placeOf(const DisplayChoice& choice, const std::vector<DisplayEntry>& list) {
    const auto found =
        std::find_if(list.begin(), list.end(), [&](const DisplayEntry& entry) { return entry.Choice == choice; });
    return found == list.end() ? 0 : static_cast<std::size_t>(found - list.begin());
}

std::string parameterText(const clsLog& log, Parameter parameter) {
    return VariableCaption(log.session(), parameter, kChannelA, kNoBand, &log);
}

std::string bandLabel(const clsLog& log, int band) {
    const Session& session = log.session();
    return band == 0 ? session.LoadText(Text::AllPass)
                     : std::string(log.eStr(band)) + " " + session.LoadText(Text::Hertz);
}

} // namespace kestrane
