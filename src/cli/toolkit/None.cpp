#include "cli/Toolkit.h"
#include "platform/IniFile.h"
#include "platform/UserFolders.h"

namespace kestrane {

std::unique_ptr<SettingsStore> settingsOfApplication(const std::string& name) {
    return IniFile::ofUser(configFolder() + name + ".ini");
}

std::unique_ptr<SettingsStore> settingsOfFile(const std::string& path) {
    return IniFile::ofCaller(path);
}

int withLoop(const std::function<int(EventPump& pump)>& work) {
    HeadlessEventPump pump;
    return work(pump);
}

} // namespace kestrane
