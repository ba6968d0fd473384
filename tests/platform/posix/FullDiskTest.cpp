#include "platform/IniFile.h"

#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

#include <sys/resource.h>

namespace kestrane {
namespace {

// While this object lives, no file can have more than a few bytes.
struct NoRoom {
    rlimit Before{};

    NoRoom() {
        getrlimit(RLIMIT_FSIZE, &Before);
        const rlimit small{200, Before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
    }

    ~NoRoom() {
        setrlimit(RLIMIT_FSIZE, &Before);
        std::signal(SIGXFSZ, SIG_DFL);
    }
};

TEST(FullDisk, OldSettingsStayAndNewOnesAreWrittenLater) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.ini");
    const auto settings = IniFile::ofUser(path);
    settings->write("Preferences", "K", std::string(3000, 'x'));
    settings->write("Preferences", "Gone", "1");
    const std::string before = readText(path);
    std::vector<std::string> told;
    {
        const NoRoom noRoom;
        EXPECT_THROW(settings->write("Preferences", "L", "Y"), RuntimeError);
        settings->TellOnce([&told](const std::string& name) { told.push_back(name); });
        settings->remove("Preferences", "Gone");
        settings->write("Preferences", "L", "Z");
    }
    EXPECT_EQ(told, std::vector<std::string>{path});
    EXPECT_EQ(readText(path), before);
    EXPECT_EQ(settings->read("Preferences", "L", ""), "Z");

    IniFile::ofUser(path)->write("Other", "O", "1"); // by another program
    settings->write("Preferences", "M", "W");
    const auto again = IniFile::ofUser(path);
    EXPECT_EQ(again->read("Preferences", "L", "") + again->read("Preferences", "M", ""), "ZW");
    EXPECT_EQ(again->read("Preferences", "Gone", "none"), "none");
    EXPECT_EQ(again->read("Other", "O", ""), "1");
}

} // namespace
} // namespace kestrane
