// Which quantities of a log can be shown, which are shown, and how charts look. Each log owns one; the application's
// options own the set that new logs start from.
#pragma once

#include "model/clsFont.h"
#include "platform/Settings.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

enum Parameter : int {
    eLeq = 1,
    eLmin,
    eLmax,
    ePeak,
    eLepdET,
    eLepdMT,
    eDoseET,
    eDoseMT,
    eDoseHour,
    eLtm3,
    eLtm5,
    eLe_Sel,
    ePa2Hr,
    eOverload,
    eLn1,
    eLn10 = eLn1 + 9,
    eLAvg,
    eTWA
};

constexpr int ParameterCount = 26;

constexpr Parameter eLn(int ln) {
    return static_cast<Parameter>(eLn1 + ln - 1);
} // 1..10

constexpr int kChannelA = 1;
constexpr int kChannelB = 2;
constexpr int kCumulative = 1;
constexpr int kInterval = 2;

constexpr std::int16_t eChartAs2D = 0;
constexpr std::int16_t eChartAs3D = 1;

// A flag for each channel (1 A, 2 B), kind (1 cumulative, 2 interval) and parameter (1..ParameterCount).
class PlotTable {
public:
    bool operator()(int channel, int kind, int parameter) const { return flags_[index(channel, kind, parameter)]; }

    void set(int channel, int kind, int parameter, bool flag) { flags_[index(channel, kind, parameter)] = flag; }

    bool operator==(const PlotTable&) const = default;

private:
    static std::size_t index(int channel, int kind, int parameter); // raises 9 outside the table

    std::bitset<4 * static_cast<std::size_t>(ParameterCount)> flags_;
};

// What is known of a parameter by itself, in the order of the parameters: its key in the settings store, its element in
// data files (empty: none), and the pairs of channel and kind where it is plottable and shown by default, as bits of
// kPlotAC and so on.
constexpr unsigned kPlotAC = 1;
constexpr unsigned kPlotAI = 2;
constexpr unsigned kPlotBC = 4;
constexpr unsigned kPlotBI = 8;

struct ParameterInfo {
    Parameter parameter;
    std::string_view name;
    std::string_view settingsKey;
    std::string_view element;
    unsigned plottable;
    unsigned shown;
};

const ParameterInfo& parameterInfo(int parameter); // 1..ParameterCount; raises 9 outside

class clsLogOptions {
public:
    clsLogOptions();

    PlotTable Plottable;    // the log can have this quantity at all
    PlotTable IsPlotted;    // the user wants it shown
    float ExposureTime = 8; // shift length, hours
    std::int16_t ChartStyle = eChartAs2D;
    std::int16_t LineWidth = 20; // 10..60
    clsFont NoteFont, LegendFont, AxisFont, TitleFont;

    void Copy(const clsLogOptions& other) { *this = other; }

    // Reads every key of the store, with the present value as default. A text that cannot be converted leaves the
    // value; the keys of such texts are added to badKeys. A line width outside 10 to 60 is held to it.
    void GetFromRegistry(const SettingsStore& store, std::vector<std::string>& badKeys);
    void SaveToRegistry(SettingsStore& store) const;
};

} // namespace kestrane
