#include "dialogs/DownloadDialogs.h"

#include "TestSession.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/frmAcquire.h"
#include "dialogs/frmProgress.h"
#include "download/Download.h"
#include "download/ScriptedLine.h"
#include "platform/TemporaryFolder.h"
#include "platform/qt/QtEventPump.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>

namespace kestrane {
namespace {

using Choice = std::optional<AcquireChoice>;

void clickRow(QListWidget& list, int row) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(row)).center());
}

TEST(Acquire, RowsAreChosenByClicksAndAllAtOnce) {
    TestSession test;
    const AcquireList list = {"Brevik SE", "<b>123</b>", {"one", "two", "three"},
                              false,       false,        {3600, std::nullopt, 60}};
    onDialog([](QDialog& dialog) {
        EXPECT_EQ(control<QLabel>(dialog, "lblInsType").text(), "Brevik SE");
        EXPECT_EQ(control<QLabel>(dialog, "lblInsSerial").textFormat(), Qt::PlainText);
        EXPECT_FALSE(control<QCheckBox>(dialog, "chkOctaves").isVisible());
        auto& rows = control<QListWidget>(dialog, "lstLocs");
        auto& all = control<QCheckBox>(dialog, "chkSelectAll");
        EXPECT_EQ(rows.selectedItems().size(), 3);
        EXPECT_EQ(all.checkState(), Qt::Checked);
        clickRow(rows, 1);
        EXPECT_EQ(all.checkState(), Qt::PartiallyChecked);
        click(dialog, "chkSelectAll");
        EXPECT_EQ(rows.selectedItems().size(), 3);
        click(dialog, "chkSelectAll");
        EXPECT_EQ(rows.item(0)->text(), "one\tlength 01:00:00");
        EXPECT_EQ(rows.item(1)->text(), "two");
        EXPECT_EQ(rows.selectedItems().size(), 0);
        EXPECT_EQ(all.checkState(), Qt::Unchecked);
        EXPECT_FALSE(control<QPushButton>(dialog, "cmdOK").isEnabled());
        clickRow(rows, 2);
        all.toggle(); // as an assistive program does
        EXPECT_EQ(rows.selectedItems().size(), 3);
        EXPECT_EQ(all.checkState(), Qt::Checked);
        all.toggle();
        EXPECT_EQ(rows.selectedItems().size(), 0);
        clickRow(rows, 2);
        click(dialog, "cmdOK");
    });
    const Choice choice = frmAcquire::ChooseLogs(test.session, list, nullptr);
    ASSERT_TRUE(choice);
    EXPECT_EQ(choice->Selected, (std::vector<bool>{false, false, true}));

    onDialog([](QDialog& dialog) { click(dialog, "cmdCancel"); });
    EXPECT_FALSE(frmAcquire::ChooseLogs(test.session, list, nullptr));
}

TEST(Acquire, OffersOctavesWhereTheInstrumentHasThem) {
    TestSession test;
    for (const bool canFetch : {true, false}) {
        onDialog([canFetch](QDialog& dialog) {
            const auto& octaves = control<QCheckBox>(dialog, "chkOctaves");
            EXPECT_TRUE(octaves.isVisible());
            EXPECT_EQ(octaves.isEnabled(), canFetch);
            EXPECT_EQ(octaves.isChecked(), canFetch);
            click(dialog, "cmdOK");
        });
        const Choice choice = frmAcquire::ChooseLogs(test.session, {"TR352", "", {"one"}, true, canFetch, {}}, nullptr);
        EXPECT_EQ(choice->FetchOctaves, canFetch);
    }
}

TEST(Acquire, AsksForANumber) {
    TestSession test;
    onDialog([](QDialog& dialog) {
        EXPECT_TRUE(control<QRadioButton>(dialog, "optGpExchange3").isChecked());
        click(dialog, "optGpExchange5");
        click(dialog, "cmdOK");
    });
    EXPECT_EQ(frmAcquire::setExchRate(test.session, 3, nullptr), 5);
    onDialog([](QDialog& dialog) { click(dialog, "cmdOK"); });
    EXPECT_EQ(frmAcquire::setCriterion(test.session, 85, nullptr), 85);
    onDialog([](QDialog&) {});
    EXPECT_EQ(frmAcquire::setCriterion(test.session, 85, nullptr), std::nullopt);
}

struct FastClock : MonotonicClock {
    int Speed = 1;

    milliseconds now() const override { return Speed * SteadyClock().now(); }
};

// A download over a scripted line with the dialogs in front of it; waits are real.
struct Desk {
    MemorySettings settings;
    ScriptedMessages messages;
    QtEventPump pump;
    SystemClock wallClock;
    Session session{"Ordwyn Acoustics", {}, settings, messages, pump, wallClock};
    FastClock clock;
    ScriptedTime time;
    ScriptedComm comm{time};
    DownloadDialogs dialogs{session, clock, nullptr};
    clsInsData data{session};

    bool download() { return DownloadData({session, comm, dialogs, clock, dialogs.Transcript()}, data); }
};

QDialog* shownDialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

TEST(Progress, StandsModallyWhileTheLoopRunsAndCancelEndsTheWait) {
    for (const bool byKey : {false, true}) {
        Desk desk; // whose instrument is silent
        QElapsedTimer sinceCancel;
        QTimer::singleShot(300, [&] {
            QDialog* const dialog = shownDialog();
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(control<QLabel>(*dialog, "lblProgress").text(), "Identifying Instrument...");
            EXPECT_EQ(control<QProgressBar>(*dialog, "barProgress").maximum(), 0);
            EXPECT_EQ(dialog->windowModality(), Qt::ApplicationModal);
            sinceCancel.start();
            if (byKey) {
                QTest::keyClick(dialog, Qt::Key_Escape);
            } else {
                click(*dialog, "cmdCancel");
            }
        });
        EXPECT_FALSE(desk.download());
        EXPECT_LT(sinceCancel.elapsed(), 200);
        EXPECT_EQ(shownDialog(), nullptr);
        ASSERT_EQ(desk.messages.Boxes.size(), 1U);
        EXPECT_EQ(desk.messages.Boxes[0].Prompt, desk.session.LoadText(Text::DownloadAborted));
        desk.dialogs.OfferTranscript(); // not to one who cancelled
    }
}

TEST(Progress, ShowsTheFiguresOfADownload) {
    TestSession test;
    const SteadyClock clock;
    DownloadDialogs dialogs(test.session, clock, nullptr);
    dialogs.ShowProgress({"Downloading Log: <i>1</i>", 1500, 2, 4, 30, 60});
    QDialog* const dialog = shownDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(control<QLabel>(*dialog, "lblProgress").textFormat(), Qt::PlainText);
    EXPECT_EQ(control<QLabel>(*dialog, "lblLog").text(), "Log 2 of 4");
    EXPECT_EQ(control<QLabel>(*dialog, "lblReceived").text(), "1500 bytes received");
    EXPECT_EQ(control<QProgressBar>(*dialog, "barProgress").value(), 37);
    dialogs.CloseProgress();
    EXPECT_EQ(shownDialog(), nullptr);
}

TEST(Progress, AFailedDownloadOffersItsTranscript) {
    const TemporaryFolder folder;
    for (const bool isWanted : {false, true}) {
        Desk desk;
        desk.clock.Speed = 20;
        desk.session.Options.DefaultDataDirectory = folder.path();
        desk.comm.Answer = [](const std::string&) {
            return std::vector<ScriptedComm::Arrival>{{milliseconds(0), "ERROR"}};
        };
        EXPECT_FALSE(desk.download());
        ASSERT_EQ(desk.messages.Boxes.size(), 1U);
        EXPECT_EQ(desk.messages.Boxes[0].Prompt, desk.session.LoadText(Text::ErrorDownloading));
        onDialog([&](QDialog& dialog) {
            EXPECT_TRUE(control<QLabel>(dialog, "lblProgress").text().startsWith("The download has failed."));
            EXPECT_FALSE(control<QProgressBar>(dialog, "barProgress").isVisible());
            if (isWanted) {
                click(dialog, "chkTranscript");
                onDialog([](QDialog& saving) { saving.accept(); });
            }
            QTest::keyClick(&dialog, Qt::Key_Return);
            EXPECT_FALSE(dialog.isVisible());
        });
        desk.dialogs.OfferTranscript();
        const std::string path = folder.file("transcript.txt");
        EXPECT_EQ(std::filesystem::exists(path), isWanted);
        if (!isWanted) continue;
        EXPECT_NE(readText(path).find(" > 02010003\n"), std::string::npos);
        EXPECT_NE(readText(path).find(" < 4552524F52\n"), std::string::npos);
    }
}

TEST(Progress, OffersNoTranscriptWhereNothingWentOverTheLine) {
    Desk desk;
    desk.comm.TheirPorts.clear();
    EXPECT_FALSE(desk.download());
    desk.dialogs.OfferTranscript();
    EXPECT_EQ(shownDialog(), nullptr);
}

} // namespace
} // namespace kestrane
