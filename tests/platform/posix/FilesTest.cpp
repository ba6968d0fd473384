#include "platform/Files.h"

#include "platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace kestrane {
namespace {

TEST(ReadFile, APipeThatNobodyWritesToDoesNotHoldTheProgram) {
    const TemporaryFolder folder;
    mkfifo(folder.file("pipe").c_str(), 0600);
    EXPECT_EQ(readFile(folder.file("pipe"))->size(), 0U);
}

TEST(ReadFile, BearsAFileThatChangesItsSize) {
    constexpr std::size_t kMost = 3'000'000;
    const TemporaryFolder folder;
    const std::string path = folder.file("data");
    writeText(path, std::string(kMost, 'x'));
    std::atomic<bool> isOver = false;
    std::thread changer([&] {
        while (!isOver)
            for (const off_t size : {1'000'000, 100, static_cast<int>(kMost), 0})
                EXPECT_EQ(truncate(path.c_str(), size), 0);
    });
    for (int i = 0; i < 200; ++i)
        EXPECT_LE(readFile(path)->size(), kMost);
    isOver = true;
    changer.join();
}

TEST(FileBytes, ReleaseGivesBackWholePagesWithin) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t size = 10 * page + 7;
    FileBytes bytes(size);
    std::fill_n(bytes.data(), size, 'x');
    bytes.release(1, 3 * page + 5);
    bytes.release(5 * page, 5 * page);
    bytes.release(6 * page, 5 * page);
    bytes.release(9 * page + 1, 100 * page);
    for (std::size_t i = 0; i < size; ++i)
        ASSERT_EQ(bytes.data()[i], i >= page && i < 3 * page ? '\0' : 'x') << i;
    bytes.release(9 * page, 100 * page);
    EXPECT_EQ(bytes.data()[9 * page], '\0');

    bytes.shrink(5);
    bytes.shrink(9);
    EXPECT_EQ(bytes.view(), "xxxxx");
}

} // namespace
} // namespace kestrane
