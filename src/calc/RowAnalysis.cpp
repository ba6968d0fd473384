#include "calc/RowAnalysis.h"

#include "model/Acoustics.h"
#include "model/RowClock.h"

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr double kLongestPause = 1; // seconds
constexpr double kSecondsOfHour = 3600;

double secondsOf(std::span<const AnalysedRow> rows) {
    double seconds = 0;
    for (const AnalysedRow& row : rows)
        seconds += row.Seconds;
    return seconds;
}

// The weight of a row in a mean: its length, or 1 when no row has a length.
double weightOf(const AnalysedRow& row, double seconds) {
    return seconds > 0 ? row.Seconds : 1;
}

double meanLevel(std::span<const AnalysedRow> rows) {
    const double seconds = secondsOf(rows);
    double energy = 0;
    double weights = 0;
    for (const AnalysedRow& row : rows) {
        energy += weightOf(row, seconds) * energyOf(row.Level);
        weights += weightOf(row, seconds);
    }
    return levelOf(energy / weights);
}

bool followsOn(const AnalysedRow& before, const AnalysedRow& row) {
    return row.Number == before.Number + 1 &&
           static_cast<double>(row.Begin - before.Begin) <= before.Seconds + kLongestPause;
}

// The sum of a queue of energies, computed by additions only. Subtracting a loud row again would leave its rounding
// error in the sum of quiet ones.
class QueueSum {
public:
    void push(double value) {
        back_.push_back(value);
        backSum_ += value;
    }

    void pop() {
        if (front_.empty()) {
            double sum = 0;
            for (; !back_.empty(); back_.pop_back())
                front_.push_back(sum += back_.back());
            backSum_ = 0;
        }
        front_.pop_back();
    }

    double sum() const { return backSum_ + (front_.empty() ? 0 : front_.back()); }

private:
    std::vector<double> front_; // sums, each from the end of the front to here
    std::vector<double> back_;
    double backSum_ = 0;
};

// The number of a level's class. A level on the edge of two classes, in the single precision in which levels are kept,
// belongs to the upper one.
std::int64_t classOf(double level, double width) {
    const double number = std::floor(level / width);
    const bool isOnNext = static_cast<float>((number + 1) * width) <= static_cast<float>(level);
    return static_cast<std::int64_t>(number) + (isOnNext ? 1 : 0);
}

} // namespace

std::vector<AnalysedRow> analysedRows(const clsLog& log) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const auto levels = rows.levels(Quantity::LeqA, 0);
    std::vector<AnalysedRow> counting;
    counting.reserve(levels.size());
    for (std::size_t row = 0; row < levels.size(); ++row) {
        if (levels[row].CalcValue == 0 || rows.isExcluded.at(row) != 0) continue;
        counting.push_back({static_cast<std::int64_t>(row) + 1, rowBegin(rows, row),
                            static_cast<double>(rowSeconds(rows, row, log.Interval)), levels[row].CalcValue,
                            rows.level(Quantity::LmaxA, 0, row).CalcValue,
                            rows.level(Quantity::LminA, 0, row).CalcValue,
                            rows.level(Quantity::PeakA, 0, row).CalcValue});
    }
    return counting;
}

StretchFigures stretchFigures(std::span<const AnalysedRow> rows, double criterion, double exchange) {
    StretchFigures figures;
    if (rows.empty()) return figures;
    figures.Seconds = secondsOf(rows);
    figures.LAeq = meanLevel(rows);
    if (figures.Seconds > 0) figures.LE = soundExposureLevel(*figures.LAeq, figures.Seconds);
    if (figures.Seconds > 0 && exchange > 0) figures.Dose = 0;
    for (const AnalysedRow& row : rows) {
        if (figures.Dose) *figures.Dose += dosePart(row.Level, row.Seconds / kSecondsOfHour, {criterion, exchange});
        if (row.Lmax != 0) figures.Lmax = std::max(figures.Lmax.value_or(row.Lmax), row.Lmax);
        if (row.Lmin != 0) figures.Lmin = std::min(figures.Lmin.value_or(row.Lmin), row.Lmin);
        if (row.Peak != 0) figures.Peak = std::max(figures.Peak.value_or(row.Peak), row.Peak);
    }
    return figures;
}

std::size_t endOfRun(std::span<const AnalysedRow> rows, std::size_t first) {
    std::size_t behind = first + 1;
    while (behind < rows.size() && followsOn(rows[behind - 1], rows[behind]))
        ++behind;
    return behind;
}

WorstStretches worstStretches(std::span<const AnalysedRow> rows, double seconds) {
    WorstStretches worst;
    double highest = 0;
    double lowest = 0;
    const auto take = [&](const Stretch& stretch, double mean) {
        if (!worst.Loudest || mean > highest) {
            worst.Loudest = stretch;
            highest = mean;
        }
        if (!worst.Quietest || mean < lowest) {
            worst.Quietest = stretch;
            lowest = mean;
        }
    };
    for (std::size_t first = 0; first < rows.size();) {
        const std::size_t end = endOfRun(rows, first);
        QueueSum energy;
        double length = 0;
        std::size_t behind = first;
        for (; first < end; ++first) {
            while (behind < end && length < seconds) {
                energy.push(rows[behind].Seconds * energyOf(rows[behind].Level));
                length += rows[behind++].Seconds;
            }
            if (length < seconds) break;
            take({first, behind}, energy.sum() / length);
            energy.pop();
            length -= rows[first].Seconds; // lengths are whole seconds, so this is exact
        }
        first = end;
    }
    return worst;
}

std::vector<Stretch> eventsOf(std::span<const AnalysedRow> rows, EventRule rule) {
    const auto isLoud = [&](const AnalysedRow& row) {
        // Compared in the precision in which levels are kept.
        return static_cast<float>(row.Level) >= static_cast<float>(rule.Level);
    };
    std::vector<Stretch> events;
    for (std::size_t first = 0; first < rows.size();) {
        if (!isLoud(rows[first])) {
            ++first;
            continue;
        }
        std::size_t behind = first + 1;
        while (behind < rows.size() && isLoud(rows[behind]) && followsOn(rows[behind - 1], rows[behind]))
            ++behind;
        if (secondsOf(rows.subspan(first, behind - first)) >= rule.Seconds) events.push_back({first, behind});
        first = behind;
    }
    return events;
}

std::optional<double> levelExceeded(std::span<const AnalysedRow> rows, double percent) {
    if (rows.empty()) return std::nullopt;
    std::vector<AnalysedRow> sorted(rows.begin(), rows.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const AnalysedRow& a, const AnalysedRow& b) { return a.Level > b.Level; });
    const double seconds = secondsOf(rows);
    double all = 0;
    for (const AnalysedRow& row : sorted)
        all += weightOf(row, seconds);
    const double wanted = all * percent / 100;
    double passed = 0;
    double middleBefore = 0;
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        const double weight = weightOf(sorted[i], seconds);
        const double middle = passed + weight / 2;
        if (wanted <= middle) {
            if (i == 0 || middle == middleBefore) return sorted[i].Level;
            const double part = (wanted - middleBefore) / (middle - middleBefore);
            return sorted[i - 1].Level + part * (sorted[i].Level - sorted[i - 1].Level);
        }
        passed += weight;
        middleBefore = middle;
    }
    return sorted.back().Level;
}

std::vector<LevelClass> distributionOf(std::span<const AnalysedRow> rows, double width) {
    std::vector<LevelClass> classes;
    if (rows.empty()) return classes;
    const auto byLevel = [](const AnalysedRow& a, const AnalysedRow& b) { return a.Level < b.Level; };
    const auto [lowest, highest] = std::minmax_element(rows.begin(), rows.end(), byLevel);
    const std::int64_t first = classOf(lowest->Level, width);
    const std::int64_t last = classOf(highest->Level, width);
    for (std::int64_t number = first; number <= last; ++number)
        classes.push_back({static_cast<double>(number) * width, 0, 0});
    for (const AnalysedRow& row : rows)
        classes[static_cast<std::size_t>(classOf(row.Level, width) - first)].Seconds += row.Seconds;
    double above = 0;
    for (auto item = classes.rbegin(); item != classes.rend(); ++item)
        item->Above = above += item->Seconds;
    return classes;
}

double exposureOf(std::span<const AnalysedRow> rows) {
    const double seconds = secondsOf(rows);
    double sum = 0;
    for (const AnalysedRow& row : rows)
        sum += weightOf(row, seconds) * energyOf(row.Level);
    return sum;
}

} // namespace kestrane
