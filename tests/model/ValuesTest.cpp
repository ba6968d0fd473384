#include "ErrorOf.h"
#include "model/clsDate.h"
#include "model/clsDoseLogSample.h"
#include "model/clsFileInfo.h"
#include "model/clsStringBuffer.h"
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
    value.FormatString = "0.00";
    clsValue copy;
    copy.Copy(value);
    EXPECT_EQ(copy.Format(false, true, {}, kPoint), "61.50");
}

TEST(Value, FormatsByFigureAndFormat) {
    struct Case {
        float value, calcValue;
        bool BlankZeros, UseOriginal;
        const char* format;
        const char* text;
    };

    const Case cases[] = {{0, 0, false, false, "", "0.0"},
                          {0, 0, true, false, "", ""},
                          {0, 0, true, false, "##0.0 dB", ""},
                          {60, 60.25F, false, false, "", "60.3"},
                          {60, 60.25F, false, true, "", "60.0"},
                          {-3.25F, -0.04F, false, false, "", "0.0"},
                          {-3.25F, -0.04F, false, true, "", "-3.3"},
                          {1, 1000, false, false, "", "1000.0"},
                          {1, 1234.5F, false, false, "", "1235"},
                          {1, 1234.5F, false, false, "##0.0", "1234.5"},
                          {61.2F, 1500, false, true, "", "61"}, // how it is written goes by the computed figure
                          {1500, 61.2F, false, true, "", "1500.0"},
                          {0, 61.2F, true, true, "", ""},
                          {61.2F, 0, true, true, "", "61.2"},
                          {0, 50, false, false, "##0.0 %", "50.0 %"},
                          {0, 50.25F, false, false, "##0.0 %", "50.3 %"}};
    for (const Case& c : cases) {
        clsValue value;
        value.Value(c.value);
        value.CalcValue(c.calcValue);
        EXPECT_EQ(value.Format(c.BlankZeros, c.UseOriginal, c.format, kPoint), c.text) << c.value << ' ' << c.format;
    }
    clsValue value;
    value.Value(61.25F);
    EXPECT_EQ(value.Format(false, false, "##0.0 dB", kGerman), "61,3 dB");
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

    struct Step {
        clsDate from;
        int days;
        clsDate to;
    };

    const Step steps[] = {{dateOf(28, 2, 2020), 1, dateOf(29, 2, 2020)},  {dateOf(31, 12, 2019), 1, dateOf(1, 1, 2020)},
                          {dateOf(31, 12, 99), 1, dateOf(1, 1, 2000)},    {dateOf(28, 2, 2020), 0, dateOf(28, 2, 2020)},
                          {dateOf(28, 2, 2020), -1, dateOf(28, 2, 2020)}, {dateOf(0, 0, 0), 5, dateOf(0, 0, 0)},
                          {dateOf(1, 1, 2020), 366, dateOf(1, 1, 2021)}};
    for (const Step& step : steps) {
        date.Copy(step.from, step.days);
        EXPECT_TRUE(date == step.to) << step.from.Format() << " + " << step.days;
    }
}

TEST(DateAndTime, AreTakenFromHexadecimalPairs) {
    const std::pair<const char*, clsDate> dates[] = {
        {"1F0C13", dateOf(31, 12, 19)}, {"1a0b18", dateOf(26, 11, 24)}, {"1A0B77777718", dateOf(26, 11, 24)},
        {"000C13", dateOf(1, 1, 1900)}, {"1F0213", dateOf(1, 1, 1900)}, {"010164", dateOf(1, 1, 1900)},
        {"0101-1", dateOf(1, 1, 1900)}, {"1G0C13", dateOf(1, 1, 1900)}, {"1F", dateOf(1, 1, 1900)},
        {"", dateOf(1, 1, 1900)}};
    for (const auto& [text, expected] : dates) {
        clsDate date = dateOf(5, 6, 2007);
        date.CalcDate(text);
        EXPECT_TRUE(date == expected) << text;
    }
    const std::pair<const char*, const char*> times[] = {
        {"0A1E", "10:30:00"},   {"631E", "00:30:00"},   {"173B3B", "23:59:59"},
        {"183C3C", "00:00:00"}, {"0A1E0F", "10:30:15"}, {"0A1EFF05", "10:30:05"},
        {"0A1EZZ", "10:30:00"}, {"0A1E0", "10:30:00"},  {"", "00:00:00"}};
    for (const auto& [text, expected] : times) {
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
    struct Case {
        clsTime time;
        const char *hh_mm, *hh_mm_ss;
    };

    const Case cases[] = {{timeOf(9, 5, 7), "09:05", "09:05:07"},
                          {timeOf(100, 0, 0), "100:00", "100:00:00"},
                          {timeOf(1, 2, 60), "01:02", ""},
                          {timeOf(1, 2, -1), "01:02", ""},
                          {timeOf(1, 60, 0), "", ":00"},
                          {timeOf(-1, 2, 3), "", ":03"},
                          {timeOf(1, -2, -3), "", ""}};
    for (const Case& c : cases) {
        EXPECT_EQ(c.time.hh_mm(), c.hh_mm);
        EXPECT_EQ(c.time.hh_mm_ss(), c.hh_mm_ss);
    }
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

TEST(StringBuffer, HoldsAllThatIsAppended) {
    std::string drained;
    std::size_t pieces = 0;
    clsStringBuffer plain;
    clsStringBuffer draining([&](std::string_view piece) {
        drained += piece;
        ++pieces;
    });
    std::string expected;
    for (int i = 0; i < 4000; ++i) {
        const std::string text(static_cast<std::size_t>(i % 1500), static_cast<char>('a' + i % 26));
        const std::string number = std::to_string(i);
        for (clsStringBuffer* buffer : {&plain, &draining}) {
            buffer->append(text);
            char* const room = buffer->reserve(8);
            buffer->written(room + number.copy(room, 8));
        }
        expected += text + number;
        ASSERT_LT(draining.getLength(), std::size_t{2} << 20);
    }
    draining.append(std::string(5'000'000, 'z'));
    draining.flush();
    EXPECT_TRUE(plain.getString() == expected);
    EXPECT_EQ(plain.getLength(), expected.size());
    EXPECT_TRUE(drained == expected + std::string(5'000'000, 'z'));
    EXPECT_GT(pieces, 2U);
    plain.initialise();
    plain.append("");
    EXPECT_EQ(plain.getString(), "");
}

TEST(ExposureRow, ComputesItsLevelAndDose) {
    struct Case {
        float leq;
        std::int16_t criterion, exchange;
        clsTime duration;
        double lex, dose;
    };

    const Case cases[] = {{85, 85, 3, timeOf(8, 0, 0), 85, 100},  {85, 85, 3, timeOf(4, 0, 0), 81.9897, 50},
                          {90, 85, 5, timeOf(8, 0, 0), 90, 200},  {90, 85, 5, timeOf(16, 0, 0), 93.0103, 400},
                          {0, 85, 3, timeOf(8, 0, 0), 0, 0},      {85, 0, 3, timeOf(8, 0, 0), 85, 0},
                          {85, 85, 0, timeOf(8, 0, 0), 85, 0},    {85, 85, 3, timeOf(0, 0, 0), 0, 0},
                          {9000, 85, 3, timeOf(8, 0, 0), 9000, 0}};
    for (const Case& c : cases) {
        clsDoseLogSample row;
        row.Leq.Value(c.leq);
        row.Criterion = c.criterion;
        row.Exchange = c.exchange;
        row.Duration = c.duration;
        EXPECT_NEAR(row.getLex().Value(), c.lex, 1e-3) << c.leq;
        EXPECT_NEAR(row.getDose().Value(), c.dose, 1e-2) << c.leq;
    }
    clsDoseLogSample row;
    row.Leq.Value(85);
    row.Dose.Value(12);
    row.Note = "Press";
    clsDoseLogSample copy;
    copy.Copy(row);
    EXPECT_EQ(copy.Note, "Press");
    EXPECT_EQ(copy.Dose.Value(), 85) << "the copy's dose takes the level";
}

TEST(FileInfo, TellsOfFilesThatExist) {
    const TemporaryFolder folder;
    writeText(folder.file("a.b.Xml"), "12345");
    std::filesystem::create_directory(folder.file("d.e"));
    writeText(folder.file("d.e/plain"), "");
    clsFileInfo info;
    info.Name(folder.file("a.b.Xml"));
    EXPECT_EQ(info.Size(), 5);
    EXPECT_EQ(info.Extension(), "Xml");
    EXPECT_GT(info.Modified(), 45000);
    info.Name(folder.file("d.e/plain"));
    EXPECT_EQ(info.Extension(), "");
    info.Name(folder.file("missing.xml"));
    EXPECT_EQ(info.Name() + info.Extension(), "");
    EXPECT_EQ(static_cast<double>(info.Size()) + info.Modified(), 0);
}

} // namespace
} // namespace kestrane
