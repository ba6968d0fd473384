// The settings store of the programs: an INI file, through QSettings. Each write is on disk before it returns, and
// replaces the file as a whole.
#pragma once

#include "platform/Settings.h"

#include <functional>
#include <memory>
#include <string>

class QSettings;

namespace kestrane {

class IniSettings : public SettingsStore {
public:
    // "NAME.ini" in the user's configuration folder, created with the first write. When the file cannot be read whole,
    // the values that could be read are used.
    static IniSettings ofApplication(const std::string& applicationName);

    // The same for what the program remembers by itself: "kestrane/NAME.ini" in the user's state folder.
    static IniSettings stateOfApplication(const std::string& applicationName);

    // A file that the caller names, created when it is missing. Raises an error when it cannot be read or created.
    static IniSettings ofFile(const std::string& path);

    IniSettings(IniSettings&&) noexcept;
    ~IniSettings() override;

    std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const override;

    // From now on, a file that cannot be written raises no error. What is written is remembered as long as the store
    // lives, and tell is called the first time with the name of the file.
    void TellOnce(std::function<void(const std::string& path)> tell) { tell_ = std::move(tell); }

    // Raises an error when the file cannot be written. Does nothing when the text is there already.
    void write(std::string_view section, std::string_view key, std::string_view text) override;

    void remove(std::string_view section, std::string_view key) override;

    std::string Unreadable() const override { return unreadable_; }

private:
    explicit IniSettings(const std::string& path);

    static IniSettings ofUser(const std::string& path);

    void sync();

    std::unique_ptr<QSettings> settings_;
    std::string unreadable_;
    MemorySettings written_; // in place of a file that cannot be read or written
    std::function<void(const std::string& path)> tell_;
};

} // namespace kestrane
