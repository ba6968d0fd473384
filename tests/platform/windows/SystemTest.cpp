#include "ErrorOf.h"
#include "platform/AppendedFile.h"
#include "platform/AtomicFile.h"
#include "platform/CrashReport.h"
#include "platform/FileLock.h"
#include "platform/FileNames.h"
#include "platform/FileState.h"
#include "platform/Files.h"
#include "platform/Interrupt.h"
#include "platform/Locale.h"
#include "platform/RunningProgram.h"
#include "platform/RuntimeError.h"
#include "platform/SerialPorts.h"
#include "platform/Sha256.h"
#include "platform/TemporaryFolder.h"
#include "platform/UserFolders.h"
#include "platform/Utf8.h"
#include "platform/windows/Wide.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace kestrane {
namespace {

using std::chrono::milliseconds;

void write(const std::string& path, const std::string& text) {
    writeFileAtomically(path, [&](const FileSink& sink) { sink(text); });
}

std::string contentOf(const std::string& path) {
    return std::string(readFile(path)->view());
}

std::size_t filesIn(const std::string& folder) {
    const std::filesystem::directory_iterator files(folder);
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

// The file open in the way of a program that lets nobody write or replace it.
Handle heldFile(const std::string& path) {
    return Handle(
        CreateFileW(widePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
}

class WindowsFiles : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string path = folder.file("Gehör \u2713.xml");
};

TEST_F(WindowsFiles, AreReplacedWholeAndKeepTheirAttributes) {
    write(path, "old\n");
    SetFileAttributesW(widePath(path).c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_THROW(writeFileAtomically(path,
                                     [](const FileSink& sink) {
                                         sink("half");
                                         raiseOverflow();
                                     }),
                 RuntimeError);
    EXPECT_EQ(contentOf(path), "old\n") << "and no carriage return";
    write(path, std::string(700'001, 'x'));
    EXPECT_EQ(contentOf(path), std::string(700'001, 'x'));
    EXPECT_NE(GetFileAttributesW(widePath(path).c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
    EXPECT_EQ(filesIn(folder.path()), 1U);

    SetFileAttributesW(widePath(path).c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(errorOf([&] { write(path, "x"); }), EACCES);
    SetFileAttributesW(widePath(path).c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(errorOf([&] { write(folder.path(), "x"); }), EISDIR);
    EXPECT_EQ(errorOf([&] { write(folder.file("none/a.xml"), "x"); }), ENOENT);
}

TEST_F(WindowsFiles, ThatAreTemporaryAreRemovedWhenTheyAreOldOnly) {
    const std::string old = folder.file(".kestrane-1.tmp");
    const std::string young = folder.file(".kestrane-2.tmp"); // of a save that waits for its name
    writeText(old, "");
    writeText(young, "");
    std::filesystem::last_write_time(old, std::filesystem::file_time_type::clock::now() - std::chrono::minutes(11));
    write(path, "x");
    EXPECT_FALSE(fileExists(old));
    EXPECT_TRUE(fileExists(young));
}

TEST_F(WindowsFiles, ThatAreHeldForAMomentAreWaitedForAndThatIsToldIfItTakesLonger) {
    write(path, "old");
    {
        std::thread scanner([this] {
            const Handle file = heldFile(path);
            std::this_thread::sleep_for(milliseconds(500));
        });
        std::this_thread::sleep_for(milliseconds(100));
        write(path, "new");
        scanner.join();
    }
    EXPECT_EQ(contentOf(path), "new");

    const Handle file = heldFile(path);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(errorOf([&] { write(path, "newer"); }), EACCES);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(1900));
    EXPECT_EQ(contentOf(path), "new");
    EXPECT_EQ(filesIn(folder.path()), 1U);
}

TEST_F(WindowsFiles, MayHaveNamesOfAnyLength) {
    std::string deep = folder.path();
    for (int i = 0; i < 8; ++i)
        deep += "/" + std::string(50, static_cast<char>('a' + i));
    for (std::size_t at = folder.path().size() + 51; at <= deep.size(); at += 51)
        CreateDirectoryW(widePath(deep.substr(0, at)).c_str(), nullptr);
    const std::string file = deep + "/data.xml";
    write(file, "deep");
    appendLines(file, "er\n");
    EXPECT_EQ(contentOf(file), "deep\ner\n");
    EXPECT_EQ(renameFile(file, deep + "/other.xml"), 0);
    EXPECT_FALSE(fileExists(file));
    EXPECT_TRUE(fileExists(deep + "/other.xml"));
    EXPECT_EQ(stateOfFile(deep + "/other.xml")->Size, 8);
    DeleteFileW(widePath(deep + "/other.xml").c_str());
    for (std::size_t at = deep.size(); at > folder.path().size(); at -= 51)
        RemoveDirectoryW(widePath(deep.substr(0, at)).c_str());
}

TEST_F(WindowsFiles, GetOtherAndSecondNames) {
    write(path, "a");
    write(folder.file("b"), "b");
    EXPECT_EQ(renameFile(path, folder.file("b")), 0) << "what has the name is replaced";
    EXPECT_EQ(contentOf(folder.file("b")), "a");
    EXPECT_EQ(renameFile(path, folder.file("c")), ENOENT);
    EXPECT_TRUE(giveSecondName(folder.file("b"), path));
    EXPECT_FALSE(giveSecondName(folder.file("b"), path));
    write(folder.file("b"), "new");
    EXPECT_EQ(contentOf(path), "a") << "the second name is of the old file";
    EXPECT_NE(makeUniqueFolder(folder.file("x")), makeUniqueFolder(folder.file("x")));
}

TEST_F(WindowsFiles, AreSeenToBeWritten) {
    write(path, "a");
    EXPECT_FALSE(isBeingWritten(path));
    {
        const Handle writer(
            CreateFileW(widePath(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(isBeingWritten(path));
        EXPECT_EQ(contentOf(path), "a") << "it can be read meanwhile";
    }
    EXPECT_FALSE(isBeingWritten(path));
}

TEST(WindowsMemory, ReleasedPagesReadAsZero) {
    constexpr std::size_t kPage = 4096;
    FileBytes bytes(10 * kPage + 7);
    std::fill_n(bytes.data(), bytes.size(), 'x');
    bytes.release(1, 3 * kPage + 5);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        ASSERT_EQ(bytes.data()[i], i >= kPage && i < 3 * kPage ? '\0' : 'x') << i;
}

TEST(WindowsSerialPorts, HaveTheNumbersOfTheSystemUnlessOneIsPinned) {
    const auto listed = [](const SettingsStore& settings) {
        std::string text;
        for (const PortInfo& port :
             numberPorts({{0, R"(\\.\COM12)", "b"}, {0, R"(\\.\COM3)", "a"}, {0, R"(\\.\X)", ""}}, settings))
            text += std::to_string(port.Number) + '=' + port.Device + ' ';
        return text;
    };
    EXPECT_EQ(devicePath("COM10"), R"(\\.\COM10)");
    EXPECT_EQ(devicePath(R"(\\.\COM10)"), R"(\\.\COM10)");
    MemorySettings settings;
    EXPECT_EQ(listed(settings), R"(1=\\.\X 3=\\.\COM3 12=\\.\COM12 )");
    settings.write("SerialPorts", "COM1", "COM12");
    EXPECT_EQ(listed(settings), R"(1=\\.\COM12 2=\\.\X 3=\\.\COM3 )");
    EXPECT_EQ(obstacleOf(R"(\\.\COM255)").Error, ENOENT);
    EXPECT_EQ(obstacleOf(R"(\\.\NUL)").Error, 0);
}

TEST(WindowsConsole, InterruptsAsCancel) {
    FreeConsole(); // that of this program alone is to be interrupted
    ASSERT_NE(AllocConsole(), 0);
    const Interrupt interrupt;
    EXPECT_FALSE(interrupt.hasCome());
    EXPECT_NE(GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0), 0);
    for (int i = 0; i < 500 && !interrupt.hasCome(); ++i)
        std::this_thread::sleep_for(milliseconds(10));
    EXPECT_TRUE(interrupt.hasCome());
}

// What fails is done by this program once more, which does all that stands before the statement, too.
class WindowsFaultsDeathTest : public testing::Test {
protected:
    const std::string place =
        portablePath(std::filesystem::temp_directory_path().wstring()) + "kestrane-faults/"; // the same in both

    void SetUp() override { std::filesystem::remove_all(place); }

    void TearDown() override { std::filesystem::remove_all(place); }

    void begin() const {
        installCrashReport(place, "1.2.3");
        noteOpenFiles("C:/data/a.xml\n");
        noteCommand("save");
    }

    void expectReport(const char* kind) const {
        const std::string report = contentOf(takeCrashReport(place));
        for (const char* words : {"kestrane 1.2.3", kind, "C:/data/a.xml", "save", "stack:"})
            EXPECT_NE(report.find(words), std::string::npos) << words << " is missing in " << report;
    }
};

TEST_F(WindowsFaultsDeathTest, ExceptionsOfTheSystemAreReported) {
    EXPECT_DEATH((begin(), RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr)), "");
    expectReport("exception 00000000c0000005");
}

TEST_F(WindowsFaultsDeathTest, AbortsAreReported) {
    EXPECT_DEATH((begin(), std::abort()), "");
    expectReport("abort");
}

TEST(WindowsSystem, SaysWhereThingsAreAndHowThingsAreWritten) {
    for (const std::string& folder : {configFolder(), userDataFolder(), stateFolder(), folderOfProgram()}) {
        EXPECT_TRUE(folder.ends_with('/') && std::filesystem::path(folder).is_absolute()) << folder;
        EXPECT_EQ(folder.find('\\'), std::string::npos) << folder;
    }
    const Locale locale = systemLocale();
    EXPECT_EQ(locale.DecimalSeparator.size(), 1U);
    EXPECT_TRUE(locale.DateSeparator == "/" || locale.DateSeparator == "." || locale.DateSeparator == "-")
        << locale.DateSeparator;
    EXPECT_TRUE(systemLanguage().empty() || systemLanguage().size() == 2);
    EXPECT_EQ(upperCase("größe éÿ\u0434"), "GRÖßE ÉŸ\u0414");
    // The hash of the three letters, as the standard gives it.
    EXPECT_EQ(sha256Of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

} // namespace
} // namespace kestrane
