// The settings store of the programs: an INI file. Each write is on disk before it returns, and replaces the file as a
// whole. The toolkit has such a store, too, but it does not notice when it cannot write the end of a file, so that a
// full disk leaves an empty one. Files that it has written are read.
#pragma once

#include "platform/Settings.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrane {

class IniFile : public SettingsStore {
public:
    // A file of the user, created with the first write. When it cannot be read whole, the values that could be read are
    // used, Unreadable() names it, and what is written is remembered as long as the store lives.
    static std::unique_ptr<IniFile> ofUser(const std::string& path);

    // A file that the caller names, created when it is missing. Raises an error when it cannot be read or created.
    static std::unique_ptr<IniFile> ofCaller(const std::string& path);

    std::string read(std::string_view section, std::string_view key, std::string_view defaultText) const override;

    // From now on, a file that cannot be written raises no error, but tell is called the first time with its name.
    void TellOnce(std::function<void(const std::string& path)> tell) { tell_ = std::move(tell); }

    // Raise an error when the file cannot be written, or has got lines meanwhile that are no settings and would be
    // lost. Do nothing when it would stay as it is. What could not be written is remembered, and written with the next
    // change.
    void write(std::string_view section, std::string_view key, std::string_view text) override;
    void remove(std::string_view section, std::string_view key) override;

    std::string Unreadable() const override { return isWhole_ ? std::string() : path_; }

private:
    explicit IniFile(std::string path) : path_(std::move(path)) {}

    struct Change {
        std::string section, key;
        std::optional<std::string> text; // nothing for one that is removed
    };

    void change(Change change);
    void apply();
    void load();
    void save() const;

    std::string path_;
    MemorySettings settings_;     // of the file, with all changes
    std::vector<Change> unsaved_; // those that are not in the file yet, in order
    std::function<void(const std::string& path)> tell_;
    bool isWhole_ = true; // the file was read whole when it was opened, or last written
};

} // namespace kestrane
