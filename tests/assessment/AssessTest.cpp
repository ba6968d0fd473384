#include "assessment/Assess.h"

#include "assessment/LoggedFile.h"
#include "model/Acoustics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace kestrane {
namespace {

AssessmentTask task(const std::string& name, double hours, std::vector<Sample> samples) {
    AssessmentTask made;
    made.Name = name;
    made.Hours = hours;
    made.Samples = std::move(samples);
    return made;
}

std::vector<Sample> levels(std::initializer_list<double> figures) {
    return {figures.begin(), figures.end()};
}

LogRows rowsOf(std::optional<std::int64_t> from = {}, std::optional<std::int64_t> to = {}) {
    LogRows rows;
    rows.File = "a.xml";
    rows.Log = "L1I1F1";
    rows.From = from;
    rows.To = to;
    return rows;
}

// A group beside one data file; each test changes what it is about.
struct Assessed : LoggedFile {
    AssessmentGroup group;
    clsHP hp;

    explicit Assessed(std::initializer_list<float> rows = {}) : LoggedFile(rows) {
        group.Instrument = Meter::Dosimeter;
        hp.Name = "Muff";
        hp.SNR = 20;
    }

    GroupResult result() {
        Assessment assessment;
        assessment.Groups.push_back(group);
        const std::string path = folder.file("a.json");
        Measurements measured;
        for (const std::string& dataFile : measured.unread(assessment, path)) {
            const bool isThere = dataFile == file.FileName;
            measured.take(session, assessment, path, dataFile, isThere ? &file : nullptr, isThere ? "ab" : "",
                          [&](const std::string& name) { return name == hp.Name ? &hp : nullptr; });
        }
        EXPECT_TRUE(measured.unread(assessment, path).empty());
        return assess(session, assessment, path, measured).front();
    }

    // The codes of the warnings, each with its task.
    std::string codes() {
        std::string text;
        for (const AssessmentWarning& warning : result().Warnings)
            text += warning.Code + (warning.Task ? ":" + *warning.Task : "") + " ";
        return text;
    }

    void workedTasks() {
        group.EffectiveDay = 8;
        group.Tasks = {task("planning", 1.5, levels({70.0, 70.0, 70.0})),
                       task("welding", 5, levels({80.1, 82.2, 79.6})),
                       task("cutting", 1.5, levels({86.5, 92.4, 89.3, 93.2, 87.8, 86.2}))};
    }

    void job(std::initializer_list<double> figures, Strategy strategy = Strategy::Job) {
        group.Strategy = strategy;
        group.Samples = levels(figures);
    }
};

ActionState stateOf(const std::vector<ActionResult>& actions, double limit) {
    const auto found = std::find_if(actions.begin(), actions.end(), [&](const auto& a) { return a.Limit == limit; });
    return found == actions.end() ? ActionState::NotMeasured : found->State;
}

TEST(Assess, WorkedDayByTasks) {
    Assessed a;
    a.workedTasks();
    GroupResult result = a.result();
    EXPECT_NEAR(*result.LEX8h, 84.3, 0.05);
    EXPECT_NEAR(*result.Expanded, 2.7, 0.05);
    EXPECT_NEAR(*result.Upper, *result.LEX8h + *result.Expanded, 1e-12);
    a.group.Tasks[1].HoursRange = {{4, 6}};
    a.group.Tasks[2].HoursRange = {{1, 2}};
    EXPECT_NEAR(*a.result().Expanded, 3.2, 0.05);

    Assessed parts;
    parts.group.Tasks = {task("a", 5, levels({80})), task("b", 2, levels({86})), task("c", 0.75, levels({95}))};
    result = parts.result();
    for (const auto& [i, part] : {std::pair(0, 78.0), {1, 80.0}, {2, 84.7}})
        EXPECT_NEAR(*result.Tasks[static_cast<std::size_t>(i)].Contribution, part, 0.05);
    EXPECT_NEAR(*result.LEX8h, 86.6, 0.05);
    EXPECT_FALSE(result.Uncertainty || result.Expanded || result.Upper || result.Tasks[0].U1a) << "one sample each";
    EXPECT_NEAR(*result.Points, *result.Tasks[0].Points + *result.Tasks[1].Points + *result.Tasks[2].Points, 1e-9);
}

TEST(Assess, OrderSplittingAndShiftsChangeWhatTheyShould) {
    Assessed a;
    a.workedTasks();
    const GroupResult plain = a.result();
    std::reverse(a.group.Tasks.begin(), a.group.Tasks.end());
    EXPECT_NEAR(*a.result().LEX8h, *plain.LEX8h, 1e-9);
    EXPECT_NEAR(*a.result().Uncertainty, *plain.Uncertainty, 1e-9);
    AssessmentTask half = a.group.Tasks[1];
    half.Hours = a.group.Tasks[1].Hours = 2.5;
    a.group.Tasks.push_back(half);
    EXPECT_NEAR(*a.result().LEX8h, *plain.LEX8h, 1e-9);
    EXPECT_NEAR(*a.result().Points, *plain.Points, 1e-9);
    for (AssessmentTask& t : a.group.Tasks)
        for (Sample& sample : t.Samples)
            std::get<double>(sample) += 3.5;
    EXPECT_NEAR(*a.result().LEX8h, *plain.LEX8h + 3.5, 1e-9);
    double shares = 0;
    for (const TaskResult& t : a.result().Tasks)
        shares += *t.Share;
    EXPECT_NEAR(shares, 1, 1e-12);
}

TEST(Assess, AJobByItsSamples) {
    Assessed a;
    a.job({88.1, 86.1, 89.7, 86.5, 91.1, 86.7});
    a.group.EffectiveDay = 7.5;
    const GroupResult result = a.result();
    const double mean = levelOf(
        (energyOf(88.1) + energyOf(86.1) + energyOf(89.7) + energyOf(86.5) + energyOf(91.1) + energyOf(86.7)) / 6);
    EXPECT_NEAR(*result.LEX8h, mean + 10 * std::log10(7.5 / 8), 1e-9);
    EXPECT_NEAR(*result.U1, 2.003, 0.001); // the squares are 20.05 together
    EXPECT_NEAR(*result.C1u1, 1.4 + (*result.U1 - 2) * 1.0, 1e-9);
    EXPECT_NEAR(*result.Expanded, 1.65 * std::sqrt(*result.C1u1 * *result.C1u1 + 1.5 * 1.5 + 1), 1e-9);
    EXPECT_EQ(a.codes(), "no-c-peak edition ");
    a.job({88.1});
    EXPECT_FALSE(a.result().U1 || a.result().Expanded);
    EXPECT_TRUE(a.result().LEX8h);
    a.job({80, 90});
    EXPECT_TRUE(a.result().U1 && !a.result().C1u1 && !a.result().Expanded);
}

TEST(Assess, EachWarningOnce) {
    using Change = std::function<void(Assessed&)>;
    const auto samples = [](std::initializer_list<double> figures) -> Change {
        return [all = levels(figures)](Assessed& a) { a.group.Tasks[1].Samples = all; };
    };
    const auto range = [](double least, double most) -> Change {
        return [=](Assessed& a) { a.group.Tasks[1].HoursRange = {{least, most}}; };
    };
    const auto hours = [](double of) -> Change { return [=](Assessed& a) { a.group.Tasks[1].Hours = of; }; };
    const auto day = [](double of) -> Change { return [=](Assessed& a) { a.group.EffectiveDay = of; }; };
    const auto wholly = [](Strategy strategy, std::initializer_list<double> figures) -> Change {
        return [strategy, all = levels(figures)](Assessed& a) {
            a.group.Strategy = strategy;
            a.group.Samples = all;
        };
    };

    struct Case {
        const char* codes;
        bool hasLevel;
        Change change;
    };

    const Case cases[] = {
        {"", true, [](Assessed&) {}},
        {"few-samples:b ", true, samples({80, 80})},
        {"spread:b ", true, samples({78.6, 80, 81.6})},
        {"", true, samples({78.6, 80, 81, 81.6})},
        {"one-task-dominates:b ", true, range(0, 20)},
        {"time-sum ", true, day(8.26)},
        {"", true, day(8.25)},
        {"few-job-samples ", true, wholly(Strategy::Job, {80, 80, 80, 80})},
        {"few-samples ", true, wholly(Strategy::FullDay, {80, 80})},
        {"spread large-c1u1 ", true, wholly(Strategy::FullDay, {80, 80, 83})},
        {"large-c1u1 ", true, wholly(Strategy::Job, {80, 84, 88, 80, 88})},
        {"large-c1u1 ", true, wholly(Strategy::Job, {80, 90, 100, 80, 88})},
        {"no-c-peak ", true, [](Assessed& a) { a.group.CPeak.reset(); }},
        {"bad-value:b ", false, samples({0, 80, 0})},
        {"bad-value:b ", false, samples({80, 200.1, 80})},
        {"bad-value:b ", false, samples({})},
        {"bad-value:b ", false, hours(0)},
        {"bad-value:b ", false, hours(24.1)},
        {"bad-value:b ", true, range(2, 1)},
        {"duration-range:b ", true, range(2.7, 4)},
        {"", true, range(8.0 / 3, 8.0 / 3)},
        {"bad-value ", true, day(-1)},
        {"bad-value ", true, [](Assessed& a) { a.group.Workers = 0; }},
        {"bad-value ", false, [](Assessed& a) { a.group.Tasks.clear(); }},
        {"bad-value ", true,
         [](Assessed& a) {
             a.group.Week.assign(1, {"Mon", -1.0, {}});
         }},
    };
    for (const Case& c : cases) {
        Assessed a;
        a.group.CPeak = 130;
        a.group.EffectiveDay = 8;
        for (const char* name : {"a", "b", "c"})
            a.group.Tasks.push_back(task(name, 8.0 / 3, levels({80, 80, 80})));
        c.change(a);
        EXPECT_EQ(a.codes(), std::string(c.codes) + "edition ") << &c - cases;
        const GroupResult result = a.result();
        EXPECT_EQ(result.LEX8h.has_value(), c.hasLevel) << &c - cases;
        EXPECT_TRUE(c.hasLevel || !(result.Points || result.Uncertainty || result.Upper)) << &c - cases;
    }
}

TEST(Assess, RowsOfALogAreItsEnergyMean) {
    Assessed a{80, 90, 100, 0};
    a.exclude(2);
    a.group.Strategy = Strategy::Job;
    a.group.Samples = {rowsOf(), rowsOf(2, 2), 70.0};
    GroupResult result = a.result();
    ASSERT_EQ(result.Sources.size(), 2U);
    EXPECT_NEAR(*result.Sources[0].Leq, levelOf((energyOf(80) + energyOf(90)) / 2), 1e-9);
    EXPECT_NEAR(*result.Sources[1].Leq, 90, 1e-9);
    EXPECT_EQ(result.Sources[0].To, 4);
    EXPECT_NEAR(*result.LEX8h, levelOf((energyOf(*result.Sources[0].Leq) + energyOf(90) + energyOf(70)) / 3), 1e-9);

    struct Case {
        LogRows rows;
        const char* code;
    };

    LogRows other = rowsOf();
    other.Log = "L2I1F1";
    LogRows away = rowsOf();
    away.File = "away.xml";
    LogRows changed = rowsOf();
    changed.Sha256 = "00";
    for (const Case& c : {Case{rowsOf(0, 2), "bad-value "}, Case{rowsOf(3, 2), "bad-value "},
                          Case{rowsOf(1, 5), "bad-value "}, Case{rowsOf(3, 4), "bad-value "}, Case{other, "bad-value "},
                          Case{away, "bad-value "}, Case{changed, "file-changed "}}) {
        a.group.Samples.assign(5, c.rows);
        const std::string twice = c.rows.Sha256 == "00" ? "rows-twice " : "";
        EXPECT_EQ(a.codes(), c.code + twice + "no-c-peak edition ") << c.rows.From.value_or(-1);
        EXPECT_EQ(a.result().LEX8h.has_value(), c.rows.Sha256 == "00");
    }
    a.group.Workers = 4; // five times two minutes
    a.group.Samples.assign(5, rowsOf());
    EXPECT_EQ(a.codes(), "rows-twice measured-time no-c-peak edition ");
    a.group.Samples.push_back(80.0); // how long that took is not known
    EXPECT_EQ(a.codes(), "rows-twice no-c-peak edition ");
    a.group.Samples = {rowsOf(1, 1), rowsOf(2, 4)};
    EXPECT_EQ(a.codes().find("rows-twice"), std::string::npos);
    a.group.Samples[0] = rowsOf(1, 2);
    EXPECT_NE(a.codes().find("rows-twice"), std::string::npos);
}

TEST(Assess, WhatTheCalibrationDidIsToBeConsidered) {
    Assessed a{80};
    a.log->UserCalibration = {9400, 9300, 100};
    a.group.Tasks = {task("t", 8, {rowsOf(), 80.0, 80.0})};
    const auto warnings = a.result().Warnings;
    ASSERT_EQ(a.codes(), "calibration calibration no-c-peak edition ");
    EXPECT_EQ(warnings[0].Text, "a.xml, L1I1F1: The calibration drifted by -1.0 dB, which is more than 0.5 dB.");
    EXPECT_EQ(warnings[1].Text, "a.xml, L1I1F1: +1.0 dB added to all levels");
    a.log->UserCalibration = {9400, 9350, 0};
    EXPECT_EQ(a.codes(), "no-c-peak edition ");
}

TEST(Assess, PeaksCountFromACWeightedChannelOnly) {
    Assessed a{80, 80, 80};
    a.set(Quantity::PeakA, 0, 139);
    a.group.Tasks = {task("t", 8, {rowsOf(1, 1), rowsOf(2, 2), rowsOf(3, 3)})};
    EXPECT_FALSE(a.result().CPeak);
    EXPECT_NE(a.result().Warnings[0].Text.find("139"), std::string::npos);
    EXPECT_EQ(stateOf(a.result().Actions, 135), ActionState::NotMeasured);
    a.log->IsChannelBOn = true;
    a.log->FreqWeightB("C");
    a.set(Quantity::PeakB, 1, 137);
    EXPECT_EQ(a.result().CPeak, 137);
    EXPECT_EQ(stateOf(a.result().Actions, 137), ActionState::Exceeded);
    EXPECT_EQ(stateOf(a.result().Actions, 140), ActionState::Below);
    a.group.Tasks[0].CPeak = 140;
    EXPECT_EQ(a.result().CPeak, 140);
    a.group.CPeak = 120;
    EXPECT_EQ(a.result().CPeak, 120);
}

TEST(Assess, StatesOfTheDayAndTheWeek) {
    Assessed a;
    a.group.Tasks = {task("t", 8, levels({84.996, 84.996, 84.996}))};
    GroupResult result = a.result();
    EXPECT_EQ(stateOf(result.Actions, 80), ActionState::Exceeded);
    EXPECT_EQ(stateOf(result.Actions, 85), ActionState::Exceeded) << "rounded to 0.01";
    EXPECT_EQ(stateOf(result.Actions, 87), ActionState::WithinUncertainty); // U = 1.65 sqrt(1.5² + 1) = 2.97
    a.group.Tasks[0].Samples.resize(1);
    EXPECT_EQ(stateOf(a.result().Actions, 85), ActionState::Exceeded);
    EXPECT_EQ(stateOf(a.result().Actions, 87), ActionState::Undecided) << "fewer samples give no better verdict";
    a.group.Tasks[0].Samples = levels({84.996, 84.996, 84.996});
    EXPECT_TRUE(result.WeekActions.empty());
    EXPECT_FALSE(result.LEXw);
    a.group.Week.assign(5, {});
    EXPECT_NEAR(*a.result().LEXw, 84.996, 1e-9);
    a.group.Week.assign(1, {});
    EXPECT_NEAR(*a.result().LEXw, 84.996 - 6.9897, 1e-4);
    EXPECT_EQ(stateOf(a.result().WeekActions, 80), ActionState::WithinUncertainty);
    EXPECT_EQ(stateOf(a.result().WeekActions, 87), ActionState::Below);
    a.group.Week[0].LEX8h = 100;
    EXPECT_NEAR(*a.result().LEXw, 93.0103, 1e-4);
}

TEST(Assess, AProtectorReducesWhileItIsWorn) {
    Assessed a;
    a.group.Tasks = {task("t", 8, levels({95, 95, 95}))};
    AssessmentProtector worn;
    worn.Reduction = 20;
    a.group.Protector = worn;
    GroupResult result = a.result();
    EXPECT_NEAR(*result.Protected->Effective, 75, 1e-9);
    EXPECT_EQ(result.Protected->Verdict, Verdict::Good);
    EXPECT_EQ(stateOf(result.Actions, 85), ActionState::Exceeded);
    EXPECT_EQ(stateOf(result.Actions, 87), ActionState::Below);
    a.group.Protector->WornPercent = 50;
    EXPECT_NEAR(*a.result().Protected->Effective, 92.033, 0.001);
    EXPECT_EQ(stateOf(a.result().Actions, 87), ActionState::Exceeded);
    EXPECT_EQ(a.result().Protected->Verdict, Verdict::Insufficient);

    a.group.Protector->Reduction.reset();
    a.group.Protector->WornPercent = 100;
    a.group.Protector->Name = "Muff";
    a.group.Protector->Spectrum = rowsOf();
    a.log->IsChannelBOn = true;
    a.log->FreqWeightB("C");
    a.log->LeqCumA(0).Value(94);
    a.log->LeqCumB.Value(97); // 77 by SNR, 17 less than LAeq
    result = a.result();
    EXPECT_EQ(result.Protected->Method, "SNR");
    EXPECT_NEAR(*result.Protected->Level, 78, 1e-4);
    a.group.Protector->Correction = 2;
    EXPECT_NEAR(*a.result().Protected->Level, 82, 1e-4);
    a.group.Protector->Name = "gone";
    result = a.result();
    EXPECT_EQ(result.Protected->Verdict, Verdict::None);
    EXPECT_FALSE(result.Protected->Level);
    EXPECT_EQ(stateOf(result.Actions, 87), ActionState::NotMeasured);
    EXPECT_EQ(a.codes(), "no-c-peak bad-value edition ");
}

} // namespace
} // namespace kestrane
