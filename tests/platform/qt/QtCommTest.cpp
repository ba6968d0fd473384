#include "platform/connection/QtComm.h"

#include "ErrorOf.h"
#include "platform/TemporaryFolder.h"
#include "platform/qt/PseudoTerminal.h"
#include "platform/qt/QtEventPump.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <grp.h>
#include <sys/stat.h>

namespace kestrane {
namespace {

struct Line {
    MemorySettings settings;
    QtEventPump pump;
    QtComm comm{settings, [](Text::Id id) { return std::to_string(id) + " ^"; }};

    // What comes in until count bytes are there, or too long has passed.
    std::string read(std::size_t count) {
        std::string bytes;
        for (int looks = 0; looks < 400 && bytes.size() < count; ++looks) {
            pump.wait(std::chrono::milliseconds(10));
            bytes += comm.Input();
        }
        return bytes;
    }

    void settle() {
        for (int i = 0; i < 5; ++i)
            pump.wait(std::chrono::milliseconds(5));
    }

    // The message of an opening that is refused.
    std::string refusal() {
        try {
            comm.Open();
        } catch (const RuntimeError& error) {
            return std::to_string(error.Number) + ": " + error.what();
        }
        return {};
    }
};

speed_t speedOf(const PseudoTerminal& meter) {
    const termios settings = meter.line();
    return cfgetospeed(&settings);
}

TEST(QtComm, EveryByteGoesBothWaysUnchanged) {
    std::string all;
    for (int repeat = 0; repeat < 80; ++repeat)
        for (int byte = 0; byte < 256; ++byte)
            all += static_cast<char>(byte);
    const PseudoTerminal meter;
    Line line;
    line.settings.write("SerialPorts", "COM7", meter.device);
    line.comm.CommPort(7);
    line.comm.Settings("19200,n,8,2");
    line.comm.Open();
    ASSERT_TRUE(line.comm.IsOpen());

    line.comm.Output(std::string_view(all).substr(0, 1000)); // XON and XOFF among them
    EXPECT_EQ(meter.take(), all.substr(0, 1000));
    for (std::size_t at = 0; at < all.size(); at += 4000) { // more than the device buffers
        meter.send(std::string_view(all).substr(at, 4000));
        EXPECT_TRUE(line.read(std::min<std::size_t>(4000, all.size() - at)) == all.substr(at, 4000));
    }
    EXPECT_EQ(line.comm.InBufferCount(), 0U);

    meter.send("late");
    line.settle();
    EXPECT_EQ(line.comm.InBufferCount(), 4U);
    line.comm.Flush();
    EXPECT_EQ(line.comm.Input(), "");
}

TEST(QtComm, SettingsApplyAtOpeningAndAtOnce) {
    const PseudoTerminal meter;
    Line line;
    line.comm.UseOnly(meter.device);
    line.comm.CommPort(1);
    line.comm.Settings("19200,n,8,2");
    line.comm.Open();
    EXPECT_EQ(speedOf(meter), speed_t{B19200});
    EXPECT_TRUE(meter.line().c_cflag & CSTOPB);
    EXPECT_FALSE(meter.line().c_iflag & (IXON | IXOFF | ICRNL | INLCR | ISTRIP));
    EXPECT_FALSE(meter.line().c_lflag & (ICANON | ECHO | ISIG));
    line.comm.Settings("2400,N,8,1");
    EXPECT_EQ(speedOf(meter), speed_t{B2400});
    EXPECT_FALSE(meter.line().c_cflag & CSTOPB);
    for (const char* bad : {"", "19200", "fast,n,8,2", "-1,n,8,2", "19200,x,8,2", "19200,n,9,2", "19200,n,8,2,1"})
        EXPECT_EQ(errorOf([&] { line.comm.Settings(bad); }), kErrorTypeMismatch) << bad;
    line.comm.Close();
    line.comm.Close();
    line.comm.Open(); // again, as after a silence
    EXPECT_EQ(speedOf(meter), speed_t{B2400});
}

TEST(QtComm, ALineThatHangsUpIsClosedAtOnceAndSaysWhy) {
    PseudoTerminal meter;
    Line line;
    line.comm.UseOnly(meter.device);
    line.comm.Open();
    meter.send("last words");
    EXPECT_EQ(line.read(10), "last words");
    EXPECT_EQ(line.comm.Fault(), "");
    meter.hangUp();
    line.settle();
    EXPECT_FALSE(line.comm.IsOpen());
    EXPECT_EQ(line.comm.Fault(), "5507 " + meter.device);
    EXPECT_NE(errorOf([&] { line.comm.Output("x"); }), 0);
    const std::clock_t before = std::clock();
    for (int i = 0; i < 10; ++i)
        line.pump.wait(std::chrono::milliseconds(20));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 20);

    const PseudoTerminal another;
    line.comm.UseOnly(another.device);
    line.comm.Open();
    EXPECT_EQ(line.comm.Fault(), "");
    line.settle();
    EXPECT_TRUE(line.comm.IsOpen());
}

TEST(QtComm, TellsWhyAPortDoesNotOpen) {
    const TemporaryFolder folder;
    Line line;
    line.comm.CommPort(9);
    line.settings.write("SerialPorts", "COM8", folder.file("none"));
    EXPECT_EQ(line.refusal(), std::to_string(ENOENT) + ": 5503 ^"); // no such number
    line.comm.CommPort(8);
    EXPECT_EQ(line.refusal(), std::to_string(ENOENT) + ": 5503 ^");
    writeText(folder.file("none"), "");
    EXPECT_EQ(line.refusal(), std::to_string(ENOTTY) + ": 5506 ^");

    const PseudoTerminal meter;
    line.comm.UseOnly(meter.device);
    line.comm.CommPort(1);
    Line other;
    std::filesystem::create_symlink(meter.device, folder.file("link"));
    other.comm.UseOnly(folder.file("link"));
    other.comm.Open();
    EXPECT_EQ(line.refusal(), std::to_string(EBUSY) + ": 5505 ^");
    other.comm.Close();
    EXPECT_EQ(line.refusal(), "");
    line.comm.Close();

    struct stat status {};

    ::stat(meter.device.c_str(), &status);
    ASSERT_EQ(::chmod(meter.device.c_str(), 0), 0);
    const bool isRoot = ::geteuid() == 0;
    constexpr uid_t kNobody = 65534;
    if (isRoot) { // who may open anything
        ASSERT_EQ(::seteuid(kNobody), 0);
    }
    const std::string refusal = line.refusal();
    if (isRoot) {
        ASSERT_EQ(::seteuid(0), 0);
    }
    const group* const owner = ::getgrgid(status.st_gid);
    EXPECT_EQ(refusal,
              std::to_string(EACCES) + ": 5504 " + (owner == nullptr ? std::to_string(status.st_gid) : owner->gr_name));
}

} // namespace
} // namespace kestrane
