// Which page of the help is about a part of the window.
#pragma once

#include <string_view>

class QWidget;

namespace kestrane {

// The topic (app/HelpPages.h) of the innermost window or part of one around a widget that has a page; that of the first
// page when none has, and for null.
std::string_view helpTopicOf(const QWidget* widget);

} // namespace kestrane
