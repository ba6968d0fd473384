#include "platform/qt/IniSettings.h"

#include "platform/IniFile.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <QByteArray>

#include <gtest/gtest.h>

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
                                 "True",
                                 "-1"};
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
    for (const std::string& text : texts) {
        EXPECT_EQ(settings.read("Preferences", "Key" + std::to_string(++i), "x"), text);
    }
    EXPECT_EQ(settings.read("Settings", "Key1", ""), "another");
    EXPECT_EQ(settings.read("Settings", "Key2", "default"), "default");

    // The store without the toolkit reads and writes the same file.
    const auto plain = IniFile::ofCaller(path);
    i = 0;
    for (const std::string& text : texts) {
        EXPECT_EQ(plain->read("Preferences", "Key" + std::to_string(++i), "x"), text);
        plain->write("By itself", "A key " + std::to_string(i), text);
    }
    const IniSettings both = IniSettings::ofFile(path);
    i = 0;
    for (const std::string& text : texts) {
        EXPECT_EQ(both.read("Preferences", "Key" + std::to_string(++i), "x"), text);
        EXPECT_EQ(both.read("By itself", "A key " + std::to_string(i), "x"), text);
    }
}

TEST(IniSettings, ReadsFilesWrittenByHandAndRefusesWhatItCannotUse) {
    const TemporaryFolder folder;
    writeText(folder.file("a.ini"),
              "; a comment = x\r\n[Preferences]\r\nCompany = Smith, Jones & Co \r\nblnPrintIntervals=False\r\n");
    const IniSettings settings = IniSettings::ofFile(folder.file("a.ini"));
    EXPECT_EQ(settings.read("Preferences", "Company", ""), "Smith, Jones & Co");
    EXPECT_EQ(settings.read("Preferences", "blnPrintIntervals", ""), "False");
    EXPECT_THROW(IniSettings::ofFile(folder.file("missing/folder/a.ini")), RuntimeError);
}

TEST(IniSettings, LiesInTheUsersConfigurationFolder) {
    const TemporaryFolder folder;
    const QByteArray old = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", folder.file("config").c_str());
    IniSettings own = IniSettings::ofApplication("Some Name");
    own.write("Preferences", "K", "V");
    own.write("Preferences", "L", "W");
    own.remove("Preferences", "L");
    own.remove("Preferences", "M");
    EXPECT_EQ(readText(folder.file("config/Some Name.ini")), "[Preferences]\nK=V\n");
    const std::string damaged = "[Preferences]\nK=V\nCompany\xFF no value\n";
    writeText(folder.file("config/Damaged.ini"), damaged);
    std::filesystem::create_directory(folder.file("config/Folder.ini"));
    for (const char* name : {"Damaged", "Folder"}) {
        IniSettings settings = IniSettings::ofApplication(name);
        EXPECT_EQ(settings.Unreadable(), folder.file("config/") + name + ".ini");
        settings.write("Preferences", "Company", "A");
        EXPECT_EQ(settings.read("Preferences", "Company", ""), "A");
    }
    EXPECT_EQ(readText(folder.file("config/Damaged.ini")), damaged);
    EXPECT_EQ(IniSettings::ofApplication("Some Name").Unreadable(), "");
    EXPECT_EQ(IniSettings::ofApplication("None Yet").Unreadable(), "");
    qputenv("XDG_CONFIG_HOME", old);
}

TEST(IniSettings, AFileThatCannotBeWrittenIsToldOnceAndKept) {
    const TemporaryFolder folder;
    const std::string path = folder.file("settings.ini");
    IniSettings settings = IniSettings::ofFile(path);
    settings.write("Preferences", "K", "V");
    std::filesystem::remove(path);
    std::filesystem::create_directories(folder.file("settings.ini/in the way"));
    EXPECT_NO_THROW(settings.write("Preferences", "K", "V")) << "it is there already";
    EXPECT_THROW(settings.write("Preferences", "K", "W"), RuntimeError);
    std::vector<std::string> told;
    settings.TellOnce([&told](const std::string& name) { told.push_back(name); });
    settings.write("Preferences", "K", "X");
    settings.write("Preferences", "L", "Y");
    EXPECT_EQ(told, std::vector<std::string>{path});
    EXPECT_EQ(settings.read("Preferences", "K", ""), "X");
    EXPECT_EQ(settings.read("Preferences", "L", ""), "Y");
}

} // namespace
} // namespace kestrane
