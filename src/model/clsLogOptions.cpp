#include "model/clsLogOptions.h"

#include "model/Parameters.h"
#include "model/SettingsText.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace kestrane {

namespace {

struct FontKeys {
    clsFont clsLogOptions::*font;
    std::string_view name;
    std::string_view size;
};

constexpr FontKeys kFonts[] = {
    {&clsLogOptions::NoteFont, "CNFName", "CNFSize"},
    {&clsLogOptions::LegendFont, "CLFName", "CLFSize"},
    {&clsLogOptions::AxisFont, "CAFName", "CAFSize"},
    {&clsLogOptions::TitleFont, "CTFName", "CTFSize"},
};

constexpr unsigned plotBit(LogChannel channel, FigureKind kind) {
    return 1U << static_cast<unsigned>(2 * (channel - kChannelA) + kind - kCumulative);
}

// Calls visit(settings key, channel, kind, parameter) for every entry of the plotted table, in the order of the store.
template <class Visit>
void forEachPlotKey(Visit visit) {
    for (const LogChannel channel : kChannels) {
        for (const FigureKind kind : kFigureKinds) {
            const std::string suffix =
                std::string(channel == kChannelA ? "A" : "B") + "-" + (kind == kCumulative ? "C" : "I");
            for (const ParameterInfo& info : parameters()) {
                visit(std::string(info.settingsKey) + suffix, channel, kind, info.parameter);
            }
        }
    }
}

} // namespace

std::size_t PlotTable::index(LogChannel channel, FigureKind kind, Parameter parameter) {
    if (channel < 1 || channel > 2 || kind < 1 || kind > 2 || parameter < 1 || parameter > ParameterCount) {
        raiseIndexOutOfRange();
    }
    return static_cast<std::size_t>((channel - 1) * 2 + kind - 1) * ParameterCount +
           static_cast<std::size_t>(parameter - 1);
}

clsLogOptions::clsLogOptions() :
    NoteFont{"Courier New", 8}, LegendFont{"Arial", 8}, AxisFont{"Arial", 8}, TitleFont{"Arial", 12} {
    for (const ParameterInfo& info : parameters()) {
        for (const LogChannel channel : kChannels) {
            for (const FigureKind kind : kFigureKinds) {
                const unsigned bit = plotBit(channel, kind);
                Plottable.set(channel, kind, info.parameter, (info.plottable & bit) != 0);
                IsPlotted.set(channel, kind, info.parameter, (info.shown & bit) != 0);
            }
        }
    }
}

void clsLogOptions::GetFromRegistry(const SettingsStore& store, std::vector<std::string>& badKeys) {
    readSetting(store, "ShiftLength", ExposureTime, badKeys);
    readSetting(store, "ChartStyle", ChartStyle, badKeys);
    readSetting(store, "LineWidth", LineWidth, badKeys);
    LineWidth = std::clamp<std::int16_t>(LineWidth, 10, 60);
    forEachPlotKey([&](const std::string& key, LogChannel channel, FigureKind kind, Parameter parameter) {
        bool isPlotted = IsPlotted(channel, kind, parameter);
        readSetting(store, key, isPlotted, badKeys);
        IsPlotted.set(channel, kind, parameter, isPlotted);
    });
    for (const FontKeys& keys : kFonts) {
        readSetting(store, keys.name, (this->*keys.font).Name, badKeys);
        readSetting(store, keys.size, (this->*keys.font).Size, badKeys);
    }
}

void clsLogOptions::SaveToRegistry(SettingsStore& store) const {
    writeSetting(store, "ShiftLength", ExposureTime);
    writeSetting(store, "ChartStyle", ChartStyle);
    writeSetting(store, "LineWidth", LineWidth);
    forEachPlotKey([&](const std::string& key, LogChannel channel, FigureKind kind, Parameter parameter) {
        writeSetting(store, key, IsPlotted(channel, kind, parameter));
    });
    for (const FontKeys& keys : kFonts) {
        writeSetting(store, keys.name, (this->*keys.font).Name);
        writeSetting(store, keys.size, (this->*keys.font).Size);
    }
}

} // namespace kestrane
