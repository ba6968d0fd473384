#include "explorer/DisplayBy.h"

#include "explorer/ShownLog.h"

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(DisplayBy, ListsLeadBackToWhatTheyName) {
    ShownLog shown(modeFullOctave);
    shown.log.LnNumberA(1, 10);
    shown.plot(kChannelA, kInterval, {eLeq, ePeak, eLn(1)});
    shown.plot(kChannelA, kCumulative, {eLmax, eDoseET});
    shown.plot(kChannelB, kInterval, {eLmin});

    const auto bands = displayByList(shown.log, kByFreq);
    ASSERT_EQ(bands.size(), 12U);
    EXPECT_EQ(bands.front(), "Default");
    EXPECT_EQ(bands[7], "1k Hz (CHA)");
    EXPECT_EQ(displayChoice(shown.log, kByFreq, bands[7]).BandText, "1k");
    EXPECT_TRUE(displayChoice(shown.log, kByFreq, bands[7]).ParameterText.empty());

    const auto parameters = displayByList(shown.log, kByParam);
    EXPECT_EQ(parameters, (std::vector<std::string>{"Default", "LAeq", "Amax", "L10"}));
    EXPECT_EQ(displayChoice(shown.log, kByParam, "Amax").ParameterText, "Amax");
    EXPECT_EQ(chosenParameter(shown.log, "Amax"), eLmax);
    EXPECT_EQ(chosenParameter(shown.log, "L10"), eLn(1));

    for (const std::string& nothing : {std::string(), bands.front()}) {
        const DisplayChoice choice = displayChoice(shown.log, kByParam, nothing);
        EXPECT_TRUE(choice.BandText.empty() && choice.ParameterText.empty());
    }
    EXPECT_EQ(chosenParameter(shown.log, "Apeak"), 0);
    EXPECT_EQ(chosenParameter(shown.log, ""), 0);
}

TEST(DisplayBy, CaptionsOfALogWithChannelBNameTheChannel) {
    ShownLog shown(modeThirdOctave);
    shown.log.IsChannelBOn = true;
    shown.plot(kChannelA, kInterval, {eLeq});
    EXPECT_EQ(displayByList(shown.log, kByParam).back(), "LAeq (CHA)");
    EXPECT_EQ(chosenParameter(shown.log, "LAeq (CHA)"), eLeq);
}

TEST(DisplayBy, ABroadbandLogOffersNoChoice) {
    ShownLog shown;
    shown.plot(kChannelA, kInterval, {eLeq});
    EXPECT_EQ(displayByList(shown.log, kByFreq), std::vector<std::string>{"Default"});
    EXPECT_EQ(displayByList(shown.log, kByParam), std::vector<std::string>{"Default"});
}

} // namespace
} // namespace kestrane
