#include "platform/CrashReport.h"

#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrane {
namespace {

// Does something in a program of its own, which is to fail. Returns the signal that ended it, or 0.
int signalOf(const std::function<void()>& fail) {
    const pid_t child = fork();
    if (child == 0) {
        const rlimit none{0, 0};
        setrlimit(RLIMIT_CORE, &none);
        fail();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

TEST(CrashReport, AFaultSaysWhatWasOpenAndWhatWasDone) {
    const TemporaryFolder folder;
    const std::string place = folder.file("state/");
    EXPECT_EQ(takeCrashReport(place), "");
    EXPECT_EQ(signalOf([&] {
                  installCrashReport(place, "1.2.3");
                  noteOpenFiles("/data/a.xml\n");
                  for (int i = 1; i <= 25; ++i)
                      noteCommand("command " + std::to_string(i));
                  std::raise(SIGSEGV);
              }),
              SIGSEGV);
    const std::string path = takeCrashReport(place);
    ASSERT_NE(path, "");
    const std::string report = readText(path);
    for (const char* words : {"kestrane 1.2.3", "signal 11", "/data/a.xml", "command 6\n", "command 25\n", "stack:"})
        EXPECT_NE(report.find(words), std::string::npos) << words;
    EXPECT_EQ(report.find("command 5\n"), std::string::npos) << "of 25, the last 20";
    EXPECT_EQ(takeCrashReport(place), "") << "it is told once";
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(CrashReport, AnExceptionThatNobodyCatchesIsReportedAndWhatCanBeSavedIsSaved) {
    const TemporaryFolder folder;
    const std::string place = folder.file("state/");
    EXPECT_EQ(signalOf([&]() noexcept {
                  installCrashReport(place, "1.2.3");
                  setLastWords([&] { writeText(folder.file("saved"), "yes"); });
                  raiseOverflow();
              }),
              SIGABRT);
    EXPECT_NE(readText(takeCrashReport(place)).find("exception: Overflow"), std::string::npos);
    EXPECT_EQ(readText(folder.file("saved")), "yes");
}

TEST(CrashReport, FiveReportsStay) {
    const TemporaryFolder folder;
    const std::string place = folder.file("state/");
    std::filesystem::create_directories(place);
    for (int i = 0; i < 7; ++i) {
        writeText(place + "crash-" + std::to_string(i) + ".txt", "x");
        EXPECT_NE(takeCrashReport(place), "");
    }
    const auto files = std::filesystem::directory_iterator(place + "crashes");
    EXPECT_EQ(std::distance(begin(files), end(files)), 5);
}

} // namespace
} // namespace kestrane
