#include "model/LogTime.h"
#include "ErrorOf.h"
#include "TestSession.h"
#include "model/LogParameters.h"
#include "model/clsLog.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrane {
namespace {

struct LogTimeTest : testing::Test, TestSession {
    clsLog log{session};

    void run(const char* startDate, const char* startTime, const char* endDate, const char* endTime) {
        log.StartDate.setDate(startDate, {});
        log.StartTime.setTime(startTime, {});
        log.EndDate.setDate(endDate, {});
        log.EndTime.setTime(endTime, {});
    }

    // Replaces the rows by one for each stamp "dd/mm/yyyy hh:mm:ss", or "hh:mm:ss" for a row without a date.
    void setRows(const std::vector<std::string>& stamps) {
        log.LogIntervals.Clear();
        for (const std::string& stamp : stamps) {
            clsLogInterval row;
            row.Initialize(log.objLogShared);
            row.StartDate.setDate(stamp.substr(0, 10), {});
            row.StartTime.setTime(stamp.substr(stamp.size() - 8), {});
            log.LogIntervals.Add(row);
        }
    }

    std::vector<std::string> stamps() const {
        std::vector<std::string> texts;
        for (std::int64_t row = 1; row <= log.LogIntervals.Count(); ++row) {
            const clsLogInterval item = log.LogIntervals.Item(row);
            const std::string date = item.StartDate.Format();
            texts.push_back(date.empty() ? item.StartTime.hh_mm_ss() : date + ' ' + item.StartTime.hh_mm_ss());
        }
        return texts;
    }
};

TEST_F(LogTimeTest, TheInstrumentsTimeCountsThenItsRowsThenTheRun) {
    run("26/11/2024", "23:59:00", "27/11/2024", "00:01:30");
    log.Interval = 60;
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::LeftOut), 150) << "across midnight";
    log.LogIntervals.setArraySize(10);
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::Count), 600);
    EXPECT_EQ(getTime(log, 's', Run::Whole, ExcludedRows::Count), 150);
    log.LogIntervals.CutIntervals = {"1~3"};
    log.LogIntervals.ApplySelection();
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::Count), 600);
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::LeftOut), 420);
    EXPECT_EQ(getTime(log, 's', Run::Whole, ExcludedRows::LeftOut), 150) << "never of the whole run";
    log.MeasurementTimeFromInstrument = 75;
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::Count), 75);
    EXPECT_EQ(getTime(log, 's', Run::Measured, ExcludedRows::LeftOut), 52) << "52.5 rounds to even";
    log.LogIntervals.CutIntervals = {"1~10"};
    log.LogIntervals.ApplySelection();
    EXPECT_EQ(getTime(log, 'h', Run::Measured, ExcludedRows::LeftOut), 0);
    EXPECT_EQ(getTime(log, 'M', Run::Whole, ExcludedRows::LeftOut), 2.5F);
}

TEST_F(LogTimeTest, PercentilesNeedFiveMinutes) {
    log.LnNumberA(2, 50);
    log.MeasurementTimeFromInstrument = 299;
    EXPECT_FALSE(IsLnCumulativeValid(log, kChannelA, 2));
    log.MeasurementTimeFromInstrument = 300;
    EXPECT_TRUE(IsLnCumulativeValid(log, kChannelA, 2));
    EXPECT_FALSE(IsLnCumulativeValid(log, kChannelA, 1)) << "not in use";
    EXPECT_FALSE(IsLnCumulativeValid(log, kChannelB, 2));
    log.IsZoomed = true;
    EXPECT_FALSE(IsLnCumulativeValid(log, kChannelA, 2));
    log.IsParent5Mins = true;
    log.MeasurementTimeFromInstrument = 1;
    EXPECT_TRUE(IsLnCumulativeValid(log, kChannelA, 2));
}

// A file may hold any interval length and any dates.
TEST_F(LogTimeTest, ATimePastItsTypeIsNoTime) {
    log.LnNumberA(1, 10);
    log.LnCumA(1, 0).Value(60);
    log.EndDate.setDate("26/11/2024", {}); // and no start: more than a century
    EXPECT_EQ(errorOf([&] { getTime(log, 's', Run::Measured, ExcludedRows::Count); }), kErrorOverflow);
    EXPECT_FALSE(lastsFiveMinutes(log, ExcludedRows::LeftOut));
    EXPECT_EQ(LogLengthText(log), "");
    SetPlottableValues(log);
    EXPECT_FALSE(log.objLogOptions.Plottable(kChannelA, kCumulative, eLn1));

    log.Interval = 2147483647;
    log.LogIntervals.setArraySize(2);
    EXPECT_EQ(errorOf([&] { getTime(log, 's', Run::Measured, ExcludedRows::Count); }), kErrorOverflow);
    EXPECT_FALSE(lastsFiveMinutes(log, ExcludedRows::Count));
    SetPlottableValues(log);
}

TEST_F(LogTimeTest, TheLengthInWordsLosesWholeMonths) {
    const std::pair<std::int32_t, const char*> cases[] = {{1, "1 sec"},
                                                          {3661, "1 hour 1 min 1 sec"},
                                                          {2 * 86400, "48 hours"},
                                                          {31 * 86400 - 1, "743 hours 59 mins 59 secs"},
                                                          {31 * 86400, ""},
                                                          {31 * 86400 + 7200, "2 hours"},
                                                          {-5, "743 hours 59 mins 55 secs"}}; // from the end of a month
    for (const auto& [seconds, text] : cases) {
        log.MeasurementTimeFromInstrument = seconds;
        EXPECT_EQ(LogLengthText(log), text) << seconds;
    }
    log.MeasurementTimeFromInstrument = 0;
    run("27/11/2024", "00:00:00", "26/11/2024", "00:00:00");
    EXPECT_EQ(LogLengthText(log), "720 hours");
    run("26/11/2024", "24:00:00", "26/11/2024", "00:00:00");
    EXPECT_EQ(LogLengthText(log), "") << "no time of day";
}

TEST_F(LogTimeTest, TheIntervalIsTheSpacingOfMostRows) {
    struct Case {
        std::vector<std::string> stamps;
        std::int32_t interval;
        bool isErratic;
    };

    const Case cases[] = {
        {{"26/11/2024 10:00:00", "26/11/2024 10:05:00", "26/11/2024 10:10:00"}, 300, false},
        {{"26/11/2024 10:00:00", "26/11/2024 10:01:00", "26/11/2024 10:03:00", "26/11/2024 10:05:00"}, 120, true},
        {{"26/11/2024 10:00:00", "26/11/2024 10:02:00", "26/11/2024 10:03:00"}, 120, true}, // the first on a tie
        {{"26/11/2024 23:59:00", "27/11/2024 00:01:00"}, 120, false},
        {{"23:59:00", "00:01:00"}, 120, false},
        {{"26/11/2024 10:00:00", "28/11/2024 10:00:00"}, 2 * 86400, false},
        {{"26/11/2024 10:00:00"}, 77, false},
        {{}, 77, false}};
    for (const Case& c : cases) {
        setRows(c.stamps);
        log.Interval = 77;
        log.IsErraticIntervals = false;
        SetInterval(log);
        EXPECT_EQ(log.Interval, c.interval);
        EXPECT_EQ(log.IsErraticIntervals, c.isErratic);
        EXPECT_EQ(stamps(), c.stamps);
    }
}

TEST_F(LogTimeTest, StampsOfWholeMinutesGetTheirSecondsBack) {
    const std::vector<std::string> sixStamps = {"10:00:00", "10:00:00", "10:00:00", "10:00:00", "10:01:00", "10:01:00"};
    setRows(sixStamps);
    run("26/11/2024", "10:00:05", "26/11/2024", "10:02:05"); // 120 s / 6 rows
    log.Interval = 60;
    SetInterval(log);
    EXPECT_EQ(log.Interval, 20);
    EXPECT_TRUE(log.IsErraticIntervals);
    EXPECT_EQ(stamps(),
              (std::vector<std::string>{"10:00:00", "10:00:25", "10:00:45", "10:00:05", "10:01:05", "10:01:25"}));

    for (const auto& [endTime, interval] : {std::pair("10:03:05", 30), {"10:01:05", 10}, {"10:00:50", 0}}) {
        setRows({"10:00:00", "10:00:00", "10:00:00", "10:00:00", "10:00:00", "10:00:00"});
        run("26/11/2024", "10:00:05", "26/11/2024", endTime);
        SetInterval(log);
        EXPECT_EQ(log.Interval, interval) << endTime;
        EXPECT_FALSE(log.IsErraticIntervals);
    }

    setRows({"10:00:00", "10:00:45", "10:01:00", "10:01:45"}); // erratic but not 0: the stamps stay
    run("26/11/2024", "10:00:00", "26/11/2024", "10:02:00");
    SetInterval(log);
    EXPECT_EQ(log.Interval, 30);
    EXPECT_EQ(stamps(), (std::vector<std::string>{"10:00:00", "10:00:45", "10:01:00", "10:01:45"}));

    setRows({"10:00:00", "10:00:00"});
    log.StartDate = clsDate();
    SetInterval(log); // the length of the run cannot be told
    EXPECT_EQ(log.Interval, 0);
}

TEST_F(LogTimeTest, SampleDatesCountTheMidnights) {
    log.StartDate.setDate("28/02/2020", {});
    log.Interval = 60;
    setRows({"23:59:00", "23:59:30", "00:00:00", "00:00:00", "12:00:00", "11:00:00"});
    SetSampleDates(log);
    EXPECT_EQ(stamps(),
              (std::vector<std::string>{"28/02/2020 23:59:00", "28/02/2020 23:59:30", "29/02/2020 00:00:00",
                                        "29/02/2020 00:00:00", "29/02/2020 12:00:00", "01/03/2020 11:00:00"}));
    log.Interval = 0;
    setRows({"10:00:00", "10:00:00"});
    SetSampleDates(log);
    EXPECT_EQ(stamps().at(1), "29/02/2020 10:00:00");
}

} // namespace
} // namespace kestrane
