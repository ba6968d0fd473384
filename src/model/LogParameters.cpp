#include "model/LogParameters.h"

#include "model/LogTime.h"
#include "model/Session.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

clsValue flagValue(bool flag) {
    clsValue value;
    value.Value(flag ? -1.0F : 0.0F);
    return value;
}

bool hasCumulative(const clsLog& log, LogChannel channel, Parameter parameter) {
    if (isNeverRecorded(log, parameter)) return false;
    if (const int ln = lnOf(parameter); ln != 0) return IsLnCumulativeValid(log, channel, ln);
    const int last = isBanded(parameter) ? lastBand(log.Mode()) : 0;
    for (int band = 0; band <= last; ++band) {
        if (cumulativeValue(log, channel, parameter, band).CalcValue() != 0) return true;
    }
    return false;
}

bool hasIntervalValues(const clsLog& log, LogChannel channel, Parameter parameter) {
    if (isNeverRecorded(log, parameter)) return false;
    const IntervalColumns& rows = log.LogIntervals.Columns();
    if (parameter == eOverload) {
        const auto cells = rows.cells(overloadColumn(rows, channel));
        return std::any_of(cells.begin(), cells.end(), [](std::uint8_t cell) { return cell != 0; });
    }
    const Quantity quantity = intervalQuantity(channel, parameter);
    if (quantity == Quantity::End) return false;
    const int last = hasBands(quantity) ? lastBand(log.Mode()) : 0;
    for (int band = 0; band <= last; ++band) {
        const auto cells = rows.levels(quantity, band);
        if (std::any_of(cells.begin(), cells.end(), [](Level level) { return level.CalcValue != 0; })) return true;
    }
    return false;
}

// The caption functions of the first four parameters, in the order of their numbers from eLeq on.
struct WeightedCaption {
    std::string (clsLog::*channelA)() const;
    std::string (clsLog::*channelB)() const;
};

constexpr WeightedCaption kWeighted[] = {{&clsLog::LeqTextA, &clsLog::LeqTextB},
                                         {&clsLog::LminTextA, &clsLog::LminTextB},
                                         {&clsLog::LmaxTextA, &clsLog::LmaxTextB},
                                         {&clsLog::PeakTextA, &clsLog::PeakTextB}};

std::string baseCaption(const Session& session, Parameter parameter, LogChannel channel, const clsLog* log) {
    if (const int ln = lnOf(parameter); ln != 0)
        return log != nullptr ? "L" + std::to_string(log->LnNumberA(ln)) : "Ln" + std::to_string(ln);
    return log == nullptr || channel == kNoChannel ? session.labels.*parameterInfo(parameter).caption
                                                   : levelCaption(*log, channel, parameter);
}

constexpr Parameter kExposure[] = {eLepdET, eLepdMT, eDoseET, eDoseMT, eDoseHour, ePa2Hr};
constexpr Parameter kPercentiles[] = {eLe_Sel, eLn(1), eLn(2), eLn(3)};

} // namespace

bool isNeverRecorded(const clsLog& log, Parameter parameter) {
    if (!log.has(Trait::NoLmin)) return false;
    return parameter == eLmin || (parameter == eLmax && log.TestLocationType() == NoiseAtWorkLocation);
}

std::string pa2HoursFormat(double figure, std::string_view usual) {
    constexpr double kSmall = 0.1;
    constexpr int kDigits = 3;
    constexpr int kMostDecimals = 9;
    if (figure <= 0 || figure >= kSmall) return std::string(usual);
    const int decimals = kDigits - 1 - static_cast<int>(std::floor(std::log10(figure)));
    return "0." + std::string(static_cast<std::size_t>(std::min(decimals, kMostDecimals)), '0');
}

Quantity intervalQuantity(LogChannel channel, Parameter parameter) {
    return sourceOf(channel, parameter).rows;
}

std::string levelCaption(const clsLog& log, LogChannel channel, Parameter parameter) {
    if (parameter > ePeak) return log.session().labels.*parameterInfo(parameter).caption;
    const WeightedCaption& texts = kWeighted[parameter - eLeq];
    return (log.*(channel == kChannelB ? texts.channelB : texts.channelA))();
}

const Column<std::uint8_t>& overloadColumn(const IntervalColumns& rows, LogChannel channel) {
    return channel == kChannelA ? rows.OverloadedA : rows.OverloadedB;
}

std::string VariableCaption(const Session& session, Parameter parameter, LogChannel channel, std::string_view bandText,
                            const clsLog* log) {
    std::string caption = baseCaption(session, parameter, channel, log);
    if (isBanded(parameter) && !bandText.empty() && bandText != kNoBand) {
        caption += " ";
        caption += bandText;
        caption += " Hz";
    }
    if (log != nullptr && log->IsChannelBOn && channel != kNoChannel) {
        caption += channel == kChannelB ? " (CHB)" : " (CHA)";
    }
    return caption;
}

clsValue cumulativeValue(const clsLog& log, LogChannel channel, Parameter parameter, int band) {
    if (parameter == eOverload) return flagValue(log.IsLoggingOverLoaded);
    if (channel == kChannelA && isBanded(parameter)) {
        const int ln = lnOf(parameter);
        return ln != 0 ? log.LnCumA(ln, band) : (log.*parameterInfo(parameter).bands)(band);
    }
    const auto member = sourceOf(channel, parameter).cumulative;
    return member == nullptr ? clsValue() : log.*member;
}

bool isAsReported(const clsLog& log, LogChannel channel, Parameter parameter) {
    const clsValue figure = cumulativeValue(log, channel, parameter, 0);
    return (log.ReportedFigures & reportedBit(channel, parameter)) != 0 && figure.Value() != 0 &&
           figure.CalcValue() == figure.Value();
}

std::uint64_t reportedFiguresOf(const clsLog& log) {
    std::uint64_t figures = 0;
    for (const LogChannel channel : kChannels)
        for (const Parameter parameter : kParameters)
            if (isAsReported(log, channel, parameter)) figures |= reportedBit(channel, parameter);
    return figures;
}

clsValue intervalValue(const clsLog& log, std::int64_t row, LogChannel channel, Parameter parameter, int band) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const auto at = static_cast<std::size_t>(row) - 1;
    if (parameter == eOverload) return flagValue(overloadColumn(rows, channel).at(at) != 0);
    const Quantity quantity = intervalQuantity(channel, parameter);
    clsValue value;
    if (quantity == Quantity::End) return value;
    const Level level = rows.level(quantity, hasBands(quantity) ? band : 0, at);
    value.Value(level.Value);
    value.CalcValue(level.CalcValue);
    return value;
}

void SetPlottableValues(clsLog& log) {
    const PlotTable& possible = log.session().Options.objLogOptions.Plottable;
    clsLogOptions& options = log.objLogOptions;
    for (const LogChannel channel : kChannels) {
        for (const Parameter parameter : kParameters) {
            for (const FigureKind kind : kFigureKinds) {
                if (kind == kInterval && log.LogIntervals.Count() == 0) continue;
                bool isPlottable = possible(channel, kind, parameter);
                if (isPlottable) {
                    isPlottable = kind == kCumulative ? hasCumulative(log, channel, parameter)
                                                      : hasIntervalValues(log, channel, parameter);
                }
                options.Plottable.set(channel, kind, parameter, isPlottable);
                if (!isPlottable) options.IsPlotted.set(channel, kind, parameter, false);
            }
        }
    }
}

void RestrictToBrevik(const Session& session, clsLogOptions& options, std::string_view insName,
                      std::string_view locationType) {
    const PlotTable& s = session.Options.objLogOptions.Plottable;
    const auto asInS = [&](LogChannel channel, Parameter parameter) {
        for (const FigureKind kind : kFigureKinds) {
            options.Plottable.set(channel, kind, parameter, s(channel, kind, parameter));
        }
    };
    const auto become = [&](LogChannel channel, Parameter parameter, bool flag) {
        options.Plottable.set(channel, kCumulative, parameter, flag);
        options.Plottable.set(channel, kInterval, parameter, flag);
    };

    if (locationType == NoiseAtWorkLocation || hasTrait(insName, Trait::WorkOnly)) {
        for (const Parameter parameter : kPercentiles)
            become(kChannelA, parameter, false);
        for (const Parameter parameter : kExposure)
            asInS(kChannelA, parameter);
    } else if (locationType == EnvironmentLocation || hasTrait(insName, Trait::EnvironmentOnly)) {
        for (const Parameter parameter : kExposure)
            become(kChannelA, parameter, false);
        for (const Parameter parameter : kPercentiles)
            asInS(kChannelA, parameter);
    } else {
        for (int ln = 1; ln <= 3; ++ln)
            asInS(kChannelA, eLn(ln));
    }

    options.Plottable.set(kChannelA, kCumulative, eLAvg, true);
    options.Plottable.set(kChannelA, kCumulative, eTWA, true);
    become(kChannelA, eLmin, true);
    become(kChannelB, eLmin, true);
    for (const Parameter parameter : {ePeak, eLtm3, eLtm5})
        become(kChannelA, parameter, false);
    for (int ln = 4; ln <= NumberOfLns; ++ln)
        become(kChannelA, eLn(ln), false);
    for (const Parameter parameter : kExposure)
        become(kChannelB, parameter, false);
    for (const Parameter parameter : {eLtm3, eLtm5, eLe_Sel})
        become(kChannelB, parameter, false);
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        become(kChannelB, eLn(ln), false);
    asInS(kChannelB, ePeak);
    for (const LogChannel channel : kChannels) {
        asInS(channel, eLeq);
        asInS(channel, eLmax);
    }
}

clsLogOptions displayOptions(const clsLog& log) {
    clsLogOptions options = log.objLogOptions;
    if (!log.has(Trait::OffersVariants)) return options;
    RestrictToBrevik(log.session(), options, log.InsName, log.LocationType());
    for (const LogChannel channel : kChannels) {
        for (const FigureKind kind : kFigureKinds) {
            for (const Parameter parameter : kParameters) {
                const bool isShown =
                    options.IsPlotted(channel, kind, parameter) && options.Plottable(channel, kind, parameter);
                options.IsPlotted.set(channel, kind, parameter, isShown);
            }
        }
    }
    return options;
}

} // namespace kestrane
