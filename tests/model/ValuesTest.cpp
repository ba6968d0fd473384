#include "ErrorOf.h"
#include "model/clsDate.h"
#include "model/clsFileInfo.h"
#include "model/clsTime.h"
#include "model/clsValue.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <limits>

namespace kestrane {
namespace {

const Locale kPoint;
const Locale kGerman = {",", "."};
constexpr std::int32_t kMostLong = std::numeric_limits<std::int32_t>::max();

TEST(Value, KeepsTheReportedFigureBesideTheComputedOne) {
    clsValue value;
    value.Value(61.5F);
    EXPECT_EQ(value.CalcValue(), 61.5F);
    value.CalcValue(63);
    EXPECT_EQ(value.Value(), 61.5F);
    clsValue copy;
    copy.Copy(value);
    EXPECT_EQ(copy.Format(Zeros::Shown, Reading::Reported, {}, kPoint), "61.5");
}

TEST(Value, FormatsByFigureAndFormat) {
    using enum Zeros;
    using enum Reading;

    struct Case {
        float value, calcValue;
        Zeros zeros;
        Reading reading;
        const char* format;
        const char* text;
    };

    const Case cases[] = {{0, 0, Shown, Computed, "", "0.0"},
                          {0, 0, Blank, Computed, "", ""},
                          {60, 60.25F, Shown, Computed, "", "60.3"},
                          {-3.25F, -0.04F, Shown, Computed, "", "0.0"},
                          {1, 1000, Shown, Computed, "", "1000.0"},
                          {1, 1234.5F, Shown, Computed, "", "1235"},
                          {1, 1234.5F, Shown, Computed, "##0.0", "1234.5"},
                          {61.2F, 1500, Shown, Reported, "", "61"}, // how it is written goes by the computed figure
                          {1500, 61.2F, Shown, Reported, "", "1500.0"},
                          {0, 61.2F, Blank, Reported, "", ""},
                          {0, 50, Shown, Computed, "##0.0 %", "50.0 %"},
                          {0, 50.25F, Shown, Computed, "##0.0 %", "50.3 %"}};
    for (const Case& c : cases) {
        clsValue value;
        value.Value(c.value);
        value.CalcValue(c.calcValue);
        EXPECT_EQ(value.Format(c.zeros, c.reading, c.format, kPoint), c.text) << c.value << ' ' << c.format;
    }
    clsValue value;
    value.Value(61.25F);
    EXPECT_EQ(value.Format(Zeros::Shown, Reading::Computed, "##0.0 dB", kGerman), "61,3 dB");
}

clsDate dateOf(int day, int month, int year) {
    clsDate date;
    date.Day = static_cast<std::int16_t>(day);
    date.Month = static_cast<std::int16_t>(month);
    date.Year = static_cast<std::int16_t>(year);
    return date;
}

TEST(Date, IsReadDayFirst) {
    const clsDate before = dateOf(5, 6, 2007);
    const auto read = [&](const char* text, const Locale& locale = kPoint) {
        clsDate date = before;
        date.setDate(text, locale);
        return date;
    };
    EXPECT_TRUE(read("12/03/2019") == dateOf(12, 3, 2019));
    EXPECT_TRUE(read("12/03/2019", kGerman) == dateOf(12, 3, 2019));
    EXPECT_TRUE(read("12.03.2019", kGerman) == dateOf(12, 3, 2019));
    EXPECT_TRUE(read("12/03.2019", kGerman) == before);
    EXPECT_TRUE(read(" 1 / 2 / 20 ") == dateOf(1, 2, 20));
    EXPECT_TRUE(read("29/2/0") == dateOf(29, 2, 0)) << "2000 is a leap year";
    EXPECT_TRUE(read("31/12/2100") == dateOf(31, 12, 2100));
    for (const char* noDate : {"12.03.2019", "1/2100", "12/03/2019/1", "a/3/2019", "//", ""})
        EXPECT_TRUE(read(noDate) == before) << noDate;
    for (const char* wrong : {"31/02/2019", "29/2/1900", "12/13/2019", "0/0/0", "99/99/9999", "1/1/100", "1/1/1899",
                              "1/1/2101", "-1/1/2019"})
        EXPECT_TRUE(read(wrong) == dateOf(0, 0, 0)) << wrong;
    EXPECT_EQ(errorOf([&] { read("1/1/99999"); }), kErrorOverflow);
}

TEST(Date, FormatsAndCountsDays) {
    clsDate date;
    EXPECT_TRUE(date.IsDate());
    EXPECT_EQ(date.Format(), "");
    EXPECT_EQ(date.Format("yyyy"), "1900");
    EXPECT_EQ(date.getDate(), 2);
    EXPECT_EQ(dateOf(26, 11, 2024).Format(), "26/11/2024");
    EXPECT_EQ(dateOf(26, 11, 2024).getDate(), 45622);
    EXPECT_EQ(dateOf(1, 6, 29).Format(), "01/06/2029");
    EXPECT_EQ(dateOf(1, 6, 30).Format("dd/mm/yyyy"), "01/06/1930");
    for (const clsDate& invalid : {dateOf(31, 4, 2019), dateOf(0, 0, 0), dateOf(29, 2, 2019), dateOf(-5, 1, 1)}) {
        EXPECT_FALSE(invalid.IsDate());
        EXPECT_EQ(invalid.Format(), "");
        EXPECT_EQ(invalid.getDate(), 0);
    }

    clsTime noon;
    noon.Hours = 12;
    EXPECT_EQ(dateOf(26, 11, 2024).getDate(noon), 45622.5);
    noon.Secs = 60;
    EXPECT_EQ(dateOf(26, 11, 2024).getDate(noon), 45622);
    for (const clsTime& noTimeOfDay : {clsTime{24, 0, 0}, clsTime{12, 60, 0}, clsTime{-1, 0, 0}})
        EXPECT_EQ(errorOf([&] { dateOf(26, 11, 2024).getDate(noTimeOfDay); }), kErrorTypeMismatch);

    date.Copy(dateOf(28, 2, 2020), 1);
    EXPECT_TRUE(date == dateOf(29, 2, 2020));
    date.Copy(dateOf(31, 12, 99), 1);
    EXPECT_TRUE(date == dateOf(1, 1, 2000));
    date.Copy(dateOf(28, 2, 2020), -1);
    EXPECT_TRUE(date == dateOf(28, 2, 2020));
    date.Copy(dateOf(0, 0, 0), 5);
    EXPECT_TRUE(date == dateOf(0, 0, 0));
}

TEST(DateAndTime, AreTakenFromHexadecimalPairs) {
    clsDate date;
    date.CalcDate("1F0C13");
    EXPECT_TRUE(date == dateOf(31, 12, 19));
    date.CalcDate("1A0b7777771e"); // the year stands at the end
    EXPECT_TRUE(date == dateOf(26, 11, 30));
    for (const char* wrong : {"000C13", "1F0213", "010164", "0101-1", "1G0C13", "1F", ""}) {
        date = dateOf(5, 6, 2007);
        date.CalcDate(wrong);
        EXPECT_TRUE(date == clsDate()) << wrong;
    }
    for (const auto& [text, expected] : {std::pair("0A1E", "10:30:00"),
                                         {"631E", "00:30:00"},
                                         {"173B3B", "23:59:59"},
                                         {"183C3C", "00:00:00"},
                                         {"0A1EFF05", "10:30:05"},
                                         {"0A1EZZ", "10:30:00"},
                                         {"0A1E0", "10:30:00"},
                                         {"", "00:00:00"}}) {
        clsTime time;
        time.Secs = 7;
        time.AcquireTime(text);
        EXPECT_EQ(time.hh_mm_ss(), expected) << text;
    }
}

clsTime timeOf(std::int32_t hours, std::int32_t mins, std::int32_t secs) {
    clsTime time;
    time.Hours = hours;
    time.Mins = mins;
    time.Secs = secs;
    return time;
}

TEST(Time, IsShownOnlyWhenItsPartsAreInRange) {
    EXPECT_EQ(timeOf(9, 5, 7).hh_mm(), "09:05");
    EXPECT_EQ(timeOf(100, 0, 0).hh_mm_ss(), "100:00:00");
    for (const clsTime& time : {timeOf(1, 2, 60), timeOf(1, 2, -1)})
        EXPECT_EQ(time.hh_mm() + time.hh_mm_ss(), "01:02");
    for (const clsTime& time : {timeOf(1, 60, 3), timeOf(-1, 2, 3), timeOf(1, -2, 3)})
        EXPECT_EQ(time.hh_mm() + time.hh_mm_ss(), ":03");
}

TEST(Time, AddCarriesUpwardsAndRaisesPastItsType) {
    struct Case {
        clsTime from;
        std::int32_t seconds;
        bool bResetHours;
        clsTime to;
        int days;
    };

    const Case cases[] = {{timeOf(23, 59, 50), 20, true, timeOf(0, 0, 10), 1},
                          {timeOf(23, 59, 50), 20, false, timeOf(24, 0, 10), 0},
                          {timeOf(0, 0, 10), -20, true, timeOf(0, 0, -10), 0},
                          {timeOf(0, 130, 0), 0, false, timeOf(2, 10, 0), 0},
                          {timeOf(49, 59, 59), 1, true, timeOf(2, 0, 0), 2},
                          {timeOf(-1, 59, 59), 1, true, timeOf(0, 0, 0), 0},
                          {timeOf(0, 0, 0), kMostLong, false, timeOf(596523, 14, 7), 0}};
    for (const Case& c : cases) {
        clsTime time = timeOf(7, 7, 7);
        EXPECT_EQ(time.Add(c.from, c.seconds, c.bResetHours), c.days) << c.seconds;
        EXPECT_TRUE(time == c.to) << time.Hours << ':' << time.Mins << ':' << time.Secs;
    }
    clsTime time;
    EXPECT_EQ(errorOf([&] { time.Add(timeOf(0, 0, kMostLong), 1, false); }), kErrorOverflow);
    EXPECT_EQ(errorOf([&] { time.Add(timeOf(kMostLong, 59, 59), 1, false); }), kErrorOverflow);
    EXPECT_EQ(errorOf([&] { time.Add(timeOf(24 * 32768, 0, 0), 0, true); }), kErrorOverflow);
    EXPECT_EQ(errorOf([&] { timeOf(596523, 14, 8).getTimeAsSeconds(); }), kErrorOverflow);
    EXPECT_EQ(timeOf(596523, 14, 7).getTimeAsSeconds(), kMostLong);

    time = clsTime();
    time.setTimeFromSeconds(3661);
    time.setTimeFromSeconds(3661);
    EXPECT_TRUE(time == timeOf(2, 2, 2)) << "it adds to the time as it stands";
    EXPECT_EQ(timeOf(7, 89, 60).getTimeAsHours(), 8.5F);
    EXPECT_EQ(timeOf(0, 0, 36).getTimeAsHours(), 0.6F / 60) << "in single precision";
}

TEST(Time, IsReadFromThreeParts) {
    const clsTime before = timeOf(7, 8, 9);
    std::int64_t error = 0;
    const auto read = [&](const char* text) {
        clsTime time = before;
        error = errorOf([&] { time.setTime(text, kPoint); });
        return time;
    };
    EXPECT_TRUE(read("1:2:3") == timeOf(1, 2, 3));
    EXPECT_TRUE(read(" 1 : 2 : 3 ") == timeOf(1, 2, 3));
    EXPECT_TRUE(read("100:99:99") == timeOf(100, 99, 99));
    EXPECT_TRUE(read("-1:0:2.5") == timeOf(-1, 0, 2));
    for (const char* noTime : {"", "12", "a:1:2", "1:b:2", "1:2:c", ":2:3", "1:2:3:4"})
        EXPECT_TRUE(read(noTime) == before && error == 0) << noTime;
    for (const char* withoutSeconds : {"1:2", "1:2:"})
        EXPECT_TRUE(read(withoutSeconds) == timeOf(1, 2, 9) && error == kErrorTypeMismatch) << withoutSeconds;
    EXPECT_TRUE(read("1:3000000000:0") == timeOf(1, 8, 9) && error == kErrorOverflow);
}

TEST(FileInfo, TellsOfFilesThatExist) {
    const TemporaryFolder folder;
    writeText(folder.file("a.b.Xml"), "12345");
    clsFileInfo info;
    info.Name(folder.file("a.b.Xml"));
    EXPECT_EQ(info.Size(), 5);
    EXPECT_EQ(info.Extension(), "Xml");
    EXPECT_GT(info.Modified(), 45000);
    info.Name(folder.file("missing.xml"));
    EXPECT_EQ(info.Name() + info.Extension(), "");
    EXPECT_EQ(static_cast<double>(info.Size()) + info.Modified(), 0);
}

} // namespace
} // namespace kestrane
