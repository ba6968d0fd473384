#include "platform/desktop/OneProcess.h"

#include "platform/TemporaryFolder.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QEventLoop>
#include <QLocalSocket>
#include <QStringList>
#include <QTimer>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace kestrane {
namespace {

class OneProcessTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    const std::string state = folder.file("state/");
    std::vector<std::string> taken;
    OneProcess first{state};

    OneProcessTest() { qputenv("XDG_RUNTIME_DIR", folder.path().c_str()); }

    void listen(OneProcess& program) {
        program.Listen([this](const std::vector<std::string>& paths) {
            taken.insert(taken.end(), paths.begin(), paths.end());
            taken.emplace_back("end");
            QEventLoop opening; // opening files runs events, in which the other start goes away
            QTimer::singleShot(50, &opening, &QEventLoop::quit);
            opening.exec();
        });
    }

    // A further start; the programs before it run meanwhile.
    bool handOver(const std::vector<std::string>& paths) const {
        std::atomic<bool> isDone = false, isTaken = false;
        std::thread start([&] {
            isTaken = OneProcess(state).HandOver(paths);
            isDone = true;
        });
        while (!isDone)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        start.join();
        QCoreApplication::processEvents();
        return isTaken;
    }
};

TEST_F(OneProcessTest, ASecondStartGivesItsFilesToTheFirst) {
    EXPECT_FALSE(first.HandOver({"/a.xml"})) << "it is the first";
    listen(first);
    EXPECT_TRUE(handOver({"/b c.xml", "/d\xC3\xBC.xml"}));
    EXPECT_TRUE(handOver({}));
    EXPECT_EQ(taken, (std::vector<std::string>{"/b c.xml", "/d\xC3\xBC.xml", "end", "end"}));
}

TEST_F(OneProcessTest, TheOtherStartMayGoAwayWhileItsFilesAreOpened) {
    EXPECT_FALSE(first.HandOver({}));
    listen(first);
    QLocalSocket other;
    QObject::connect(&other, &QLocalSocket::readyRead, &other, &QLocalSocket::disconnectFromServer);
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        if (entry.is_socket()) other.connectToServer(QString::fromStdString(entry.path().string()));
    ASSERT_TRUE(other.waitForConnected());
    QCoreApplication::processEvents(); // it is connected before it says anything
    QDataStream stream(&other);
    stream << QStringList{"/a.xml"};
    while (taken.empty())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(taken.front(), "/a.xml");
}

TEST_F(OneProcessTest, NeitherAStaleSocketNorAProgramThatDoesNotAnswerStopsAStart) {
    EXPECT_FALSE(first.HandOver({}));
    EXPECT_FALSE(handOver({"/a.xml"})) << "it holds the lock, but does not listen yet";
    for (const auto& name : {"state/one-process.socket", "kestrane-stale.socket"})
        writeText(folder.file(name), "stale");
    listen(first);
    EXPECT_TRUE(handOver({"/a.xml"}));
    EXPECT_EQ(taken.size(), 2U);
    for (const auto& entry : std::filesystem::directory_iterator(folder.path())) {
        const auto others = entry.status().permissions() & std::filesystem::perms(077);
        EXPECT_TRUE(!entry.is_socket() || others == std::filesystem::perms::none) << "of this user alone";
    }
}

TEST_F(OneProcessTest, AFolderThatCannotBeWrittenMakesTwoPrograms) {
    writeText(folder.file("state"), "in the way");
    EXPECT_FALSE(first.HandOver({"/a.xml"}));
    EXPECT_NO_THROW(listen(first));
}

} // namespace
} // namespace kestrane
