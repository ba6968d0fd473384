#include "model/TimeText.h"
#include "ErrorOf.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(TimeText, ConvertsToHoursAndBack) {
    EXPECT_EQ(TimeTextToHours("8:30:36"), 8.51);
    EXPECT_EQ(TimeTextToHours("100:0:0"), 100);
    for (const char* text : {"", "8", "8:30", "8:30:", "a:30:00", "8:3O:00", "8:30:0.5"})
        EXPECT_EQ(errorOf([&] { TimeTextToHours(text); }), kErrorTypeMismatch) << text;

    const std::pair<float, const char*> hours[] = {
        {0, "00:00:00"}, {8.51F, "08:30:36"}, {1.99999F, "01:59:60"}, {0.01F, "00:00:36"}, {123.5F, "123:30:00"}};
    for (const auto& [value, text] : hours)
        EXPECT_EQ(HoursToTimeText(value), text);
}

TEST(TimeText, IsNormalisedFromWhatIsTyped) {
    struct Case {
        const char *typed, *timeOfDay, *duration;
    };

    const Case cases[] = {{"8", "", "08:00:00"},
                          {"130", "01:30:00", "01:30:00"},
                          {"13045", "01:30:45", "01:30:45"},
                          {"013045", "01:30:45", "01:30:45"},
                          {"8:30", "08:30:00", "08:30:00"},
                          {"8:30:5", "08:30:05", "08:30:05"},
                          {"23:59:59", "23:59:59", "23:59:59"},
                          {"24:00:00", "", "24:00:00"},
                          {"2400", "", "24:00:00"}};
    for (const Case& c : cases) {
        EXPECT_EQ(NormaliseTimeText(c.typed, false), c.timeOfDay) << c.typed;
        EXPECT_EQ(NormaliseTimeText(c.typed, true), c.duration) << c.typed;
    }
    for (const char* wrong : {"", "0130450", "8:3", ":30", "100:30", "8:30:", "8:3:05", "8:30:055", "8:30:05:1",
                              "24:00:01", "25", "23:60", "8:30:60", "-1:30", "1a30", "99999999999"}) {
        EXPECT_EQ(NormaliseTimeText(wrong, false), "") << wrong;
        EXPECT_EQ(NormaliseTimeText(wrong, true), "") << wrong;
    }
}

} // namespace
} // namespace kestrane
