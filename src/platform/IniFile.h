// A settings store in an INI file, without a toolkit. The file is in the form that the toolkit's store (platform/qt)
// writes, and each reads what the other has written. Each write is on disk before it returns, and replaces the file as
// a whole.
#pragma once

#include "platform/Settings.h"

#include <memory>
#include <string>

namespace kestrane {

class IniFile : public SettingsStore {
public:
    // A file of the user, created with the first write. When it cannot be read whole, the values that could be read are
    // used, Unreadable() names it, and what is written is remembered as long as the store lives.
    static std::unique_ptr<IniFile> ofUser(const std::string& path);

    // A file that the caller names, created when it is missing. Raises an error when it cannot be read or created.
    static std::unique_ptr<IniFile> ofCaller(const std::string& path);

    std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const override;

    // Raise an error when the file cannot be written. Do nothing when it would stay as it is.
    void write(std::string_view section, std::string_view key, std::string_view text) override;
    void remove(std::string_view section, std::string_view key) override;

    std::string Unreadable() const override { return isWhole_ ? std::string() : path_; }

private:
    explicit IniFile(std::string path) : path_(std::move(path)) {}

    void load();
    void save() const;

    std::string path_;
    MemorySettings settings_;
    bool isWhole_ = true; // the file was read whole
};

} // namespace kestrane
