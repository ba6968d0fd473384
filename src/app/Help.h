// What the Help menu opens, and the messages when something cannot be opened. The pages are shown by other programs of
// the desktop.
#pragma once

#include "model/Session.h"

#include <functional>
#include <string>

namespace kestrane {

// The desktop that the program runs on.
struct Desktop {
    std::function<bool(const std::string& mimeType)> HasProgramFor; // whether there is a program for such files
    std::function<bool(const std::string& address)> Open; // a path or a web page; false when nothing opened it
};

// The path of a page of the help in a folder, in the language of the program when it is there. The first page stands in
// for one that is missing.
std::string helpPage(const Session& session, const std::string& folder, const std::string& name);

void OpenHelpFile(Session& session, const Desktop& desktop, const std::string& path);
void OpenPage(Session& session, const Desktop& desktop, const std::string& address);

// Opens the manual when there is a document reader; else offers the web page that says where to get one.
void GetManual(Session& session, const Desktop& desktop, const std::string& path);

} // namespace kestrane
