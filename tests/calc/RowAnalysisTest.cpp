#include "calc/RowAnalysis.h"

#include "assessment/LoggedFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace kestrane {
namespace {

// Rows of a minute each, one behind the other; a level of 0 leaves a row out.
std::vector<AnalysedRow> minutes(std::initializer_list<double> levels) {
    std::vector<AnalysedRow> rows;
    std::int64_t number = 0;
    for (const double level : levels) {
        ++number;
        if (level != 0) rows.push_back({number, 1000 + number * 60, 60, level});
    }
    return rows;
}

using Places = std::pair<std::size_t, std::size_t>;

Places placesOf(const std::optional<Stretch>& stretch) {
    return stretch ? Places{stretch->First, stretch->Behind} : Places{0, 0};
}

TEST(RowAnalysis, AStretchHasTheEnergyAndTheDoseOfItsRows) {
    std::vector<AnalysedRow> rows = minutes({90, 80});
    rows[1].Seconds = 540;
    rows[0].Lmax = 95;
    rows[0].Lmin = 70.5F;
    rows[1].Lmax = 94;
    rows[1].Peak = 120.1F;
    const StretchFigures figures = stretchFigures(rows, 85, 3);
    EXPECT_EQ(figures.Seconds, 600);
    EXPECT_NEAR(*figures.LAeq, 10 * std::log10((1e9 * 1 + 1e8 * 9) / 10), 1e-9); // 82.79
    EXPECT_NEAR(*figures.LE, *figures.LAeq + 10 * std::log10(600), 1e-9);
    // 8 h at 85 dB is 100 %: a minute at 90 is 100/480 * 2^(5/3), nine at 80 are 900/480 / 2^(5/3).
    EXPECT_NEAR(*figures.Dose, 100.0 / 480 * std::pow(2, 5.0 / 3) + 900.0 / 480 / std::pow(2, 5.0 / 3), 1e-9);
    EXPECT_EQ(figures.Lmax, 95.0F);
    EXPECT_EQ(figures.Lmin, 70.5F);
    EXPECT_EQ(figures.Peak, 120.1F);

    for (AnalysedRow& row : rows)
        row.Seconds = 0; // nobody knows how long
    const StretchFigures untimed = stretchFigures(rows, 85, 3);
    EXPECT_NEAR(*untimed.LAeq, 10 * std::log10((1e9 + 1e8) / 2), 1e-9);
    EXPECT_FALSE(untimed.LE || untimed.Dose);
    EXPECT_FALSE(stretchFigures(minutes({90}), 85, 0).Dose);
    EXPECT_FALSE(stretchFigures({}, 85, 3).LAeq);
}

TEST(RowAnalysis, TheWorstStretchesHaveNoGap) {
    const auto worst = [](const std::vector<AnalysedRow>& rows, double length) {
        const WorstStretches found = worstStretches(rows, length);
        return std::pair(placesOf(found.Loudest), placesOf(found.Quietest));
    };
    using Both = std::pair<Places, Places>;
    EXPECT_EQ(worst(minutes({70, 90, 80, 60, 65}), 120), Both({1, 3}, {3, 5}));
    EXPECT_EQ(worst(minutes({70, 90, 80, 60, 65}), 61), Both({1, 3}, {3, 5})); // whole rows
    EXPECT_EQ(worst(minutes({70, 70, 70}), 60), Both({0, 1}, {0, 1}));         // the first of several
    EXPECT_EQ(worst(minutes({90, 0, 90, 60, 60}), 120), Both({1, 3}, {2, 4})); // places: the row left out is none
    EXPECT_EQ(worst(minutes({70, 80}), 121), Both({0, 0}, {0, 0}));
    std::vector<AnalysedRow> late = minutes({90, 90, 60, 60});
    late[1].Begin += 1; // a second late is no gap
    EXPECT_EQ(worst(late, 120), Both({0, 2}, {2, 4}));
    late[1].Begin += 1;
    EXPECT_EQ(worst(late, 120), Both({1, 3}, {2, 4}));

    // A quiet stretch behind a very loud one: nothing of that is left in it.
    std::vector<AnalysedRow> rows;
    for (int i = 0; i < 1000; ++i)
        rows.push_back({i + 1, i, 1, i < 500 ? 140.0 : 20.0 + (i == 700 ? -0.01 : 0)});
    EXPECT_EQ(worst(rows, 1).second, Places(700, 701));
    EXPECT_EQ(worst(rows, 60).second, Places(641, 701));
}

TEST(RowAnalysis, EventsAreLoudLongEnoughAndUnbroken) {
    const auto count = [](const std::vector<AnalysedRow>& rows, double level, double seconds) {
        std::vector<Places> places;
        for (const Stretch& event : eventsOf(rows, {level, seconds}))
            places.push_back(placesOf(event));
        return places;
    };
    const auto rows = minutes({80, 85, 86, 70, 85, 0, 85.1F});
    EXPECT_EQ(count(rows, 85, 0), (std::vector<Places>{{1, 3}, {4, 5}, {5, 6}}));
    EXPECT_EQ(count(rows, 85, 61), (std::vector<Places>{{1, 3}}));
    EXPECT_EQ(count(rows, 85.1, 0), (std::vector<Places>{{2, 3}, {5, 6}})); // at the level, as it is kept
    EXPECT_TRUE(count(rows, 90, 0).empty());
    EXPECT_NEAR(exposureOf(std::span(rows).subspan(1, 2)) / exposureOf(minutes({85, 86})), 1, 1e-12);
}

TEST(RowAnalysis, PercentilesGoByTimeBetweenTheMiddlesOfRows) {
    const auto rows = minutes({60, 90, 70, 80}); // sorted, their middles are at 12.5, 37.5, 62.5 and 87.5 %
    EXPECT_NEAR(*levelExceeded(rows, 37.5), 80, 1e-9);
    EXPECT_NEAR(*levelExceeded(rows, 50), 75, 1e-9);
    EXPECT_NEAR(*levelExceeded(rows, 10), 90, 1e-9);
    EXPECT_NEAR(*levelExceeded(rows, 0), 90, 1e-9);
    EXPECT_NEAR(*levelExceeded(rows, 90), 60, 1e-9);
    EXPECT_NEAR(*levelExceeded(rows, 100), 60, 1e-9);
    std::vector<AnalysedRow> uneven = minutes({90, 60});
    uneven[1].Seconds = 180; // middles at 12.5 and 62.5 %
    EXPECT_NEAR(*levelExceeded(uneven, 37.5), 75, 1e-9);
    EXPECT_FALSE(levelExceeded({}, 50));
}

TEST(RowAnalysis, APercentileOfManyRowsIsThatOfTheSortedRows) {
    std::vector<AnalysedRow> rows;
    for (int i = 0; i < 5000; ++i) // many of the same level, in no order
        rows.push_back({i + 1, i * 60, 60, 40 + static_cast<double>(i * 7919 % 451) / 10});
    std::vector<double> falling;
    for (const AnalysedRow& row : rows)
        falling.push_back(row.Level);
    std::ranges::sort(falling, std::greater());
    for (const std::size_t place : {0U, 1U, 63U, 64U, 1250U, 2499U, 2500U, 4998U, 4999U}) {
        const double middle = (static_cast<double>(place) + 0.5) / 50;
        EXPECT_NEAR(*levelExceeded(rows, middle), falling[place], 1e-6) << place;
        const double between = (static_cast<double>(place) + 1) / 50;
        const double next = falling[std::min<std::size_t>(place + 1, 4999)];
        EXPECT_NEAR(*levelExceeded(rows, between), (falling[place] + next) / 2, 1e-6) << place;
    }
}

TEST(RowAnalysis, ClassesBeginAtMultiplesOfTheirWidth) {
    const auto classes = distributionOf(minutes({80.1F, 79.9F, 80, 85, 84.9F}), 2.5).value();
    ASSERT_EQ(classes.size(), 4U); // 77.5, 80, 82.5, 85
    const double seconds[] = {60, 120, 60, 60};
    const double above[] = {300, 240, 120, 60};
    for (std::size_t i = 0; i < classes.size(); ++i) {
        EXPECT_NEAR(classes[i].Level, 77.5 + 2.5 * static_cast<double>(i), 1e-9);
        EXPECT_EQ(classes[i].Seconds, seconds[i]);
        EXPECT_EQ(classes[i].Above, above[i]);
    }
    // A level on an edge, though neither it nor the width is what it says in binary.
    for (int tenth = 300; tenth < 1400; ++tenth) {
        const float level = static_cast<float>(tenth) / 10;
        EXPECT_NEAR(distributionOf(minutes({level}), 0.1)->front().Level, level, 1e-4) << level;
    }
    EXPECT_EQ(distributionOf(minutes({-3}), 5)->front().Level, -5);
    EXPECT_TRUE(distributionOf({}, 5)->empty());
    EXPECT_EQ(distributionOf(minutes({1E30F, NAN, 60, -1E30F}), 1)->size(), 1U) << "no sound has the others";
    EXPECT_FALSE(distributionOf(minutes({-900, 900}), 0.01));
}

TEST(RowAnalysis, RowsThatAreExcludedOrAbsentTakeNoPart) {
    LoggedFile logged{80, 0, 85, 90};
    logged.exclude(2);
    const auto rows = analysedRows(*logged.log);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1].Number, 4);
    EXPECT_EQ(rows[1].Seconds, logged.log->Interval);
    EXPECT_EQ(endOfRun(rows, 0), 1U);
}

} // namespace
} // namespace kestrane
