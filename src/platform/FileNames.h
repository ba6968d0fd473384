// Gives names to files and folders: another one, a second one, and one that nobody else uses.
#pragma once

#include <string>

namespace kestrane {

// Gives a file or folder another name, in the same folder or in another one of the same disk. A file that has the new
// name is replaced. Returns 0, or errno when everything is as it was.
[[nodiscard]] int renameFile(const std::string& from, const std::string& to);

// Gives a file a second name, which costs no room and is there at once or not at all. Returns false when the name is
// taken, when there is no such file, and on a file system that cannot do it.
bool giveSecondName(const std::string& path, const std::string& name);

// Create an empty file, or a folder, that only the user may open, under a name that begins with begin and that nobody
// uses. Return the name; raise the system's error.
std::string makeUniqueFile(const std::string& begin);
std::string makeUniqueFolder(const std::string& begin);

} // namespace kestrane
