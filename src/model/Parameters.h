// The one table of the parameters: what each is called, how it is shown, what the data file calls it, and where a log
// keeps its figures. Captions, charts, tables, the panel, reports, JSON, the data file and the settings all read it, so
// that a new parameter is one row here and the members and columns that it names. The functions that fetch and caption
// a figure by this table are in LogParameters.h.
#pragma once

#include "model/Parameter.h"
#include "model/Session.h"
#include "model/clsLog.h"

#include <array>
#include <string_view>

namespace kestrane {

enum class ParameterUnit { Decibels, Percent, Pa2Hours, Flag };

// How reports write a figure.
constexpr std::string_view kDecibelFormat = "##0.0 dB";
constexpr std::string_view kPercentFormat = "##0.0 %";
constexpr std::string_view kPa2HoursFormat = "0.000";

constexpr std::string_view reportFormat(ParameterUnit unit) {
    return unit == ParameterUnit::Percent    ? kPercentFormat
           : unit == ParameterUnit::Pa2Hours ? kPa2HoursFormat
                                             : kDecibelFormat;
}

// Where the figures of a parameter on one channel are. An empty name means that the channel has no such figure.
struct ParameterSource {
    std::string_view cumulativeName{};       // the member of the log, as JSON names it
    clsValue LogData::*cumulative = nullptr; // null when there is none or it is kept by band
    std::string_view cumulativeElement{};    // in the data file
    std::string_view rowName{};              // the member of a row, as JSON names it
    Quantity rows = Quantity::End;           // the columns of the rows; End for none and for the overload flag
    std::string_view rowElement{};           // in the data file
};

// The bits of the pairs of channel (A, B) and kind (C cumulative, I interval), for where a parameter can be plotted and
// where it is shown by default.
constexpr unsigned kPlotAC = 1;
constexpr unsigned kPlotAI = 2;
constexpr unsigned kPlotBC = 4;
constexpr unsigned kPlotBI = 8;
constexpr unsigned kPlotAll = kPlotAC | kPlotAI | kPlotBC | kPlotBI;
constexpr unsigned kPlotCumulative = kPlotAC | kPlotBC;
constexpr unsigned kPlotA = kPlotAC | kPlotAI;

struct ParameterInfo {
    Parameter parameter;
    std::string_view name;
    std::string_view settingsKey;
    std::string_view displayElement;  // of the flag in the data file that says whether the user wants it shown
    std::string LabelTexts::*caption; // null for "Ln" and its number
    ParameterUnit unit;
    BandValues LogData::*bands; // channel A by band; null for one figure, and for an Ln
    unsigned plottable, shown;
    ParameterSource A{}, B{};
};

namespace parameter_rows {

using L = LabelTexts;
using D = LogData;
using Q = Quantity;
using U = ParameterUnit;

// The ten Lns differ only in their number.
constexpr ParameterInfo ln(int number, std::string_view name, std::string_view key, std::string_view element) {
    return {eLn(number),
            name,
            key,
            element,
            nullptr,
            U::Decibels,
            nullptr,
            kPlotA,
            number <= 3 ? kPlotA : 0,
            {"", nullptr, element, "", lnQuantity(number), element}};
}

// clang-format off
constexpr std::array<ParameterInfo, static_cast<std::size_t>(ParameterCount)> kAll = {{
    {eLeq, "eLeq", "ShowLeq", "leq", &L::Leq, U::Decibels, &D::LeqCumA, kPlotAll, kPlotAll,
     {"LeqCumA", nullptr, "leq", "LeqA", Q::LeqA, "leq"}, {"LeqCumB", &D::LeqCumB, "leq", "LeqB", Q::LeqB, "leq"}},
    {eLmin, "eLmin", "ShowLmin", "lmin", &L::Lmin, U::Decibels, &D::LminCumA, kPlotAll, kPlotAll,
     {"LminCumA", nullptr, "lmin", "LminA", Q::LminA, "lmin"}, {"LminCumB", &D::LminCumB, "lmin", "LminB", Q::LminB, "lmin"}},
    {eLmax, "eLmax", "ShowLmax", "lmax", &L::Lmax, U::Decibels, &D::LmaxCumA, kPlotAll, kPlotAll,
     {"LmaxCumA", nullptr, "lmax", "LmaxA", Q::LmaxA, "lmax"}, {"LmaxCumB", &D::LmaxCumB, "lmax", "LmaxB", Q::LmaxB, "lmax"}},
    {ePeak, "ePeak", "ShowPeak", "peak", &L::Peak, U::Decibels, nullptr, kPlotAll, kPlotAll,
     {"PeakCumA", &D::PeakCumA, "peak", "PeakA", Q::PeakA, "peak"}, {"PeakCumB", &D::PeakCumB, "peak", "PeakB", Q::PeakB, "peak"}},
    {eLepdET, "eLepdET", "ShowLex", "lex", &L::LepdET, U::Decibels, nullptr, kPlotAll, kPlotAll,
     {"LepdETCumA", &D::LepdETCumA, "lex", "LepdA", Q::LepdA, "lex"}, {"LepdETCumB", &D::LepdETCumB, "lex", "LepdB", Q::LepdB, "lex"}},
    {eLepdMT, "eLepdMT", "ShowLepdMT", "", &L::LepdMT, U::Decibels, nullptr, kPlotCumulative, 0,
     {"LepdMTCumA", &D::LepdMTCumA, "mlex"}, {"LepdMTCumB", &D::LepdMTCumB, "plex"}},
    {eDoseET, "eDoseET", "ShowDose", "dose", &L::DoseET, U::Percent, nullptr, kPlotAll, kPlotAll,
     {"DoseETCumA", &D::DoseETCumA, "edose", "DoseA", Q::DoseA, "dose"}, {"DoseETCumB", &D::DoseETCumB, "edose", "DoseB", Q::DoseB, "dose"}},
    {eDoseMT, "eDoseMT", "ShowProjDose", "pdose", &L::DoseMT, U::Percent, nullptr, kPlotCumulative, 0,
     {"DoseMTCumA", &D::DoseMTCumA, "dose"}, {"DoseMTCumB", &D::DoseMTCumB, "dose"}},
    {eDoseHour, "eDoseHour", "ShowDoseHour", "dose-hour", &L::DoseHour, U::Percent, nullptr, kPlotCumulative, kPlotCumulative,
     {"DoseHourA", &D::DoseHourA, "dh"}, {"DoseHourB", &D::DoseHourB, "dh"}},
    {eLtm3, "eLtm3", "ShowLtm3", "ltm3", &L::Ltm3, U::Decibels, nullptr, kPlotA, 0,
     {"Ltm3CumA", &D::Ltm3CumA, "ltm3", "Ltm3A", Q::Ltm3A, "ltm3"}},
    {eLtm5, "eLtm5", "ShowLtm5", "ltm5", &L::Ltm5, U::Decibels, nullptr, kPlotA, 0,
     {"Ltm5CumA", &D::Ltm5CumA, "ltm5", "Ltm5A", Q::Ltm5A, "ltm5"}},
    {eLe_Sel, "eLe_Sel", "ShowLe", "le", &L::SEL, U::Decibels, nullptr, kPlotAll, 0,
     {"SELCumA", &D::SELCumA, "le", "SELA", Q::SELA, "le"}, {"SELCumB", &D::SELCumB, "le", "SELB", Q::SELB, "le"}},
    {ePa2Hr, "ePa2Hr", "ShowPa2Hr", "pa2h", &L::Pa2h, U::Pa2Hours, nullptr, kPlotAll, 0,
     {"Pa2hCumA", &D::Pa2hCumA, "pa2h", "Pa2hA", Q::Pa2hA, "pa2h"}, {"Pa2hCumB", &D::Pa2hCumB, "pa2h", "Pa2hB", Q::Pa2hB, "pa2h"}},
    {eOverload, "eOverload", "ShowOverload", "overload", &L::Overload, U::Flag, nullptr, kPlotAll, 0},
    ln(1, "eLn1", "ShowLn1", "ln1"), ln(2, "eLn2", "ShowLn2", "ln2"), ln(3, "eLn3", "ShowLn3", "ln3"),
    ln(4, "eLn4", "ShowLn4", "ln4"), ln(5, "eLn5", "ShowLn5", "ln5"), ln(6, "eLn6", "ShowLn6", "ln6"),
    ln(7, "eLn7", "ShowLn7", "ln7"), ln(8, "eLn8", "ShowLn8", "ln8"), ln(9, "eLn9", "ShowLn9", "ln9"),
    ln(10, "eLn10", "ShowLn10", "ln10"),
    {eLAvg, "eLAvg", "ShowLAvg", "lavg", &L::LAvg, U::Decibels, nullptr, kPlotAll, 0,
     {"LAvgCumA", &D::LAvgCumA, "lavg"}},
    {eTWA, "eTWA", "ShowTWA", "twa", &L::TWA, U::Decibels, nullptr, kPlotAll, 0,
     {"TWACumA", &D::TWACumA}},
}};
// clang-format on

} // namespace parameter_rows

// Indexed by number less 1: parameters()[0] is eLeq.
constexpr const std::array<ParameterInfo, static_cast<std::size_t>(ParameterCount)>& parameters() {
    return parameter_rows::kAll;
}

// 1..ParameterCount; raises 9 outside.
constexpr const ParameterInfo& parameterInfo(Parameter parameter) {
    if (parameter < 1 || parameter > ParameterCount) raiseIndexOutOfRange();
    return parameters()[static_cast<std::size_t>(parameter) - 1];
}

constexpr const ParameterSource& sourceOf(LogChannel channel, Parameter parameter) {
    const ParameterInfo& info = parameterInfo(parameter);
    return channel == kChannelA ? info.A : info.B;
}

// Whether the parameter has a figure for each band on channel A: Leq, Lmin, Lmax and the Lns.
constexpr bool isBanded(Parameter parameter) {
    return parameterInfo(parameter).bands != nullptr || lnOf(parameter) != 0;
}

} // namespace kestrane
