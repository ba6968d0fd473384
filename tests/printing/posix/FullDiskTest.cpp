#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"
#include "printing/Logo.h"
#include "printing/Mill.h"

#include <gtest/gtest.h>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

namespace kestrane {
namespace {

// No file of this process grows beyond room bytes.
class FullDisk {
public:
    explicit FullDisk(rlim_t room) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{room, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FullDisk() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
    void (*signal_)(int);
};

TEST(FullDisk, APdfFileIsWholeOrTheOldOne) {
    const TemporaryFolder folder;
    Mill mill;
    const std::string file = folder.file("a.pdf");
    writeText(file, "old");
    EXPECT_THROW(mill.write("/dev/full"), RuntimeError);
    ASSERT_TRUE(mill.write(folder.file("whole.pdf")));
    const auto size = std::filesystem::file_size(folder.file("whole.pdf"));
    std::filesystem::remove(folder.file("whole.pdf"));
    for (const std::uintmax_t room :
         {std::uintmax_t{0}, size / 2, size - 1}) { // a disk that fills up at once, half way, at the end
        const FullDisk disk(room);
        EXPECT_THROW(mill.write(file), RuntimeError) << room;
    }
    EXPECT_TRUE(readText(file) == "old");
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(Logo, IsNotWaitedForAtAPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.file("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Logo::ofFile(folder.file("pipe")).isPicture());
}

} // namespace
} // namespace kestrane
