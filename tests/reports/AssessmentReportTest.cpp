#include "reports/AssessmentReport.h"

#include "TestSession.h"
#include "reports/RecordingPage.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

// A day of welding under a protector.
struct WelderDay : TestSession {
    Assessment assessment;
    std::string path = "/data/day.kxa";
    Measurements measured;

    WelderDay() {
        assessment.Title = "Hall 3";
        assessment.Workplace = "Welding shop";
        AssessmentGroup& group = assessment.Groups.emplace_back();
        group.Name = "Welders";
        group.Instrument = Meter::Dosimeter;
        for (const auto& [name, hours, level] : {std::tuple("Grinding", 4.0, 91.0), std::tuple("Office", 4.0, 61.0)}) {
            AssessmentTask& task = group.Tasks.emplace_back();
            task.Name = name;
            task.Hours = hours;
            task.Samples = {level, level, level};
        }
        group.Protector.emplace().Reduction = 15;
        group.Week.assign(5, {"Mon", {}, {}});
    }

    RecordingPage drawn() {
        const std::vector<GroupResult> results = assess(session, assessment, path, measured);
        static const RecordedMetrics kUpright;
        AssessmentReport report({session, assessment, path, measured, results}, kUpright);
        return recorded(report, kUpright);
    }

    std::string text() {
        std::string all;
        for (const DrawnText& text : drawn().texts)
            all += text.text + "\n";
        return all;
    }
};

TEST(AssessmentReport, SaysWhatTheGroupComesToAndLeavesRoomToSign) {
    WelderDay day;
    const RecordingPage page = day.drawn();
    EXPECT_EQ(page.pages, 1U);
    const std::string text = day.text();
    for (const char* words :
         {"Hall 3 - Exposure Assessment\n", "Welding shop\n", "ISO 9612:2009, By tasks\n", "Grinding\n",
          "91.0  91.0  91.0\n", "100 %\n", "88.0 dB \u00B1 3.0 dB\n", // 91 less 10 lg 2; U = 1.65 sqrt(1.5² + 1)
          "\u2717 exceeded\n", "Upper action value, week\n", "The protector fits this exposure.\n", // 73 dB
          "100 % of the time, 8.0 h of the effective day\n",
          "\u2022 No C-weighted peak was measured.  Peaks are not compared.\n", "dose 199 % of 85 dB"})
        EXPECT_NE(text.find(words), std::string::npos) << words << text;
    EXPECT_EQ(text.find("SHA-256"), std::string::npos) << "there are no data files";

    double lastText = 0;
    for (const DrawnText& drawn : page.texts)
        if (drawn.text.find("Signature") != std::string::npos) lastText = drawn.box.Top;
    double above = 0; // what is written last above it
    for (const DrawnText& drawn : page.texts)
        if (drawn.box.Top < lastText - 0.01) above = std::max(above, drawn.box.Top + drawn.box.Height);
    EXPECT_GE(lastText - above, 0.8);
}

TEST(AssessmentReport, AListOfSamplesIsThereWholeHoweverLong) {
    WelderDay day;
    day.assessment.Groups[0].Tasks[0].Samples.assign(900, 63.5);
    const RecordingPage page = day.drawn();
    std::size_t levels = 0;
    for (const DrawnText& drawn : page.texts)
        for (std::size_t at = drawn.text.find("63.5"); at != std::string::npos; at = drawn.text.find("63.5", at + 1))
            ++levels;
    EXPECT_EQ(levels, 900U + 1) << "and their mean";
    EXPECT_EQ(page.faults(), "");
    day.assessment.Groups.clear();
    EXPECT_NE(day.text().find("Welding shop\nAssessor:\nDate:\nThere is no group"), std::string::npos) << day.text();
}

TEST(AssessmentReport, EachGroupBeginsAPageAndALongTableGoesOnUnderItsCaptions) {
    WelderDay day;
    day.assessment.Groups.push_back(day.assessment.Groups[0]);
    AssessmentGroup& group = day.assessment.Groups[1];
    LogRows rows;
    rows.File = "a file of a very long name, so long that it has to be broken into lines in its column.xml";
    group.Tasks[0].Samples.assign(60, rows);
    const RecordingPage page = day.drawn();
    ASSERT_GE(page.pages, 3U);
    std::size_t captions = 0;
    for (const DrawnText& drawn : page.texts) {
        captions += drawn.text == "SHA-256" ? 1 : 0;
        EXPECT_TRUE(drawn.text != "Task" || drawn.page < 2);
    }
    EXPECT_EQ(captions, page.pages - 1);
    EXPECT_EQ(page.faults(), "");
}

} // namespace
} // namespace kestrane
