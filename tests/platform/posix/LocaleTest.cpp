#include "platform/Locale.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

namespace kestrane {
namespace {

// The separators under a locale, looked up in a process of its own with that environment.
std::string separatorsOf(const std::string& localeFolder, const std::string& name) {
    int ends[2];
    EXPECT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        setenv("LOCPATH", localeFolder.c_str(), 1);
        setenv("LC_ALL", name.c_str(), 1);
        const Locale locale = systemLocale();
        const bool isUntouched = std::string(std::setlocale(LC_ALL, nullptr)) == "C"; // the process's own locale
        const std::string text = locale.DecimalSeparator + ' ' + locale.DateSeparator;
        _exit(isUntouched && write(ends[1], text.data(), text.size()) > 0 ? 0 : 1);
    }
    close(ends[1]);
    char text[20];
    const ssize_t size = read(ends[0], text, sizeof text);
    close(ends[0]);
    int status = -1;
    waitpid(child, &status, 0);
    return status == 0 && size > 0 ? std::string(text, static_cast<std::size_t>(size)) : "failed";
}

TEST(SystemLocale, TakesTheSeparatorsOfTheEnvironment) {
    const TemporaryFolder folder;
    EXPECT_EQ(separatorsOf(folder.path(), "C"), ". /");
    EXPECT_EQ(separatorsOf(folder.path(), "no_SUCH.UTF-8"), ". /");

    const std::pair<const char*, const char*> cases[] = {{"de_DE", ", ."},
                                                         {"ps_AF", "\u066B /"}}; // the latter's is a blank
    for (const auto& [name, separators] : cases) {
        const std::string command =
            std::string("localedef -i ") + name + " -f UTF-8 " + folder.file(name) + ".UTF-8 >/dev/null 2>&1";
        if (std::system(command.c_str()) != 0) GTEST_SKIP() << "no sources of locales here";
        EXPECT_EQ(separatorsOf(folder.path(), std::string(name) + ".UTF-8"), separators) << name;
    }
}

TEST(SystemLanguage, IsTakenFromTheFirstVariableThatIsSet) {
    struct Case {
        const char *all, *messages, *lang, *language;
    };

    const Case cases[] = {{"", "", "", ""},
                          {"", "", "de_AT.UTF-8", "de"},
                          {"", "fr", "de_DE.UTF-8", "fr"},
                          {"C.UTF-8", "fr_FR.UTF-8", "de_DE.UTF-8", ""},
                          {"POSIX", "", "fr_FR", ""},
                          {"fr_CH@euro", "", "", "fr"}};
    for (const Case& c : cases) {
        setenv("LC_ALL", c.all, 1);
        setenv("LC_MESSAGES", c.messages, 1);
        setenv("LANG", c.lang, 1);
        EXPECT_EQ(systemLanguage(), c.language) << c.all << c.messages << c.lang;
    }
}

} // namespace
} // namespace kestrane
