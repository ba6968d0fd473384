#include "explorer/CalculationEntries.h"
#include "explorer/ConvertWeighting.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A log of 85 dB that was measured for 8 hours: 100 % at criterion 85.
struct Worked : ShownLog {
    Worked() {
        log.Criterion = 90;
        log.MeasurementTimeFromInstrument = 8 * 3600;
        log.LeqCumA(0).Value(85);
        log.CalibDate.setDate("03/06/2024", session.locale);
    }

    bool apply(const CalculationEntries& entries) {
        focused.clear();
        return applyChanges(log, log, entries, [this](CalculationField field) { focused.push_back(field); });
    }

    const ScriptedMessages::Shown& lastBox() const { return messages.Boxes.back(); }

    std::vector<CalculationField> focused;
};

TEST(CalculationEntries, AWrongEntryIsFocusedAndChangesNothing) {
    struct Case {
        CalculationEntries entries;
        CalculationField field;
        const char* message;
    };

    const Case cases[] = {{{"", "3", "03/06/2024"}, CalculationField::Criterion, "Invalid Criterion"},
                          {{"8x", "3", "03/06/2024"}, CalculationField::Criterion, "Invalid Criterion"},
                          {{"85", "", "03/06/2024"}, CalculationField::Exchange, "Invalid Exchange Rate"},
                          {{"85", "0", "03/06/2024"}, CalculationField::Exchange, "Invalid Exchange Rate"},
                          {{"85", "3", "31/02/2024"}, CalculationField::UserCal, "Invalid User Calibration Date"},
                          {{"85", "3", ""}, CalculationField::UserCal, "Invalid User Calibration Date"}};
    for (const Case& c : cases) {
        Worked worked;
        EXPECT_FALSE(worked.apply(c.entries)) << c.message;
        ASSERT_EQ(worked.messages.Boxes.size(), 1U);
        EXPECT_EQ(worked.lastBox().Prompt, c.message);
        EXPECT_EQ(worked.lastBox().Title, "Error");
        EXPECT_EQ(worked.focused, std::vector<CalculationField>{c.field});
        EXPECT_EQ(worked.log.Criterion, 90);
    }
}

TEST(CalculationEntries, ALogNeverCalibratedCanBeRecalculated) {
    Worked worked;
    worked.log.CalibDate = clsDate();
    worked.messages.Answers = {Button::Yes};
    EXPECT_TRUE(worked.apply({"85", "3", ""}));
    EXPECT_EQ(worked.log.Criterion, 85);
}

TEST(CalculationEntries, WithAZoomTheUserSaysWhichLog) {
    for (const Button answer : {Button::Yes, Button::No, Button::Cancel}) {
        Worked worked;
        clsLog zoom(worked.session);
        zoom.Copy(worked.log, 0, 0);
        worked.messages.Answers = {answer};
        EXPECT_EQ(applyChanges(worked.log, zoom, {"85", "3", "03/06/2024"}, [](CalculationField) {}),
                  answer != Button::Cancel);
        EXPECT_EQ(worked.lastBox().Flags, kButtonsYesNoCancel | kIconQuestion | kDefaultSecond);
        EXPECT_EQ(worked.log.Criterion, answer == Button::Yes ? 85 : 90);
        EXPECT_EQ(zoom.Criterion, answer == Button::Cancel ? 90 : 85);
    }
}

TEST(CalculationEntries, AnUnusualValueOfTheLogIsOfferedAndKept) {
    Worked worked;
    worked.log.Criterion = 82;
    worked.log.Exchange = 0;
    EXPECT_EQ(criterionChoices(worked.log), (std::vector<std::string>{"75", "80", "82", "85", "90"}));
    EXPECT_EQ(exchangeChoices(worked.log), (std::vector<std::string>{"3", "4", "5"}));
    EXPECT_TRUE(worked.apply({"82", "0", "05/06/2024"}));
    EXPECT_EQ(acceptedUserCal(worked.session, "5/6/24", "old"), "05/06/2024");
    EXPECT_EQ(acceptedUserCal(worked.session, "soon", "03/06/2024"), "03/06/2024");
}

TEST(CalculationEntries, ForcingALongRecalculationAsksFirst) {
    Worked worked;
    EXPECT_TRUE(FullRecalc(worked.log, worked.log));
    EXPECT_TRUE(worked.messages.Boxes.empty());
    EXPECT_TRUE(worked.log.FullyCalculated);

    Worked slow;
    slow.addRows(1001);
    slow.messages.Answers = {Button::No};
    EXPECT_FALSE(FullRecalc(slow.log, slow.log));
    EXPECT_EQ(slow.messages.Boxes.size(), 1U);
    EXPECT_FALSE(slow.log.FullyCalculated);
}

TEST(ConvertFrequencyWeighting, AsksForTheWeightingAndConvertsTheIntervals) {
    struct Case {
        const char* weight; // nullptr: cancelled
        Button answer;
        const char* after;
        float cumulative, row; // of the 125 Hz band, dB
    };

    for (const Case& c : {Case{"Z", Button::Yes, "Z", 96.1F, 86.1F}, Case{"Z", Button::No, "A", 80, 70},
                          Case{"A", Button::Yes, "A", 80, 70}, Case{nullptr, Button::Yes, "A", 80, 70}}) {
        ShownLog shown(modeFullOctave);
        const int band = shown.log.e("125");
        shown.addRows(1);
        shown.setLevel(Quantity::LeqA, band, 0, 70);
        shown.log.LeqCumA(band).Value(80);
        shown.messages.Answers = {c.answer};
        const AskChoice ask = [&](const std::string& prompt, const std::vector<std::string>& choices,
                                  const std::string& proposal) {
            EXPECT_EQ(prompt, "Convert to which frequency weighting (A, C or Z)?");
            EXPECT_EQ(choices.size(), 3U);
            EXPECT_EQ(proposal, "A");
            return c.weight == nullptr ? std::nullopt : std::optional<std::string>(c.weight);
        };
        EXPECT_EQ(ConvertFrequencyWeighting(shown.log, shown.log, ask), std::string_view(c.after) != "A");
        EXPECT_EQ(shown.log.FreqWeightA(), c.after);
        EXPECT_FLOAT_EQ(shown.log.LeqCumA(band).CalcValue(), c.cumulative);
        EXPECT_FLOAT_EQ(shown.log.LogIntervals.Columns().levels(Quantity::LeqA, band)[0].CalcValue, c.row);
    }
}

} // namespace
} // namespace kestrane
