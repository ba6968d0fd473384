#include "calc/RowAnalysis.h"

#include "model/Acoustics.h"
#include "model/RowClock.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace kestrane {

namespace {

using Rows = std::span<const AnalysedRow>;

constexpr double kLongestPause = 1; // seconds
constexpr double kLoudest = 1000;   // dB; what is beyond comes of a damaged file
constexpr double kSecondsOfHour = 3600;

double secondsOf(Rows rows) {
    double seconds = 0;
    for (const AnalysedRow& row : rows)
        seconds += row.Seconds;
    return seconds;
}

// The weight of a row in a mean: its length, or 1 when no row has a length.
double weightOf(const AnalysedRow& row, double seconds) {
    return seconds > 0 ? row.Seconds : 1;
}

void addExtremes(StretchFigures& figures, const AnalysedRow& row) {
    if (row.Lmax != 0) figures.Lmax = std::max(figures.Lmax.value_or(row.Lmax), row.Lmax);
    if (row.Lmin != 0) figures.Lmin = std::min(figures.Lmin.value_or(row.Lmin), row.Lmin);
    if (row.Peak != 0) figures.Peak = std::max(figures.Peak.value_or(row.Peak), row.Peak);
}

// The figures of several stretches together.
StretchFigures figuresOf(std::initializer_list<Rows> parts, double criterion, double exchange) {
    StretchFigures figures;
    for (const Rows& part : parts)
        figures.Seconds += secondsOf(part);
    double energy = 0;
    double weights = 0;
    double dose = 0;
    const bool hasDose = figures.Seconds > 0 && exchange > 0;
    for (const Rows& part : parts) {
        for (const AnalysedRow& row : part) {
            const double weight = weightOf(row, figures.Seconds);
            energy += weight * energyOf(row.Level);
            weights += weight;
            if (hasDose) dose += dosePart(row.Level, row.Seconds / kSecondsOfHour, {criterion, exchange});
            addExtremes(figures, row);
        }
    }
    if (weights > 0) figures.LAeq = levelOf(energy / weights);
    if (figures.Seconds > 0) figures.LE = soundExposureLevel(*figures.LAeq, figures.Seconds);
    if (hasDose) figures.Dose = dose;
    return figures;
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

// Rows in the order of falling levels, those of the same level in their own order. Only the part around the level that
// is asked for is sorted, because sorting hundreds of thousands of rows takes too long for a range that is being
// dragged.
class LouderFirst {
public:
    explicit LouderFirst(Rows rows) : rows_(rows), seconds_(secondsOf(rows)), order_(rows.size()) {
        for (std::size_t i = 0; i < rows.size(); ++i)
            order_[i] = {rows[i].Level, i};
    }

    // The level at a share (0..1) of the time, interpolated between the middles of the rows.
    double levelAt(double share) {
        double all = 0;
        for (const Place& place : order_)
            all += weight(place);
        const double wanted = all * share;
        const auto [begin, end, passedBefore] = sortAround(wanted);
        double passed = passedBefore;
        double middleBefore = 0;
        for (std::size_t i = begin; i < end; ++i) {
            const double middle = passed + weight(order_[i]) / 2;
            if (wanted <= middle) {
                if (i == begin || middle == middleBefore) return order_[i].level;
                const double part = (wanted - middleBefore) / (middle - middleBefore);
                return order_[i - 1].level + part * (order_[i].level - order_[i - 1].level);
            }
            passed += weight(order_[i]);
            middleBefore = middle;
        }
        return order_[end - 1].level;
    }

private:
    struct Place {
        double level;
        std::size_t index;

        bool operator<(const Place& other) const {
            return level != other.level ? level > other.level : index < other.index;
        }
    };

    struct Part {
        std::size_t begin, end;
        double passed; // the weight of all rows in front of it
    };

    double weight(const Place& place) const { return weightOf(rows_[place.index], seconds_); }

    // Sorts a small part that has the two rows whose middles are around wanted, or the first or last row of all.
    Part sortAround(double wanted) {
        constexpr std::size_t kSmall = 64;
        Part part = {0, order_.size(), 0};
        const auto at = [this](std::size_t i) { return order_.begin() + static_cast<std::ptrdiff_t>(i); };
        while (part.end - part.begin > kSmall) {
            const std::size_t middle = part.begin + (part.end - part.begin) / 2;
            std::nth_element(at(part.begin), at(middle), at(part.end));
            double passed = part.passed;
            for (std::size_t i = part.begin; i < middle; ++i)
                passed += weight(order_[i]);
            if (wanted <= passed + weight(order_[middle]) / 2) {
                part.end = middle + 1;
            } else {
                part.begin = middle;
                part.passed = passed;
            }
        }
        std::sort(at(part.begin), at(part.end));
        return part;
    }

    Rows rows_;
    double seconds_;
    std::vector<Place> order_;
};

// The number of a level's class. A level on the edge of two classes, in the single precision in which levels are kept,
// belongs to the upper one.
double classOf(double level, double width) {
    const double number = std::floor(level / width);
    const bool isOnNext = static_cast<float>((number + 1) * width) <= static_cast<float>(level);
    return number + (isOnNext ? 1 : 0);
}

// The level of each row, in dB; 0 for a row without one. Empty when no row has any.
std::vector<float> levelsOfRows(const clsLog& log, LevelsFrom origin) {
    if (origin == LevelsFrom::Bands) return levelsOfRowsFromBands(log, Quantity::LeqA, "A");
    if (origin == LevelsFrom::Nowhere) return {};
    const auto cells =
        log.LogIntervals.Columns().levels(origin == LevelsFrom::ChannelA ? Quantity::LeqA : Quantity::LeqB, 0);
    std::vector<float> levels(cells.size());
    std::ranges::transform(cells, levels.begin(), [](Level level) { return level.CalcValue; });
    return levels;
}

} // namespace

std::vector<AnalysedRow> analysedRows(const clsLog& log, LevelsFrom origin) {
    const IntervalColumns& rows = log.LogIntervals.Columns();
    const std::vector<float> levels = levelsOfRows(log, origin);
    std::vector<AnalysedRow> counting;
    counting.reserve(levels.size());
    for (std::size_t row = 0; row < levels.size(); ++row) {
        if (levels[row] == 0 || rows.isExcluded.at(row) != 0) continue;
        counting.push_back({static_cast<std::int64_t>(row) + 1, rowBegin(rows, row),
                            static_cast<double>(rowSeconds(rows, row, log.Interval)), levels[row],
                            rows.level(Quantity::LmaxA, 0, row).CalcValue,
                            rows.level(Quantity::LminA, 0, row).CalcValue,
                            rows.level(Quantity::PeakA, 0, row).CalcValue});
    }
    return counting;
}

StretchFigures stretchFigures(Rows rows, double criterion, double exchange) {
    return figuresOf({rows}, criterion, exchange);
}

Rows rowsWithin(Rows rows, const RowRange& range) {
    const auto isBefore = [](const AnalysedRow& row, std::int64_t number) { return row.Number < number; };
    const auto first = std::lower_bound(rows.begin(), rows.end(), range.From, isBefore);
    return {first, std::lower_bound(first, rows.end(), range.To + 1, isBefore)};
}

RangeFigures rangeFigures(Rows rows, const RowRange& range, double criterion, double exchange) {
    const Rows within = rowsWithin(rows, range);
    const auto before = static_cast<std::size_t>(within.data() - rows.data());
    return {stretchFigures(within, criterion, exchange),
            figuresOf({rows.first(before), rows.subspan(before + within.size())}, criterion, exchange)};
}

std::vector<RunningFigures> runningFigures(Rows rows, double criterion, double exchange) {
    const double all = secondsOf(rows);
    std::vector<RunningFigures> figures;
    figures.reserve(rows.size());
    double energy = 0;
    double weights = 0;
    double dose = 0;
    for (const AnalysedRow& row : rows) {
        energy += weightOf(row, all) * energyOf(row.Level);
        weights += weightOf(row, all);
        RunningFigures now = {weights > 0 ? levelOf(energy / weights) : row.Level, {}, {}};
        if (all > 0 && weights > 0) {
            now.Lex8h = normalisedTo8Hours(now.LAeq, weights / kSecondsOfHour);
            if (exchange > 0) {
                dose += dosePart(row.Level, row.Seconds / kSecondsOfHour, {criterion, exchange});
                now.Dose = dose;
            }
        }
        figures.push_back(now);
    }
    return figures;
}

std::size_t endOfRun(Rows rows, std::size_t first) {
    std::size_t behind = first + 1;
    while (behind < rows.size() && followsOn(rows[behind - 1], rows[behind]))
        ++behind;
    return behind;
}

WorstStretches worstStretches(Rows rows, double seconds) {
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

std::vector<Stretch> eventsOf(Rows rows, EventRule rule) {
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

std::optional<double> levelExceeded(Rows rows, double percent) {
    if (rows.empty()) return std::nullopt;
    return LouderFirst(rows).levelAt(percent / 100);
}

std::optional<std::vector<LevelClass>> distributionOf(Rows rows, double width) {
    std::vector<LevelClass> classes;
    double lowest = kLoudest;
    double highest = -kLoudest;
    const auto isLevel = [](const AnalysedRow& row) { return std::abs(row.Level) <= kLoudest; }; // nor is NaN one
    for (const AnalysedRow& row : rows) {
        if (!isLevel(row)) continue;
        lowest = std::min(lowest, row.Level);
        highest = std::max(highest, row.Level);
    }
    if (lowest > highest) return classes;
    const double first = classOf(lowest, width);
    const double count = classOf(highest, width) - first + 1;
    if (count > static_cast<double>(kMostClasses)) return std::nullopt;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i)
        classes.push_back({(first + static_cast<double>(i)) * width, 0, 0});
    for (const AnalysedRow& row : rows)
        if (isLevel(row)) classes[static_cast<std::size_t>(classOf(row.Level, width) - first)].Seconds += row.Seconds;
    double above = 0;
    for (auto item = classes.rbegin(); item != classes.rend(); ++item)
        item->Above = above += item->Seconds;
    return classes;
}

double exposureOf(Rows rows) {
    const double seconds = secondsOf(rows);
    double sum = 0;
    for (const AnalysedRow& row : rows)
        sum += weightOf(row, seconds) * energyOf(row.Level);
    return sum;
}

} // namespace kestrane
