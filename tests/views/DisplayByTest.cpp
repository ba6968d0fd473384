#include "views/DisplayBy.h"

#include "ShownLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

std::vector<std::string> textsOf(const std::vector<DisplayEntry>& list) {
    std::vector<std::string> texts;
    for (const DisplayEntry& entry : list)
        texts.push_back(entry.Text);
    return texts;
}

TEST(DisplayBy, ListsLeadBackToWhatTheyName) {
    ShownLog shown(modeFullOctave);
    shown.log.LnNumberA(1, 10);
    shown.plot(kChannelA, kInterval, {eLeq, ePeak, eLn(1)});
    shown.plot(kChannelA, kCumulative, {eLmax, eDoseET});
    shown.plot(kChannelB, kInterval, {eLmin});

    const auto bands = displayByList(shown.log, kByFreq);
    ASSERT_EQ(bands.size(), 12U);
    EXPECT_EQ(bands.front().Text, "Default");
    EXPECT_EQ(bands.front().Choice, DisplayChoice());
    EXPECT_EQ(bands[7].Text, "1k Hz (CHA)");
    EXPECT_EQ(bands[7].Choice, (DisplayChoice{"1k", kNoParameter}));

    const auto parameters = displayByList(shown.log, kByParam);
    EXPECT_EQ(textsOf(parameters), (std::vector<std::string>{"Default", "LAeq", "Amax", "L10"}));
    EXPECT_EQ(parameters[3].Choice, (DisplayChoice{"", eLn(1)}));
    EXPECT_EQ(placeOf({"", eLmax}, parameters), 2U);
    EXPECT_EQ(placeOf({"", eLmin}, parameters), 0U) << "not plotted on channel A";
}

TEST(DisplayBy, ABroadbandLogOffersNoChoice) {
    ShownLog shown;
    shown.plot(kChannelA, kInterval, {eLeq});
    EXPECT_EQ(textsOf(displayByList(shown.log, kByFreq)), std::vector<std::string>{"Default"});
    EXPECT_EQ(textsOf(displayByList(shown.log, kByParam)), std::vector<std::string>{"Default"});
}

} // namespace
} // namespace kestrane
