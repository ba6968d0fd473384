// The per-user settings store: texts under a section and a key. The programs use an INI file (platform/qt), tests the
// store in memory. It knows no types: whoever reads a number converts it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace kestrane {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const = 0;
    virtual void write(std::string_view section, std::string_view key, std::string_view text) = 0;
    virtual void remove(std::string_view section, std::string_view key) = 0; // what is not there, too

    // The name of the store's file when it could not be read whole; empty when all is well. Such a file is not changed,
    // and what is written is remembered only as long as the store object lives.
    virtual std::string Unreadable() const { return {}; }
};

class MemorySettings : public SettingsStore {
public:
    std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const override;
    void write(std::string_view section, std::string_view key, std::string_view text) override;
    void remove(std::string_view section, std::string_view key) override;

    std::map<std::pair<std::string, std::string>, std::string> Values;
};

// Moves a text to another store, which keeps its own where it has one.
void moveSetting(SettingsStore& from, SettingsStore& to, std::string_view section, std::string_view key);

} // namespace kestrane
