// The names of the XML data file that the reader and the writer share, in the order in which the file has them. The
// names of parameters, and the members that they stand for, come from the table of the parameters.
#pragma once

#include "model/InstrumentFamilies.h"
#include "model/Parameters.h"
#include "model/clsLog.h"
#include "model/clsLogInterval.h"

#include <array>
#include <string_view>

namespace kestrane {

// The figures of a channel that are single numbers, in the order of the file. lavg is only in the short form (see the
// writer).
struct FigureElement {
    std::string_view name;
    clsValue LogData::*member;
};

template <std::size_t N>
constexpr std::array<FigureElement, N> figureElements(LogChannel channel, const Parameter (&order)[N]) {
    std::array<FigureElement, N> elements{};
    for (std::size_t i = 0; i < N; ++i) {
        const ParameterSource& source = sourceOf(channel, order[i]);
        elements[i] = {source.cumulativeElement, source.cumulative};
    }
    return elements;
}

inline constexpr std::array kFiguresA =
    figureElements(kChannelA, {eDoseMT, eDoseET, eLepdET, eLepdMT, eLe_Sel, eLtm3, eLtm5, eDoseHour, ePa2Hr});
inline constexpr std::array kLevelsB = figureElements(kChannelB, {eLeq, eLmin, eLmax, ePeak});
inline constexpr std::array kFiguresB =
    figureElements(kChannelB, {eDoseMT, eDoseET, eLepdET, eLepdMT, eLe_Sel, eDoseHour, ePa2Hr});

// The levels of channel A that have bands.
struct BandedElement {
    std::string_view name;
    BandValues LogData::*member;
    Quantity rows;
};

constexpr BandedElement bandedElement(Parameter parameter) {
    const ParameterInfo& info = parameterInfo(parameter);
    return {info.A.cumulativeElement, info.bands, info.A.rows};
}

inline constexpr std::array kBanded = {bandedElement(eLeq), bandedElement(eLmin), bandedElement(eLmax)};

// The date and time of each extreme.
struct ExtremeElement {
    std::string_view dateName;
    clsDate LogData::*date;
    std::string_view timeName;
    clsTime LogData::*time;
};

inline constexpr ExtremeElement kExtremes[] = {
    {"lmindt", &LogData::LminCumDateA, "lmintm", &LogData::LminCumTimeA},
    {"lmaxdt", &LogData::LmaxCumDateA, "lmaxtm", &LogData::LmaxCumTimeA},
    {"peakdt", &LogData::PeakCumDateA, "peaktm", &LogData::PeakCumTimeA},
};

// The figures of a row that are single numbers. Peak of channel A and the times come before those of channel A.
struct RowElement {
    std::string_view name;
    Quantity quantity;
};

template <std::size_t N>
constexpr std::array<RowElement, N> rowElements(LogChannel channel, const Parameter (&order)[N]) {
    std::array<RowElement, N> elements{};
    for (std::size_t i = 0; i < N; ++i)
        elements[i] = {sourceOf(channel, order[i]).rowElement, sourceOf(channel, order[i]).rows};
    return elements;
}

inline constexpr std::array kRowFiguresA = rowElements(kChannelA, {eDoseET, eLepdET, eLe_Sel, eLtm3, eLtm5, ePa2Hr});
inline constexpr std::array kRowFiguresB =
    rowElements(kChannelB, {eLeq, eLmin, eLmax, ePeak, eDoseET, eLepdET, eLe_Sel, ePa2Hr});

inline constexpr std::array kLnNames = [] {
    std::array<std::string_view, NumberOfLns> names{};
    for (int ln = 1; ln <= NumberOfLns; ++ln)
        names[static_cast<std::size_t>(ln) - 1] = sourceOf(kChannelA, eLn(ln)).rowElement;
    return names;
}();

// The name of a band's element: "f" for band 0, else "f" and the label in upper case, such as "f1.25K".
std::string_view bandElement(LogMode mode, int band);

// The order of the plotted flags in "disp". It differs from the order of the parameters.
inline constexpr Parameter kDisplayOrder[] = {
    eLeq,   eLmin,  eLmax,  ePeak,  eLepdET, eDoseET, eDoseMT, eDoseHour, eLtm3,  eLtm5,   eLe_Sel, eOverload, ePa2Hr,
    eLn(1), eLn(2), eLn(3), eLn(4), eLn(5),  eLn(6),  eLn(7),  eLn(8),    eLn(9), eLn(10), eLAvg,   eTWA};

// Stores what a file says about showing a parameter. An Ln that is not in use is neither plottable nor plotted.
inline void setPlotted(clsLog& log, LogChannel channel, FigureKind kind, Parameter parameter, bool isPlotted) {
    if (const int ln = lnOf(parameter); ln != 0) {
        const bool isInUse = log.LnNumberA(ln) != 0;
        log.objLogOptions.Plottable.set(channel, kind, parameter, isInUse);
        isPlotted = isPlotted && isInUse;
    }
    log.objLogOptions.IsPlotted.set(channel, kind, parameter, isPlotted);
}

// Whether a log and its rows are written in the short form. Logs of early firmware, up to 1.05, are not.
inline bool isShortForm(std::string_view insName, float firmware) {
    return hasTrait(insName, Trait::WritesShortForm) && firmware > 1.05F;
}

} // namespace kestrane
