// The names of the XML data file that reader and writer share, in tables: one row an element, beside the member it
// stands for, in the order in which the file has them.
#pragma once

#include "model/InstrumentFamilies.h"
#include "model/clsLog.h"
#include "model/clsLogInterval.h"

#include <string_view>

namespace kestrane {

// The figures of a channel that are one number each. lavg is only in the short form; see the writer.
struct FigureElement {
    std::string_view name;
    clsValue LogData::*member;
};

inline constexpr FigureElement kFiguresA[] = {
    {"dose", &LogData::DoseMTCumA}, {"edose", &LogData::DoseETCumA}, {"lex", &LogData::LepdETCumA},
    {"mlex", &LogData::LepdMTCumA}, {"le", &LogData::SELCumA},       {"ltm3", &LogData::Ltm3CumA},
    {"ltm5", &LogData::Ltm5CumA},   {"dh", &LogData::DoseHourA},     {"pa2h", &LogData::Pa2hCumA},
};
inline constexpr FigureElement kLevelsB[] = {{"leq", &LogData::LeqCumB},
                                             {"lmin", &LogData::LminCumB},
                                             {"lmax", &LogData::LmaxCumB},
                                             {"peak", &LogData::PeakCumB}};
inline constexpr FigureElement kFiguresB[] = {
    {"dose", &LogData::DoseMTCumB}, {"edose", &LogData::DoseETCumB}, {"lex", &LogData::LepdETCumB},
    {"plex", &LogData::LepdMTCumB}, {"le", &LogData::SELCumB},       {"dh", &LogData::DoseHourB},
    {"pa2h", &LogData::Pa2hCumB},
};

// The levels of channel A by band.
struct BandedElement {
    std::string_view name;
    BandValues LogData::*member;
    Quantity rows;
};

inline constexpr BandedElement kBanded[] = {{"leq", &LogData::LeqCumA, Quantity::LeqA},
                                            {"lmin", &LogData::LminCumA, Quantity::LminA},
                                            {"lmax", &LogData::LmaxCumA, Quantity::LmaxA}};

// When the extremes happened.
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

// The figures of a row that are one number each. Peak of channel A and the times stand before those of channel A.
struct RowElement {
    std::string_view name;
    Quantity quantity;
};

inline constexpr RowElement kRowFiguresA[] = {{"dose", Quantity::DoseA}, {"lex", Quantity::LepdA},
                                              {"le", Quantity::SELA},    {"ltm3", Quantity::Ltm3A},
                                              {"ltm5", Quantity::Ltm5A}, {"pa2h", Quantity::Pa2hA}};
inline constexpr RowElement kRowFiguresB[] = {
    {"leq", Quantity::LeqB},   {"lmin", Quantity::LminB}, {"lmax", Quantity::LmaxB}, {"peak", Quantity::PeakB},
    {"dose", Quantity::DoseB}, {"lex", Quantity::LepdB},  {"le", Quantity::SELB},    {"pa2h", Quantity::Pa2hB}};

inline constexpr std::string_view kLnNames[] = {"ln1", "ln2", "ln3", "ln4", "ln5", "ln6", "ln7", "ln8", "ln9", "ln10"};

// "f" and the upper-cased label: "f" for band 0, "f1.25K".
std::string_view bandElement(int mode, int band);

// The order of the plotted flags in "disp", which is not that of the parameters.
inline constexpr Parameter kDisplayOrder[] = {
    eLeq,   eLmin,  eLmax,  ePeak,  eLepdET, eDoseET, eDoseMT, eDoseHour, eLtm3,  eLtm5,   eLe_Sel, eOverload, ePa2Hr,
    eLn(1), eLn(2), eLn(3), eLn(4), eLn(5),  eLn(6),  eLn(7),  eLn(8),    eLn(9), eLn(10), eLAvg,   eTWA};

// Takes over what a file says of a parameter's display. An Ln that is not in use is neither plottable nor plotted.
inline void setPlotted(clsLog& log, int channel, int kind, Parameter parameter, bool isPlotted) {
    if (parameter >= eLn1 && parameter <= eLn10) {
        const bool isInUse = log.LnNumberA(parameter - eLn1 + 1) != 0;
        log.objLogOptions.Plottable.set(channel, kind, parameter, isInUse);
        isPlotted = isPlotted && isInUse;
    }
    log.objLogOptions.IsPlotted.set(channel, kind, parameter, isPlotted);
}

// A log and its rows are written in the short form for the Brevik family past this firmware.
inline bool isShortForm(std::string_view insName, float firmware) {
    return IsBrevikMeter(insName) && firmware > 1.05F;
}

} // namespace kestrane
