#include "calc/LevelOffset.h"

#include "calc/Recalculation.h"
#include "model/Acoustics.h"
#include "model/Parameters.h"

#include <cmath>

namespace kestrane {

namespace {

constexpr float kLeastLevel = 0.0001F; // dB; 0 would mean that there is no level

class Offset {
public:
    explicit Offset(double decibels) : decibels_(decibels) {}

    // The figure behind the change. exchange is the rate in dB that a dose was made with; a dose without one stays.
    float of(float figure, ParameterUnit unit, int exchange) const {
        if (figure == 0) return figure;
        switch (unit) {
        case ParameterUnit::Decibels: {
            const auto level = static_cast<float>(figure + decibels_);
            return level == 0 ? kLeastLevel : level;
        }
        case ParameterUnit::Percent:
            return exchange == 0 ? figure : static_cast<float>(figure * std::exp2(decibels_ / exchange));
        case ParameterUnit::Pa2Hours:
            return static_cast<float>(figure * energyOf(decibels_));
        case ParameterUnit::Flag:
            break;
        }
        return figure;
    }

private:
    double decibels_;
};

void changeRows(clsLog& log, const Offset& offset, Quantity quantity, ParameterUnit unit) {
    IntervalColumns& rows = log.LogIntervals.Columns();
    const int reported = reportedRule(log).Exchange;
    for (int band = 0; band <= (hasBands(quantity) ? log.e("Last") : 0); ++band) {
        if (rows.levels(quantity, band).empty()) continue;
        const std::span<Level> levels = rows.writeLevels(quantity, band);
        for (std::size_t row = 0; row < levels.size(); ++row) {
            const int own = rows.Exchange.at(row);
            const int exchange = own == 0 ? reported : own; // nothing computes a row's dose anew
            levels[row] = {offset.of(levels[row].CalcValue, unit, exchange),
                           offset.of(levels[row].Value, unit, exchange)};
        }
    }
}

} // namespace

void addToLevels(clsLog& log, double decibels) {
    const Offset offset(decibels);
    const int reported = reportedRule(log).Exchange;
    const float before = log.LeqCumA(0).CalcValue();
    const auto changeValue = [&](clsValue& value, ParameterUnit unit) {
        const bool isComputed = value.CalcValue() != value.Value();
        const float computed = offset.of(value.CalcValue(), unit, isComputed ? log.Exchange : reported);
        value.Value(offset.of(value.Value(), unit, reported));
        value.CalcValue(computed);
    };
    for (const ParameterInfo& info : parameters()) {
        const auto change = [&](clsValue& value) { changeValue(value, info.unit); };
        if (info.bands != nullptr) (log.*info.bands).forEach(change);
        for (const ParameterSource* source : {&info.A, &info.B}) {
            if (source->cumulative != nullptr) change(log.*source->cumulative);
            if (source->rows != Quantity::End) changeRows(log, offset, source->rows, info.unit);
        }
    }
    log.LnCumA.forEach([&](clsValue& value) { changeValue(value, ParameterUnit::Decibels); });
    for (clsDoseLogSample& row : log.DoseLogIntervals)
        if (row.Leq.CalcValue() == before) row.Leq.Value(log.LeqCumA(0).CalcValue());
}

} // namespace kestrane
