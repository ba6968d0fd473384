#include "platform/UserFolders.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace kestrane {
namespace {

// Sets a variable, or takes it away, as long as it lives.
class Variable {
public:
    Variable(const char* name, const char* value) : name_(name) {
        if (const char* const old = std::getenv(name)) before_ = old;
        set(value);
    }

    ~Variable() { set(before_.empty() ? nullptr : before_.c_str()); }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    void set(const char* value) const {
        if (value == nullptr) {
            unsetenv(name_);
        } else {
            setenv(name_, value, 1);
        }
    }

    const char* name_;
    std::string before_;
};

TEST(UserFolders, ComeFromTheirVariableUnlessItIsRelativeElseFromHome) {
    const std::map<const char*, std::pair<std::string (*)(), const char*>> folders = {
        {"XDG_CONFIG_HOME", {configFolder, "/home/a/.config/"}},
        {"XDG_DATA_HOME", {userDataFolder, "/home/a/.local/share/"}},
        {"XDG_STATE_HOME", {stateFolder, "/home/a/.local/state/"}}};
    const Variable home("HOME", "/home/a");
    for (const auto& [name, folder] : folders) {
        for (const char* value : {"", "here", "./here", "~/here"}) {
            const Variable set(name, value);
            EXPECT_EQ(folder.first(), folder.second) << name << '=' << value;
        }
        const Variable unset(name, nullptr);
        EXPECT_EQ(folder.first(), folder.second) << name;
        for (const char* value : {"/elsewhere", "/elsewhere/"}) {
            const Variable set(name, value);
            EXPECT_EQ(folder.first(), "/elsewhere/") << name << '=' << value;
        }
    }
    const Variable relative("HOME", "a");
    const Variable unset("XDG_DATA_HOME", nullptr);
    EXPECT_EQ(userDataFolder().front(), '/');
}

} // namespace
} // namespace kestrane
