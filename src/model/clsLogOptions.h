// Which quantities of a log can be shown, which ones are shown, and how charts look. Each log owns one; the
// application's options own the set that new logs start from.
#pragma once

#include "model/Parameter.h"
#include "model/clsFont.h"
#include "platform/Settings.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <vector>

namespace kestrane {

constexpr std::int16_t eChartAs2D = 0;
constexpr std::int16_t eChartAs3D = 1;

// A flag for each channel (1 A, 2 B), kind (1 cumulative, 2 interval) and parameter (1..ParameterCount).
class PlotTable {
public:
    bool operator()(LogChannel channel, FigureKind kind, Parameter parameter) const {
        return flags_[index(channel, kind, parameter)];
    }

    void set(LogChannel channel, FigureKind kind, Parameter parameter, bool flag) {
        flags_[index(channel, kind, parameter)] = flag;
    }

    bool operator==(const PlotTable&) const = default;

private:
    static std::size_t index(LogChannel channel, FigureKind kind, Parameter parameter); // raises 9 outside the table

    std::bitset<4 * static_cast<std::size_t>(ParameterCount)> flags_;
};

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

    // Reads every key of the store, with the present value as the default. A text that cannot be converted leaves the
    // value as it is, and its key is added to badKeys. A line width below 10 becomes 10, one above 60 becomes 60.
    void GetFromRegistry(const SettingsStore& store, std::vector<std::string>& badKeys);
    void SaveToRegistry(SettingsStore& store) const;
};

} // namespace kestrane
