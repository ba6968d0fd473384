#include "explorer/CutWizard.h"

#include "ShownLog.h"
#include "platform/RuntimeError.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct Wizard : ShownLog {
    Wizard() { addRows(10); }

    CutWizard begun(std::vector<std::string> ranges = {}, bool toBeIncluded = false) {
        settings.Values[{"Wizards/CutIntervals", "DoNotShowAgain"}] = "True";
        log.LogIntervals.CutIntervals = std::move(ranges);
        log.LogIntervals.IntervalsToBeIncluded = toBeIncluded;
        return CutWizard(log);
    }

    std::string lastBox() const { return messages.Boxes.empty() ? std::string() : messages.Boxes.back().Prompt; }
};

void choose(CutWizard& wizard, std::int64_t from, std::int64_t to) {
    wizard.From = from;
    wizard.To = to;
}

using Ranges = std::vector<std::string>;

TEST(CutWizard, ChecksEachStepInOrder) {
    struct Case {
        std::optional<bool> toBeIncluded;
        std::int64_t from, to;
        const char* message;
    };

    for (const Case& c : {Case{{}, 1, 2, "Include/exclude option has not been selected."},
                          Case{true, 0, 2, "Both 'from' and 'to' intervals are required."},
                          Case{true, 2, 0, "Both 'from' and 'to' intervals are required."},
                          Case{false, 3, 2, "Invalid range.  The 'from' interval is later than the 'to' interval."},
                          Case{false, 2, 2, ""}}) {
        Wizard test;
        CutWizard wizard = test.begun();
        wizard.ToBeIncluded = c.toBeIncluded;
        choose(wizard, c.from, c.to);
        const bool isGood = std::string(c.message).empty();
        EXPECT_EQ(wizard.Next(), isGood);
        EXPECT_EQ(test.lastBox(), c.message);
        EXPECT_EQ(wizard.Title(), isGood ? "Interval Range #2" : "Interval Range #1");
    }
}

TEST(CutWizard, FinishesWithTheRangesTakenAndAsksAboutABadOne) {
    Wizard test;
    CutWizard wizard = test.begun();
    wizard.ToBeIncluded = true;
    choose(wizard, 1, 3);
    ASSERT_TRUE(wizard.Next());
    EXPECT_EQ(wizard.From, 0);
    test.messages.Answers = {Button::Cancel};
    EXPECT_FALSE(wizard.Finish());
    EXPECT_EQ(test.messages.Boxes.back().Prompt, "Both 'from' and 'to' intervals are required.\r\n\r\nFinish Anyway?");
    EXPECT_EQ(test.messages.Boxes.back().Title, "Finish Anyway?");
    choose(wizard, 5, 6);
    EXPECT_TRUE(wizard.Finish());
    EXPECT_TRUE(wizard.Store(test.log));
    EXPECT_EQ(test.log.LogIntervals.CutIntervals, (Ranges{"1~3", "5~6"}));
    EXPECT_TRUE(test.log.LogIntervals.IntervalsToBeIncluded);
    EXPECT_FALSE(wizard.Store(test.log)) << "the same again";
}

TEST(CutWizard, LoadsTheSelectionAndDropsWhatIsLeftBadOnFinish) {
    Wizard test;
    CutWizard wizard = test.begun({"1~3", "0~0", "8~99"}, true);
    EXPECT_EQ(wizard.ToBeIncluded, true);
    EXPECT_EQ(wizard.To, 3);
    ASSERT_TRUE(wizard.Next());
    EXPECT_EQ(wizard.From, 8);
    EXPECT_EQ(wizard.To, 10);
    wizard.To = 7;
    wizard.Back();
    ASSERT_TRUE(wizard.Next());
    EXPECT_EQ(wizard.To, 10) << "a bad range is not taken on the way back";
    wizard.To = 7;
    test.messages.Answers = {Button::Ok};
    EXPECT_TRUE(wizard.Finish());
    wizard.Store(test.log);
    EXPECT_EQ(test.log.LogIntervals.CutIntervals, Ranges{"1~3"});
}

TEST(CutWizard, ClearDropsTheRangeInFrontOrTheLast) {
    Wizard test;
    CutWizard wizard = test.begun({"1~1", "2~2", "3~3"});
    wizard.Next();
    wizard.Clear(); // the second
    EXPECT_EQ(wizard.Title(), "Interval Range #1");
    wizard.Next();
    EXPECT_EQ(wizard.From, 3);
    wizard.Next();
    wizard.Clear(); // the last, from the empty step
    EXPECT_EQ(wizard.Title(), "Interval Range #2");
    EXPECT_EQ(wizard.From, 0);
    wizard.Back();
    wizard.Clear();
    EXPECT_EQ(wizard.Title(), "Interval Range #1");
    EXPECT_FALSE(wizard.CanClear());
    EXPECT_THROW(wizard.Clear(), RuntimeError);
    test.messages.Answers = {Button::Ok};
    EXPECT_TRUE(wizard.Finish());
    EXPECT_TRUE(wizard.Store(test.log));
    EXPECT_TRUE(test.log.LogIntervals.CutIntervals.empty());
}

} // namespace
} // namespace kestrane
