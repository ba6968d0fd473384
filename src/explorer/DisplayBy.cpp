#include "explorer/DisplayBy.h"

#include "model/LogParameters.h"
#include "model/Session.h"

#include <string_view>

namespace kestrane {

namespace {

std::string bandEnding(const Session& session) {
    return " " + session.LoadText(4592) + " " + session.LoadText(4594);
}

std::string parameterText(const clsLog& log, int parameter) {
    return VariableCaption(log.session(), parameter, kChannelA, kNoBand, &log);
}

void addBands(std::vector<std::string>& list, const clsLog& log) {
    const std::string ending = bandEnding(log.session());
    for (int band = 1; band <= lastBand(log.Mode()); ++band)
        list.push_back(std::string(log.eStr(band)) + ending);
}

void addParameters(std::vector<std::string>& list, const clsLog& log) {
    const PlotTable isPlotted = displayOptions(log).IsPlotted;
    for (int parameter = 1; parameter <= ParameterCount; ++parameter) {
        const bool isShown = isPlotted(kChannelA, kCumulative, parameter) || isPlotted(kChannelA, kInterval, parameter);
        if (isBanded(parameter) && isShown) list.push_back(parameterText(log, parameter));
    }
}

} // namespace

std::vector<std::string> displayByList(const clsLog& log, int mode) {
    if (mode != kByFreq && mode != kByParam) return {};
    std::vector<std::string> list = {log.session().LoadText(4543)};
    if (log.IsOctaveLog()) (mode == kByFreq ? addBands : addParameters)(list, log);
    return list;
}

DisplayChoice displayChoice(const clsLog& log, int mode, const std::string& text) {
    if (text.empty() || text == log.session().LoadText(4543)) return {};
    if (mode == kByParam) return {{}, text};
    const std::string ending = bandEnding(log.session());
    if (mode != kByFreq || !text.ends_with(ending)) return {};
    return {text.substr(0, text.size() - ending.size()), {}};
}

int chosenParameter(const clsLog& log, const std::string& text) {
    if (text.empty()) return 0;
    for (int parameter = 1; parameter <= ParameterCount; ++parameter) {
        if (isBanded(parameter) && parameterText(log, parameter) == text) return parameter;
    }
    return 0;
}

std::string bandLabel(const clsLog& log, int band) {
    const Session& session = log.session();
    return band == 0 ? session.LoadText(4593) : std::string(log.eStr(band)) + " " + session.LoadText(4592);
}

} // namespace kestrane
