#include "platform/UserFolders.h"

#include <cstdlib>
#include <filesystem>

namespace kestrane {

namespace {

namespace fs = std::filesystem;

// The value of a variable that names a folder. A relative one would name another folder from each place that the
// program is started in, so it counts as not set.
fs::path folderOf(const char* variable) {
    const char* const value = std::getenv(variable);
    return value != nullptr && fs::path(value).is_absolute() ? fs::path(value) : fs::path();
}

// The folder that the variable names, else the folder below the user's home.
std::string userFolder(const char* variable, const char* folder) {
    fs::path path = folderOf(variable);
    if (path.empty()) {
        const fs::path home = folderOf("HOME");
        path = (home.empty() ? fs::temp_directory_path() : home) / folder;
    }
    return (path / "").string();
}

} // namespace

std::string configFolder() {
    return userFolder("XDG_CONFIG_HOME", ".config");
}

std::string userDataFolder() {
    return userFolder("XDG_DATA_HOME", ".local/share");
}

std::string stateFolder() {
    return userFolder("XDG_STATE_HOME", ".local/state");
}

} // namespace kestrane
