#include "model/LogParameters.h"

#include "model/LogTime.h"
#include "model/Session.h"

#include <algorithm>

namespace kestrane {

namespace {

// A parameter of one channel: its cumulative member and its column. A null member or Quantity::End: it has none.
// Parameters with bands, and the Lns, are told apart below.
struct ParameterSource {
    Parameter parameter;
    clsValue LogData::*cumulativeA;
    clsValue LogData::*cumulativeB;
    Quantity rowsA;
    Quantity rowsB;
};

constexpr Quantity kNone = Quantity::End;

constexpr ParameterSource kSources[] = {
    {eLeq, nullptr, &LogData::LeqCumB, Quantity::LeqA, Quantity::LeqB},
    {eLmin, nullptr, &LogData::LminCumB, Quantity::LminA, Quantity::LminB},
    {eLmax, nullptr, &LogData::LmaxCumB, Quantity::LmaxA, Quantity::LmaxB},
    {ePeak, &LogData::PeakCumA, &LogData::PeakCumB, Quantity::PeakA, Quantity::PeakB},
    {eLepdET, &LogData::LepdETCumA, &LogData::LepdETCumB, Quantity::LepdA, Quantity::LepdB},
    {eLepdMT, &LogData::LepdMTCumA, &LogData::LepdMTCumB, kNone, kNone},
    {eDoseET, &LogData::DoseETCumA, &LogData::DoseETCumB, Quantity::DoseA, Quantity::DoseB},
    {eDoseMT, &LogData::DoseMTCumA, &LogData::DoseMTCumB, kNone, kNone},
    {eDoseHour, &LogData::DoseHourA, &LogData::DoseHourB, kNone, kNone},
    {eLtm3, &LogData::Ltm3CumA, nullptr, Quantity::Ltm3A, kNone},
    {eLtm5, &LogData::Ltm5CumA, nullptr, Quantity::Ltm5A, kNone},
    {eLe_Sel, &LogData::SELCumA, &LogData::SELCumB, Quantity::SELA, Quantity::SELB},
    {ePa2Hr, &LogData::Pa2hCumA, &LogData::Pa2hCumB, Quantity::Pa2hA, Quantity::Pa2hB},
    {eOverload, nullptr, nullptr, kNone, kNone},
    {eLAvg, &LogData::LAvgCumA, nullptr, kNone, kNone},
    {eTWA, &LogData::TWACumA, nullptr, kNone, kNone},
};

bool isLn(int parameter) {
    return parameter >= eLn1 && parameter <= eLn10;
}

const ParameterSource& sourceOf(int parameter) {
    return *std::find_if(std::begin(kSources), std::end(kSources),
                         [&](const ParameterSource& source) { return source.parameter == parameter; });
}

clsValue flagValue(bool flag) {
    clsValue value;
    value.Value(flag ? -1.0F : 0.0F);
    return value;
}

// The log holds no such figure whatever its numbers say.
bool isNotRecorded(const clsLog& log, int parameter) {
    if (!log.IsHalcyrMeter()) return false;
    return parameter == eLmin || (parameter == eLmax && log.TestLocationType() == NoiseAtWorkLocation);
}

bool hasCumulative(const clsLog& log, int channel, int parameter) {
    if (isNotRecorded(log, parameter)) return false;
    if (isLn(parameter)) return IsLnCumulativeValid(log, channel, parameter - eLn1 + 1);
    const int last = isBanded(parameter) ? lastBand(log.Mode()) : 0;
    for (int band = 0; band <= last; ++band) {
        if (cumulativeValue(log, channel, parameter, band).CalcValue() != 0) return true;
    }
    return false;
}

bool hasIntervalValues(const clsLog& log, int channel, int parameter) {
    if (isNotRecorded(log, parameter)) return false;
    const IntervalColumns& rows = log.LogIntervals.Columns();
    if (parameter == eOverload) {
        const auto cells = rows.cells(overloadColumn(rows, channel));
        return std::any_of(cells.begin(), cells.end(), [](std::uint8_t cell) { return cell != 0; });
    }
    const Quantity quantity = intervalQuantity(channel, parameter);
    if (quantity == kNone) return false;
    const int last = hasBands(quantity) ? lastBand(log.Mode()) : 0;
    for (int band = 0; band <= last; ++band) {
        const auto cells = rows.levels(quantity, band);
        if (std::any_of(cells.begin(), cells.end(), [](Level level) { return level.CalcValue != 0; })) return true;
    }
    return false;
}

std::string levelCaption(const Session& session, int parameter, int channel, const clsLog* log) {
    const bool isOfLog = log != nullptr && channel != kNoChannel;
    const bool isA = channel != kChannelB;
    switch (parameter) {
    case eLeq:
        return !isOfLog ? session.labels.Leq : isA ? log->LeqTextA() : log->LeqTextB();
    case eLmin:
        return !isOfLog ? session.labels.Lmin : isA ? log->LminTextA() : log->LminTextB();
    case eLmax:
        return !isOfLog ? session.labels.Lmax : isA ? log->LmaxTextA() : log->LmaxTextB();
    default:
        return !isOfLog ? session.labels.Peak : isA ? log->PeakTextA() : log->PeakTextB();
    }
}

std::string baseCaption(const Session& session, int parameter, int channel, const clsLog* log) {
    const LabelTexts& labels = session.labels;
    if (isLn(parameter)) {
        const int ln = parameter - eLn1 + 1;
        return log != nullptr ? "L" + std::to_string(log->LnNumberA(ln)) : "Ln" + std::to_string(ln);
    }
    switch (parameter) {
    case eLepdET:
        return labels.LepdET;
    case eLepdMT:
        return labels.LepdMT;
    case eDoseET:
        return labels.DoseET;
    case eDoseMT:
        return labels.DoseMT;
    case eDoseHour:
        return labels.DoseHour;
    case eLtm3:
        return labels.Ltm3;
    case eLtm5:
        return labels.Ltm5;
    case eLe_Sel:
        return labels.SEL;
    case ePa2Hr:
        return labels.Pa2h;
    case eOverload:
        return labels.Overload;
    case eLAvg:
        return session.labels.LAvg;
    case eTWA:
        return session.labels.TWA;
    default:
        return levelCaption(session, parameter, channel, log);
    }
}

constexpr Parameter kExposure[] = {eLepdET, eLepdMT, eDoseET, eDoseMT, eDoseHour, ePa2Hr};
constexpr Parameter kPercentiles[] = {eLe_Sel, eLn(1), eLn(2), eLn(3)};

} // namespace

bool isBanded(int parameter) {
    return parameter <= eLmax || isLn(parameter);
}

Quantity intervalQuantity(int channel, int parameter) {
    if (isLn(parameter)) return channel == kChannelA ? lnQuantity(parameter - eLn1 + 1) : kNone;
    const ParameterSource& source = sourceOf(parameter);
    return channel == kChannelA ? source.rowsA : source.rowsB;
}

const Column<std::uint8_t>& overloadColumn(const IntervalColumns& rows, int channel) {
    return channel == kChannelA ? rows.OverloadedA : rows.OverloadedB;
}

std::string VariableCaption(const Session& session, int parameter, int channel, std::string_view bandText,
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

clsValue cumulativeValue(const clsLog& log, int channel, int parameter, int band) {
    if (parameter == eOverload) return flagValue(log.IsLoggingOverLoaded);
    if (channel == kChannelA) {
        if (isLn(parameter)) return log.LnCumA(parameter - eLn1 + 1, band);
        if (parameter == eLeq) return log.LeqCumA(band);
        if (parameter == eLmin) return log.LminCumA(band);
        if (parameter == eLmax) return log.LmaxCumA(band);
    }
    if (isLn(parameter)) return {};
    const ParameterSource& source = sourceOf(parameter);
    const auto member = channel == kChannelA ? source.cumulativeA : source.cumulativeB;
    return member == nullptr ? clsValue() : log.*member;
}

clsValue intervalValue(const clsLog& log, std::int64_t row, int channel, int parameter, int band) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const auto at = static_cast<std::size_t>(row) - 1;
    if (parameter == eOverload) return flagValue(overloadColumn(rows, channel).at(at) != 0);
    const Quantity quantity = intervalQuantity(channel, parameter);
    clsValue value;
    if (quantity == kNone) return value;
    const Level level = rows.level(quantity, hasBands(quantity) ? band : 0, at);
    value.Value(level.Value);
    value.CalcValue(level.CalcValue);
    return value;
}

void SetPlottableValues(clsLog& log) {
    const PlotTable& possible = log.session().Options.objLogOptions.Plottable;
    clsLogOptions& options = log.objLogOptions;
    for (const int channel : {kChannelA, kChannelB}) {
        for (int parameter = 1; parameter <= ParameterCount; ++parameter) {
            for (const int kind : {kCumulative, kInterval}) {
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
    const auto asInS = [&](int channel, Parameter parameter) {
        for (const int kind : {kCumulative, kInterval}) {
            options.Plottable.set(channel, kind, parameter, s(channel, kind, parameter));
        }
    };
    const auto become = [&](int channel, Parameter parameter, bool flag) {
        options.Plottable.set(channel, kCumulative, parameter, flag);
        options.Plottable.set(channel, kInterval, parameter, flag);
    };

    if (locationType == NoiseAtWorkLocation || IsBrevikS(insName)) {
        for (const Parameter parameter : kPercentiles)
            become(kChannelA, parameter, false);
        for (const Parameter parameter : kExposure)
            asInS(kChannelA, parameter);
    } else if (locationType == EnvironmentLocation || IsBrevikE(insName)) {
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
    for (const int channel : {kChannelA, kChannelB}) {
        asInS(channel, eLeq);
        asInS(channel, eLmax);
    }
}

clsLogOptions displayOptions(const clsLog& log) {
    clsLogOptions options = log.objLogOptions;
    if (!log.IsBrevikMeter()) return options;
    RestrictToBrevik(log.session(), options, log.InsName, log.LocationType());
    for (const int channel : {kChannelA, kChannelB}) {
        for (const int kind : {kCumulative, kInterval}) {
            for (int parameter = 1; parameter <= ParameterCount; ++parameter) {
                const bool isShown =
                    options.IsPlotted(channel, kind, parameter) && options.Plottable(channel, kind, parameter);
                options.IsPlotted.set(channel, kind, parameter, isShown);
            }
        }
    }
    return options;
}

} // namespace kestrane
