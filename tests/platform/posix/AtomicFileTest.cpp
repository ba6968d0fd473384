#include "platform/AtomicFile.h"

#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestrane {
namespace {

const std::string kOld = "old content";

std::string newContent(std::size_t size = 700'001) {
    std::string text(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        text[i] = static_cast<char>('a' + i * i % 23);
    return text;
}

// What writing raised, 0 for nothing.
std::int64_t write(const std::string& path, const std::string& text, const FileSystemCalls& calls = systemCalls()) {
    try {
        writeFileAtomically(
            path,
            [&](const FileSink& sink) {
                sink(std::string_view(text).substr(0, 10));
                sink("");
                for (std::size_t at = 10; at < text.size(); at += 100'000)
                    sink(std::string_view(text).substr(at, 100'000));
            },
            calls);
        return 0;
    } catch (const RuntimeError& error) {
        EXPECT_STREQ(error.what(), std::strerror(static_cast<int>(error.Number)));
        return error.Number;
    }
}

// The system calls with a fault at one of them, counted from 1. When all fail from then on, the disk is left as by a
// program that is killed there.
enum class Fault { None, FailOnce, FailFromThenOn };

struct {
    Fault fault = Fault::None;
    int at = 0;
    int count = 0;
    std::string calls{}; // their names, each with a blank behind it
} plan;

template <class Call>
auto faulty(const char* name, Call call, bool isClose = false) -> decltype(call()) {
    ++plan.count;
    plan.calls += std::string(name) + ' ';
    const bool isNow = plan.count == plan.at;
    const bool fails =
        (isNow && plan.fault == Fault::FailOnce) || (plan.count >= plan.at && plan.fault == Fault::FailFromThenOn);
    auto result = fails && !isClose ? -1 : call(); // the system closes even when it reports an error
    if (fails) {
        errno = EIO;
        result = -1;
    }
    return result;
}

const FileSystemCalls kFaulty = {
    [](const char* path, int flags, unsigned mode) {
        return faulty("open", [=] { return systemCalls().open(path, flags, mode); });
    },
    [](int file, const void* data, unsigned long size) {
        return faulty("write", [=] { return systemCalls().write(file, data, size); });
    },
    [](int file, unsigned mode) { return faulty("fchmod", [=] { return systemCalls().fchmod(file, mode); }); },
    [](int file) { return faulty("fdatasync", [=] { return systemCalls().fdatasync(file); }); },
    [](int file) {
        return faulty(
            "close", [=] { return systemCalls().close(file); }, true);
    },
    [](const char* from, const char* to) { return faulty("rename", [=] { return systemCalls().rename(from, to); }); },
    [](int file) { return faulty("fsync", [=] { return systemCalls().fsync(file); }); },
    [](const char* path) { return faulty("unlink", [=] { return systemCalls().unlink(path); }); },
};

class AtomicFile : public testing::Test {
protected:
    std::size_t fileCount() const {
        const std::filesystem::directory_iterator files(folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    // With an old file or without one.
    void reset(bool hasOld) const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
            std::filesystem::remove(entry);
        if (hasOld) writeText(path, kOld);
    }

    bool isOld(bool hasOld) const { return hasOld ? readText(path) == kOld : !std::filesystem::exists(path); }

    // Runs in a process of its own, without a superuser's rights; returns its exit status, -1 when it was killed.
    static int inProcess(const std::function<int()>& run, bool asNobody = false) {
        const pid_t child = fork();
        if (child == 0) {
            constexpr unsigned kNobody = 65534;
            if (asNobody && geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(99);
            _exit(run());
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    TemporaryFolder folder;
    std::string path = folder.file("data.xml");
};

TEST_F(AtomicFile, FailingCallsLeaveTheOldFileOrTheNew) {
    const std::string text = newContent();
    for (const Fault fault : {Fault::FailOnce, Fault::FailFromThenOn}) {
        for (const bool hasOld : {true, false}) {
            bool isDone = false;
            int silent = 0;
            for (int at = 1; !isDone; ++at) {
                SCOPED_TRACE(std::to_string(at) + (hasOld ? " old" : " new"));
                reset(hasOld);
                plan = {fault, at};
                const std::int64_t raised = write(path, text, kFaulty);
                isDone = plan.count < at;
                const bool isNew = readText(path) == text;
                EXPECT_TRUE(isNew || isOld(hasOld));
                EXPECT_EQ(raised, raised == 0 ? 0 : EIO);
                EXPECT_TRUE(isNew || raised != 0);
                EXPECT_TRUE(!isDone || raised == 0);
                silent += !isDone && raised == 0 ? 1 : 0;
                if (fault == Fault::FailOnce) {
                    EXPECT_EQ(fileCount(), isNew || hasOld ? 1U : 0U);
                }
                ASSERT_LT(at, 100);
            }
            EXPECT_EQ(silent, 1) << "all but the closing of the folder, when all is done, must be told";
        }
    }
}

// A power cut at any moment leaves the old file or the new one: the bytes are on the disk before they get the name, and
// the folder is when the save says that it is done.
TEST_F(AtomicFile, BytesReachTheDiskBeforeTheNameAndTheFolderLast) {
    reset(true);
    plan = {};
    EXPECT_EQ(write(path, "new", kFaulty), 0);
    EXPECT_EQ(plan.calls, "open open write fchmod fdatasync close rename fsync close ");
}

TEST_F(AtomicFile, ASaveRemovesWhatAKilledOneLeft) {
    reset(true);
    EXPECT_EQ(inProcess([&] {
                  writeFileAtomically(path, [](const FileSink&) { raise(SIGKILL); });
                  return 0;
              }),
              -1);
    EXPECT_TRUE(isOld(true));
    EXPECT_EQ(fileCount(), 2U);
    EXPECT_EQ(write(path, "new"), 0);
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AtomicFile, ASaveLeavesThoseAloneThatGoOnBesideIt) {
    writeFileAtomically(path, [&](const FileSink& sink) {
        sink(newContent());
        EXPECT_EQ(write(folder.file("other"), "small"), 0);
        EXPECT_EQ(fileCount(), 2U);
    });
    EXPECT_EQ(readText(path), newContent());
}

TEST_F(AtomicFile, GathersPiecesAndGoesOnBehindShortAndInterruptedWrites) {
    static int calls = 0;
    FileSystemCalls table = systemCalls();
    table.write = [](int file, const void* data, unsigned long size) -> long {
        if (++calls % 2 != 0) {
            errno = EINTR;
            return -1;
        }
        return systemCalls().write(file, data, std::min(size, 30'000UL));
    };
    const std::string text = newContent();
    EXPECT_EQ(write(path, text, table), 0);
    EXPECT_EQ(readText(path), text);

    table.write = [](int file, const void* data, unsigned long size) -> long {
        ++calls;
        return systemCalls().write(file, data, size);
    };
    calls = 0;
    writeFileAtomically(
        path,
        [&](const FileSink& sink) {
            for (const char c : text)
                sink({&c, 1});
        },
        table);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(readText(path), text);

    table.write = [](int, const void*, unsigned long) -> long { return 0; };
    EXPECT_EQ(write(path, "x", table), EIO);
    EXPECT_EQ(readText(path), text);
    EXPECT_EQ(write(path, ""), 0);
    EXPECT_EQ(readText(path), "");
}

TEST_F(AtomicFile, WhatContentRaisesPassesThrough) {
    reset(true);
    EXPECT_THROW(writeFileAtomically(path,
                                     [](const FileSink& sink) {
                                         sink("half");
                                         raiseOverflow();
                                     }),
                 RuntimeError);
    EXPECT_TRUE(isOld(true));
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(AtomicFile, KeepsPermissionsAndOwner) {
    const auto about = [](const std::string& file) {
        struct stat result {};
        EXPECT_EQ(stat(file.c_str(), &result), 0);
        return result;
    };
    reset(true);
    chmod(path.c_str(), 0604);
    if (geteuid() == 0) {
        EXPECT_EQ(chown(path.c_str(), 1234, 1235), 0);
    }
    const uid_t owner = about(path).st_uid;
    EXPECT_EQ(write(path, "new"), 0);
    EXPECT_EQ(about(path).st_mode & 07777U, 0604U);
    EXPECT_EQ(about(path).st_uid, owner);

    const mode_t old = umask(027);
    EXPECT_EQ(write(folder.file("fresh"), "new"), 0);
    umask(old);
    EXPECT_EQ(about(folder.file("fresh")).st_mode & 07777U, 0640U);
}

TEST_F(AtomicFile, FollowsLinks) {
    std::filesystem::create_directory(folder.file("far"));
    const std::string real = folder.file("far/real");
    writeText(real, kOld);
    symlink("far/real", folder.file("link").c_str());
    symlink(folder.file("link").c_str(), folder.file("link2").c_str());
    EXPECT_EQ(write(folder.file("link2"), "through two"), 0);
    EXPECT_EQ(readText(real), "through two");

    std::filesystem::remove(real);
    EXPECT_EQ(write(folder.file("link"), "into nothing"), 0);
    EXPECT_EQ(readText(real), "into nothing");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link2")));

    symlink("round", folder.file("round").c_str());
    EXPECT_EQ(write(folder.file("round"), "x"), ELOOP);

    // A name without a folder is in the working folder.
    EXPECT_EQ(inProcess([&] {
                  return chdir(folder.path().c_str()) + static_cast<int>(write("plain", "here")) +
                         static_cast<int>(write("link", "from within"));
              }),
              0);
    EXPECT_EQ(readText(folder.file("plain")), "here");
    EXPECT_EQ(readText(real), "from within");
}

TEST_F(AtomicFile, RefusesWhatItMustNotReplace) {
    reset(true);
    EXPECT_EQ(write(folder.path(), "x"), EISDIR);
    EXPECT_EQ(write(folder.file("none/data.xml"), "x"), ENOENT);
    EXPECT_EQ(write(path + "/data.xml", "x"), ENOTDIR);
    EXPECT_EQ(write("", "x"), ENOENT);

    // A file that is read-only, and a folder that is.
    chmod(folder.path().c_str(), 0777);
    chmod(path.c_str(), 0444);
    EXPECT_EQ(inProcess([&] { return static_cast<int>(write(path, "x")); }, true), EACCES);
    chmod(path.c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    EXPECT_EQ(inProcess([&] { return static_cast<int>(write(path, "x")); }, true), EACCES);
    chmod(folder.path().c_str(), 0700);
    EXPECT_TRUE(isOld(true));
    EXPECT_EQ(fileCount(), 1U);
}

} // namespace
} // namespace kestrane
