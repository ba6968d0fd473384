#include "assessment/Criteria.h"

#include "assessment/CriteriaTable.h"
#include "assessment/LoggedFile.h"
#include "calc/Recalculation.h"
#include "model/Acoustics.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrane {
namespace {

CriterionFigures named(const Criteria& criteria, const std::string& name) {
    for (const CriterionFigures& figures : criteria.All)
        if (figures.Name == name) return figures;
    return {};
}

// One row: its level for its length under each criterion, against the printed tables of allowed time.
TEST(Criteria, PrintedDosesOfASteadyLevel) {
    struct Case {
        const char* name;
        float level;
        double hours, dose, twa; // twa -1: none
    };

    constexpr Case kCases[] = {
        {"osha-hc", 90, 8, 100, 90},      {"osha-hc", 85, 8, 50, 85.0},   {"osha-hc", 80, 8, 25, 80.0},
        {"osha-hc", 79.9F, 8, 0, -1},     {"osha-pel", 90, 8, 100, 90},   {"osha-pel", 89.9F, 8, 0, -1},
        {"osha-pel", 115, 0.25, 100, 90}, {"osha-pel", 95, 8, 200, 95.0}, {"niosh", 85, 8, 100, 85},
        {"niosh", 100, 0.25, 100, 85},    {"niosh", 79, 8, 25, 78.98},    {"acgih", 79.9F, 8, 0, -1},
        {"acgih", 80, 8, 31.498, 79.98},  {"own", 83, 8, 50, 83},
    };
    for (const Case& c : kCases) {
        LoggedFile logged{c.level};
        logged.log->LogIntervals.Columns().set(logged.log->LogIntervals.Columns().IntervalLength, 0,
                                               static_cast<std::int32_t>(c.hours * 3600));
        const CriterionFigures figures = named(criteriaOf(*logged.log, OwnCriterion{88, 83, 5}), c.name);
        EXPECT_NEAR(figures.Dose.value_or(-1), c.dose, 0.001) << c.name << " " << c.level;
        EXPECT_NEAR(figures.TWA.value_or(-1), c.twa, 0.05) << c.name << " " << c.level;
        EXPECT_NEAR(*figures.ProjectedDose, c.dose * 8 / c.hours, 0.01);
        EXPECT_NEAR(figures.LAVG.value_or(c.level), c.level, 1e-4);
        ASSERT_EQ(figures.Limits.size(), 1U);
        EXPECT_EQ(figures.Limits[0].Exceeded, figures.ProjectedDose >= figures.Limits[0].Value - 1e-6);
        EXPECT_EQ(figures.LEX8h.has_value(), figures.Exchange == 3);
    }
}

TEST(Criteria, RowsThatCountMakeTheFigures) {
    LoggedFile logged{80, 90, 0, 130};
    logged.exclude(3);
    logged.log->FreqWeightB("C");
    logged.log->IsChannelBOn = true;
    logged.set(Quantity::PeakB, 1, 134);
    logged.set(Quantity::PeakB, 3, 150);
    logged.log->PeakCumB.Value(150);
    logged.log->objLogOptions.ExposureTime = 4;
    const Criteria criteria = criteriaOf(*logged.log, {});
    EXPECT_EQ(criteria.Rows, 2);
    EXPECT_NEAR(criteria.MeasuredHours, 2.0 / 60, 1e-12);
    const double leq = levelOf((energyOf(80) + energyOf(90)) / 2);
    EXPECT_NEAR(*criteria.LAeq, leq, 1e-9);
    EXPECT_EQ(criteria.LCpeak, 134);
    ASSERT_EQ(criteria.All.size(), 5U);
    const CriterionFigures& eu = criteria.All[0];
    EXPECT_NEAR(*eu.LEX8h, leq - 3.0103, 1e-4);
    EXPECT_FALSE(eu.Dose || eu.LAVG || eu.TWA);
    EXPECT_EQ(eu.Limits[0].Exceeded, true);
    EXPECT_EQ(eu.Limits[1].Exceeded, false);
    const CriterionFigures niosh = named(criteria, "niosh");
    EXPECT_TRUE(niosh.IsFromRows && niosh.Note.empty() && niosh.Missing.empty());
    EXPECT_NEAR(*niosh.ProjectedDose, *niosh.Dose * 120, 1e-9);
}

TEST(Criteria, LongRowsAndOtherTimeWeightingsSayThatTheyAreApproximate) {
    LoggedFile logged{90, 90};
    const auto notes = [&] {
        const Criteria criteria = criteriaOf(*logged.log, OwnCriterion{85, 0, 3});
        return named(criteria, "osha-hc").Note + "|" + named(criteria, "niosh").Note + named(criteria, "eu").Note +
               named(criteria, "own").Note;
    };
    EXPECT_EQ(notes(), "|");
    logged.log->TimeWeightA("Fast");
    EXPECT_EQ(notes(), "approximate: rows of 60 s|");
    logged.log->TimeWeightA("Slow");
    logged.log->Interval = 900;
    EXPECT_EQ(notes(), "approximate: rows of 900 s|");
}

TEST(Criteria, ALogWithoutRowsGivesWhatFollowsFromItsLevel) {
    LoggedFile logged;
    logged.log->LeqCumA(0).Value(88);
    logged.log->MeasurementTimeFromInstrument = 4 * 3600;
    const Criteria criteria = criteriaOf(*logged.log, OwnCriterion{85, 0, 3});
    EXPECT_NEAR(*named(criteria, "niosh").Dose, 100, 1e-9);
    EXPECT_NEAR(named(criteria, "own").Dose.value_or(0), 100, 1e-9) << "a threshold of 0 dB leaves nothing out";
    EXPECT_FALSE(named(criteria, "niosh").IsFromRows);
    for (const char* name : {"osha-hc", "osha-pel", "acgih"}) {
        EXPECT_FALSE(named(criteria, name).Dose) << name;
        EXPECT_EQ(named(criteria, name).Missing, "needs interval rows");
        EXPECT_FALSE(named(criteria, name).Limits[0].Exceeded.has_value());
    }
    EXPECT_EQ(*named(criteria, "eu").LEX8h, 88);
    logged.log->FreqWeightA("C");
    EXPECT_EQ(named(criteriaOf(*logged.log, {}), "eu").Missing, "no A-weighted level");
    logged.log->IsChannelBOn = true;
    logged.log->FreqWeightB("A");
    logged.log->LeqCumB.Value(84);
    EXPECT_EQ(*criteriaOf(*logged.log, {}).LAeq, 84);
    EXPECT_EQ(named(criteriaOf(*logged.log, {}), "eu").Note, "LAeq from channel B");
}

TEST(Criteria, LinearBandsAreWeightedRowByRow) {
    LoggedFile logged({1, 1}, modeFullOctave);
    logged.log->FreqWeightA("Z");
    logged.set(Quantity::LeqA, 0, 90, logged.log->e("1k"));
    logged.set(Quantity::LeqA, 1, 90, logged.log->e("125"));
    const Criteria criteria = criteriaOf(*logged.log, {});
    EXPECT_NEAR(*criteria.LAeq, levelOf((energyOf(90) + energyOf(73.9)) / 2), 1e-5);
    EXPECT_NEAR(*named(criteria, "acgih").Dose, 100 * (1.0 / 60) / allowedHours(90, {85, 3}), 1e-6) << "73.9 < 80";
    EXPECT_EQ(named(criteria, "eu").Note, "LAeq from bands");
    logged.log->FreqWeightA("");
    EXPECT_EQ(named(criteriaOf(*logged.log, {}), "eu").Note, "LAeq from bands");
}

TEST(Criteria, TheDoseOfAnInstrumentStandsUnderItsOwnSettings) {
    LoggedFile logged{90};
    logged.log->InsName = "TR350";
    logged.log->DoseETCumA.Value(42.5F);
    logged.log->Criterion = 90;
    logged.log->Exchange = 5;
    logged.log->Threshold = "80";
    const Criteria criteria = criteriaOf(*logged.log, {});
    EXPECT_NE(named(criteria, "osha-hc").Note.find("42.5 %"), std::string::npos);
    EXPECT_EQ(named(criteria, "osha-pel").Note, "");
    setCriterion(*logged.log, {85, 3});
    const Criteria changed = criteriaOf(*logged.log, {});
    EXPECT_EQ(named(changed, "osha-hc").Note, named(criteria, "osha-hc").Note);
    EXPECT_EQ(named(changed, "acgih").Note, "") << "85, 80, 3 is what the log has now";
    logged.log->ReportedFigures = 0;
    EXPECT_EQ(named(criteriaOf(*logged.log, {}), "osha-hc").Note, "") << "computed and saved";
}

TEST(CriteriaTable, HasARowForEachCriterionAndTheLogsOwn) {
    LoggedFile logged{90};
    logged.log->Interval = 60;
    logged.log->objLogOptions.ExposureTime = 8;
    logged.log->Criterion = 85;
    logged.log->Exchange = 5;
    logged.log->Threshold = "80";
    const CriteriaTable table = criteriaTable(*logged.log);
    ASSERT_EQ(table.Rows.size(), 6U);
    // A minute at 90 dB: 100/480 % of OSHA, its TWA 90 + 16.61 lg(1/480); over 8 hours 100 % and 90 dB.
    EXPECT_EQ(table.Rows[1],
              (std::vector<std::string>{"OSHA hearing conservation", "\u2013", "100.0", "90.0", "\u2717 50 %", "",
                                        "0.2", "45.5", "90.0", "90.0", "80.0", "5.0"}));
    EXPECT_EQ(table.Rows[0][1], "90.0");
    EXPECT_EQ(table.Rows[0][4], "\u2717 80 dB  \u2717 85 dB  \u2717 87 dB");
    EXPECT_EQ(table.Rows[5][2], "200.0") << "5 dB above 85, at a rate of 5 dB";
    const std::string text = criteriaText(table);
    EXPECT_EQ(std::ranges::count(text, '\n'), 7);
    EXPECT_EQ(std::ranges::count(text, '\t'), 7 * 11);
}

} // namespace
} // namespace kestrane
