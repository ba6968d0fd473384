#include "platform/FileLock.h"

#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kestrane {
namespace {

TEST(FileLock, IsHeldOnceAndLeavesNoFile) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.lock");
    std::shared_ptr<FileLock> lock = FileLock::take(path);
    EXPECT_NE(lock, nullptr);
    EXPECT_EQ(FileLock::take(path), nullptr);
    lock.reset();
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_NE(FileLock::take(path), nullptr);
    EXPECT_THROW(FileLock::take(folder.file("none/a.lock")), RuntimeError);
}

// Whoever gives the lock up removes the file, just as others may be opening it.
TEST(FileLock, NeverHasTwoHolders) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.lock");
    std::atomic<int> holders = 0, most = 0, taken = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round) {
                const std::shared_ptr<FileLock> lock = FileLock::take(path);
                if (lock == nullptr) continue;
                ++taken;
                const int now = ++holders;
                if (now > most) most = now;
                --holders;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(most, 1);
    EXPECT_GT(taken, 0);
}

} // namespace
} // namespace kestrane
