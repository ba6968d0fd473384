// The settings store of the programs: an INI file. Each write is on disk, whole, before it returns; the toolkit's own
// INI writer cuts the file short on a full disk and reports success, so it is not used here. Another running program's
// changes to the file are kept, and seen at the next write. Comments in the file are not kept.
#pragma once

#include "platform/Settings.h"

#include <string>

namespace kestrane {

class IniSettings : public SettingsStore {
public:
    // "NAME.ini" in the user's configuration folder. It comes into being with the first write.
    static IniSettings ofApplication(const std::string& applicationName);

    // A file of the caller's choice, created when missing. Raises the system's error when it cannot be.
    static IniSettings ofFile(const std::string& path);

    std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const override;

    // Section and key are words without "=", "]" and line ends. Raises the system's error when the file cannot be
    // written; the old one is whole then.
    void write(std::string_view section, std::string_view key, std::string_view text) override;

private:
    explicit IniSettings(std::string path) : path_(std::move(path)) {}

    void load();
    void save() const;

    std::string path_;
    MemorySettings values_;
};

} // namespace kestrane
