// A log for tests of tables and charts: nothing is plotted until the test says so, and its rows begin at 09:00 on
// 3 June 2024, one interval after the other.
#pragma once

#include "TestSession.h"
#include "model/LogParameters.h"
#include "model/clsLog.h"
#include "platform/Calendar.h"

#include <initializer_list>

namespace kestrane {

struct ShownLog : TestSession {
    clsLog log{session};

    explicit ShownLog(LogMode mode = modeBroadband, Locale locale = {}) : TestSession(std::move(locale)) {
        log.Mode(mode);
        log.Name = "Yard";
        log.InsName = "Corvane";
        log.FreqWeightA("A");
        log.Interval = 60;
        log.objLogOptions.IsPlotted = PlotTable();
    }

    void addRows(std::size_t count) {
        IntervalColumns rows;
        rows.resize(count, count);
        for (std::size_t row = 0; row < count; ++row) {
            rows.set(rows.StartDate, row, fromCivil({2024, 6, 3}));
            rows.set(rows.StartTime, row, 9 * 3600 + static_cast<std::int32_t>(row) * log.Interval);
        }
        log.LogIntervals.copyData(rows, 0, 0);
    }

    void plot(LogChannel channel, FigureKind kind, std::initializer_list<Parameter> parameters) {
        for (const Parameter parameter : parameters)
            log.objLogOptions.IsPlotted.set(channel, kind, parameter, true);
    }

    void setLevel(Quantity quantity, int band, std::size_t row, float level) {
        log.LogIntervals.Columns().setLevel(quantity, band, row, {level, level});
    }
};

} // namespace kestrane
