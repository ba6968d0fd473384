#include "platform/Locale.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace kestrane {
namespace {

TEST(SystemLocale, TakesTheSeparatorsOfTheEnvironment) {
    struct Case {
        const char* name;
        const char* decimal;
        const char* date;
    };

    TemporaryFolder folder;
    setenv("LOCPATH", folder.path().c_str(), 1);
    for (const Case& c : {Case{"de_DE", ",", "."}, Case{"ps_AF", "\u066B", "/"}}) { // the latter separates by blanks
        const std::string command =
            std::string("localedef -i ") + c.name + " -f UTF-8 " + folder.file(c.name) + ".UTF-8 >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) GTEST_SKIP() << "no sources of locales here";
        setenv("LC_ALL", (std::string(c.name) + ".UTF-8").c_str(), 1);
        const Locale locale = systemLocale();
        EXPECT_EQ(locale.DecimalSeparator, c.decimal) << c.name;
        EXPECT_EQ(locale.DateSeparator, c.date) << c.name;
    }
    unsetenv("LOCPATH");
    for (const char* name : {"C", "no_SUCH.locale"}) {
        setenv("LC_ALL", name, 1);
        EXPECT_EQ(systemLocale().DecimalSeparator, ".");
        EXPECT_EQ(systemLocale().DateSeparator, "/");
    }
    unsetenv("LC_ALL");
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "C") << "the process's own locale must stay";
}

} // namespace
} // namespace kestrane
