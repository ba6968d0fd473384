#include "platform/UserFolders.h"

#include "platform/windows/Wide.h"

#include <knownfolders.h>
#include <shlobj.h>

namespace kestrane {

namespace {

std::string knownFolder(const KNOWNFOLDERID& folder) {
    PWSTR path = nullptr;
    const bool isKnown = SHGetKnownFolderPath(folder, KF_FLAG_DONT_VERIFY, nullptr, &path) == S_OK;
    std::string name = isKnown ? portablePath(path) : std::string(".");
    CoTaskMemFree(path);
    return name + "/";
}

} // namespace

// Settings follow the user to another computer; what is large or belongs to this computer does not.
std::string configFolder() {
    return knownFolder(FOLDERID_RoamingAppData);
}

std::string userDataFolder() {
    return knownFolder(FOLDERID_LocalAppData);
}

std::string stateFolder() {
    return knownFolder(FOLDERID_LocalAppData);
}

} // namespace kestrane
