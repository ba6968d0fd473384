#include "cli/Toolkit.h"
#include "platform/qt/IniSettings.h"
#include "platform/qt/QtEventPump.h"

#include <QCoreApplication>

namespace kestrane {

std::unique_ptr<SettingsStore> settingsOfApplication(const std::string& name) {
    return std::make_unique<IniSettings>(IniSettings::ofApplication(name));
}

std::unique_ptr<SettingsStore> settingsOfFile(const std::string& path) {
    return std::make_unique<IniSettings>(IniSettings::ofFile(path));
}

int withLoop(const std::function<int(EventPump& pump)>& work) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    QtEventPump pump;
    return work(pump);
}

} // namespace kestrane
