// What the Help menu opens, and what is said when it cannot be opened. The programs that show it are the desktop's.
#pragma once

#include "model/Session.h"

#include <functional>
#include <string>

namespace kestrane {

// The desktop that the program runs on.
struct Desktop {
    std::function<bool(const std::string& mimeType)> HasProgramFor; // files of that kind
    std::function<bool(const std::string& address)> Open;           // a path or a page; false: nothing opened it
};

void OpenHelpFile(Session& session, const Desktop& desktop, const std::string& path);
void OpenPage(Session& session, const Desktop& desktop, const std::string& address);

// Opens the manual, when there is a document reader; else offers the page that tells where to get one.
void GetManual(Session& session, const Desktop& desktop, const std::string& path);

} // namespace kestrane
