#include "platform/qt/IniSettings.h"

#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <QByteArray>

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/mount.h>

namespace kestrane {
namespace {

TEST(IniSettings, ReadsBackWhatWasWritten) {
    const TemporaryFolder folder;
    const std::string texts[] = {"",
                                 "plain",
                                 "a, b,\"c\"",
                                 " leading and trailing ",
                                 "\"quoted\"",
                                 "C:\\new\\",
                                 "Grüße \u2713",
                                 "two\r\nlines\n",
                                 "@Invalid()",
                                 "; # [x] = %41",
                                 "\"",
                                 "\\",
                                 std::string("nul\0l", 5)};
    const std::string path = folder.file("settings.ini");
    {
        IniSettings settings = IniSettings::ofFile(path);
        EXPECT_TRUE(std::filesystem::exists(path));
        int i = 0;
        for (const std::string& text : texts) {
            settings.write("Preferences", "Key" + std::to_string(++i), text);
            EXPECT_EQ(settings.read("Preferences", "Key" + std::to_string(i), "x"), text);
        }
        settings.write("Settings", "Key1", "another");
    }
    const IniSettings settings = IniSettings::ofFile(path);
    int i = 0;
    for (const std::string& text : texts)
        EXPECT_EQ(settings.read("Preferences", "Key" + std::to_string(++i), "x"), text);
    EXPECT_EQ(settings.read("Settings", "Key1", ""), "another");
    EXPECT_EQ(settings.read("Settings", "Key2", "default"), "default");
}

TEST(IniSettings, ReadsFilesWrittenByHand) {
    const TemporaryFolder folder;
    writeText(folder.file("a.ini"),
              "; a comment = x\r\n[Preferences]\r\n Company = Smith, Jones & Co \r\nDataPath=C:\\new\\\r\n"
              "broken line\r\n[broken\r\nLast=\"1\"");
    const IniSettings settings = IniSettings::ofFile(folder.file("a.ini"));
    EXPECT_EQ(settings.read("Preferences", "Company", ""), "Smith, Jones & Co");
    EXPECT_EQ(settings.read("Preferences", "DataPath", ""), "C:\\new\\");
    EXPECT_EQ(settings.read("Preferences", "Last", ""), "1");
}

TEST(IniSettings, KeepsWhatAnotherProgramWrote) {
    const TemporaryFolder folder;
    IniSettings one = IniSettings::ofFile(folder.file("a.ini"));
    IniSettings two = IniSettings::ofFile(folder.file("a.ini"));
    one.write("S", "One", "1");
    two.write("S", "Two", "2");
    EXPECT_EQ(two.read("S", "One", ""), "1");
    EXPECT_EQ(IniSettings::ofFile(folder.file("a.ini")).read("S", "One", ""), "1");
}

TEST(IniSettings, LiesInTheUsersConfigurationFolder) {
    const TemporaryFolder folder;
    const QByteArray old = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", folder.file("config").c_str());
    IniSettings settings = IniSettings::ofApplication("Some Name");
    EXPECT_FALSE(std::filesystem::exists(folder.file("config")));
    settings.write("S", "K", "V");
    EXPECT_EQ(readText(folder.file("config/Some Name.ini")), "[S]\nK=\"V\"\n");
    EXPECT_EQ(IniSettings::ofApplication("Some Name").read("S", "K", ""), "V");
    if (old.isNull()) {
        qunsetenv("XDG_CONFIG_HOME");
    } else {
        qputenv("XDG_CONFIG_HOME", old);
    }
}

TEST(IniSettings, FailuresRaiseAndKeepTheOldFile) {
    const TemporaryFolder folder;
    EXPECT_THROW(IniSettings::ofFile("/dev/null/a.ini"), RuntimeError);
    if (mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "mounting is not permitted";
    {
        IniSettings settings = IniSettings::ofFile(folder.file("a.ini"));
        settings.write("S", "K", std::string(5000, 'x'));
        writeText(folder.file("fill"), std::string(48 * 1024, 'x'));
        EXPECT_THROW(settings.write("S", "L", std::string(5000, 'y')), RuntimeError);
    }
    EXPECT_EQ(IniSettings::ofFile(folder.file("a.ini")).read("S", "K", ""), std::string(5000, 'x'));
    EXPECT_EQ(umount(folder.path().c_str()), 0);
}

} // namespace
} // namespace kestrane
