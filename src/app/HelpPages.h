// Which page of the help is about what a user sees: windows and parts of windows by their object names, tabs of a log
// by their numbers. A page is named by its topic, the name of its file without the language and ".html".
#pragma once

#include "views/LogTab.h"

#include <span>
#include <string_view>

namespace kestrane {

inline constexpr std::string_view kFirstHelpTopic = "help"; // what is opened when nothing tells more

// A window, or a part of one, and the topic of its page.
struct HelpOfWindow {
    std::string_view Name; // the object name
    std::string_view Topic;
};

struct HelpOfTab {
    LogTab Tab;
    std::string_view Topic;
};

// Both tables, in no order that matters. The same topic may stand in several rows.
std::span<const HelpOfWindow> helpOfWindows();
std::span<const HelpOfTab> helpOfTabs();

// Topics that have a page without a window of their own.
std::span<const std::string_view> otherHelpTopics();

// The topic of a window or a part of one by its object name; empty when it has none, and the window around it decides.
std::string_view helpTopic(std::string_view objectName);

// The topic of a tab of a log. A chart that is drawn in three dimensions has a page of its own.
std::string_view helpTopic(LogTab tab, bool is3D);

} // namespace kestrane
