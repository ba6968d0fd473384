// The keyboard: help on what has the focus.
#include "desktop/Desk.h"
#include "desktop/HelpTopic.h"

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";

TEST(HelpKey, IsOfTheInnermostPartThatHasAPage) {
    Desk desk;
    EXPECT_EQ(helpTopicOf(nullptr), "help");
    EXPECT_EQ(helpTopicOf(desk.frame.get()), "help");
    EXPECT_EQ(helpTopicOf(desk.area().currentSubWindow()->findChild<QWidget*>("StartPage")), "start");
    desk.openLog(kShift, "Broadband 1");
    EXPECT_EQ(helpTopicOf(&desk.tree()), "tree");
    EXPECT_EQ(helpTopicOf(&desk.tabs()), "chart");
    desk.clickTab("Intervals (Table)");
    EXPECT_EQ(helpTopicOf(&desk.tabs()), "table");
    desk.clickTab("Cumultv (Data)");
    EXPECT_EQ(helpTopicOf(&desk.control<QWidget>("txtUserCal")), "panel");
}

} // namespace
} // namespace kestrane
