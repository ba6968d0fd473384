#include "platform/IniFile.h"

#include "ErrorOf.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kestrane {
namespace {

TEST(IniFile, ReadsWhatTheToolkitWrites) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.ini");
    writeText(
        path,
        "[%General]\nK=g\n\n[Preferences]\nComma=\"a, b,\\\"c\\\"\"\nAt=@@Invalid()\nNothing=@Invalid()\n"
        "Path=C:\\\\new\\\\\nLines=two\\r\\nlines\\n\nCode=\\x1\\x41\nNa%20me%U2713=Grüße\nList=Smith, Jones & Co \n"
        "Blanks=\" x \"\n; a comment = x\n");
    const auto settings = IniFile::ofCaller(path);
    const std::pair<const char*, const char*> expected[] = {
        {"Comma", "a, b,\"c\""}, {"At", "@Invalid()"},          {"Nothing", "none"},
        {"Path", "C:\\new\\"},   {"Lines", "two\r\nlines\n"},   {"Code", "\001A"},
        {"Na me✓", "Grüße"},     {"List", "Smith, Jones & Co"}, {"Blanks", " x "}};
    for (const auto& [key, text] : expected)
        EXPECT_EQ(settings->read("Preferences", key, "none"), text) << key;
    EXPECT_EQ(settings->read("General", "K", ""), "g");

    settings->write("Preferences", "New", "; = \001A \"q\"");
    for (const auto& [key, text] : expected)
        settings->write("Copies/all", key, text);
    const auto again = IniFile::ofCaller(path);
    EXPECT_EQ(again->read("Preferences", "New", ""), "; = \001A \"q\"");
    for (const auto& [key, text] : expected)
        EXPECT_EQ(again->read("Preferences", key, "none") + again->read("Copies/all", key, ""),
                  text + std::string(text))
            << key;
}

TEST(IniFile, NeverWritesOverWhatItCannotRead) {
    const TemporaryFolder folder;
    const std::string damaged = "[Preferences]\nK=V\nCompany no value\n";
    writeText(folder.file("damaged.ini"), damaged);
    std::filesystem::create_directory(folder.file("folder.ini"));
    for (const char* name : {"damaged.ini", "folder.ini"}) {
        const auto settings = IniFile::ofUser(folder.file(name));
        EXPECT_EQ(settings->Unreadable(), folder.file(name));
        settings->write("Preferences", "Company", "A");
        EXPECT_EQ(settings->read("Preferences", "Company", ""), "A");
        EXPECT_NE(errorOf([&] { IniFile::ofCaller(folder.file(name)); }), 0);
    }
    EXPECT_EQ(readText(folder.file("damaged.ini")), damaged);

    writeText(folder.file("later.ini"), "[Preferences]\nK=V\n");
    const auto later = IniFile::ofUser(folder.file("later.ini"));
    writeText(folder.file("later.ini"), damaged); // by another program
    int told = 0;
    later->TellOnce([&told](const std::string&) { ++told; });
    later->write("Preferences", "Company", "A");
    later->write("Preferences", "L", "W");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(readText(folder.file("later.ini")), damaged);
    writeText(folder.file("later.ini"), "[Preferences]\nK=new\n"); // mended
    later->remove("Preferences", "L");
    EXPECT_EQ(readText(folder.file("later.ini")), "[Preferences]\nCompany=A\nK=new\n");

    const auto fresh = IniFile::ofUser(folder.file("config/fresh.ini"));
    EXPECT_EQ(fresh->Unreadable(), "");
    EXPECT_FALSE(std::filesystem::exists(folder.file("config")));
    fresh->write("Preferences", "K", "V");
    fresh->write("Preferences", "L", "W");
    fresh->remove("Preferences", "L");
    EXPECT_EQ(readText(folder.file("config/fresh.ini")), "[Preferences]\nK=V\n");
}

} // namespace
} // namespace kestrane
