#include "desktop/Desk.h"
#include "dialogs/ModalDialog.h"
#include "download/SampleInstruments.h"

#include <QListWidget>

namespace kestrane {
namespace {

// A desk with an instrument on its line.
struct LineDesk : Desk {
    explicit LineDesk(const SampleInstrument& instrument) {
        connect(comm, instrument);
        session.comm = &comm;
        QObject::connect(&ticking, &QTimer::timeout, &ticking, [this] { time.Now += milliseconds(10); });
        ticking.start(10);
    }

    // Presses a button of the list of logs once it is there.
    void pressInList(const char* button) {
        auto* const looking = new QTimer(&ticking);
        QObject::connect(looking, &QTimer::timeout, looking, [looking, button] {
            QWidget* const dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || dialog->findChild<QListWidget*>("lstLocs") == nullptr) return;
            looking->deleteLater();
            click(*dialog, button);
        });
        looking->start(20);
    }

    ScriptedTime time;
    ScriptedComm comm{time};
    QTimer ticking;
};

std::size_t logsOf(const clsFile& file) {
    return file.InstrumentDatas.empty() ? 0 : file.InstrumentDatas.front()->Locations.size();
}

TEST(Download, OpensUntitledAndMergesIntoTheSelectedDocument) {
    LineDesk desk(brevik());
    EXPECT_FALSE(desk.isEnabled("Merge"));
    desk.pressInList("cmdOK");
    desk.command("Download...").trigger();
    desk.settle();
    ASSERT_EQ(desk.session.OpenFiles.size(), 1U);
    const clsFile& file = *desk.session.OpenFiles.front();
    EXPECT_EQ(desk.tree().topLevelItem(0)->text(0), "Untitled*");
    EXPECT_TRUE(desk.tabs().isVisible()) << "its first log";
    EXPECT_EQ(desk.caption(), "Exploring - (Untitled*)");
    const std::size_t logs = logsOf(file);
    ASSERT_GE(logs, 1U);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

    desk.clickNode("Broadband");
    ASSERT_TRUE(desk.isEnabled("Merge"));
    desk.pressInList("cmdOK");
    desk.command("Merge").trigger();
    desk.settle();
    EXPECT_EQ(desk.session.OpenFiles.size(), 1U);
    EXPECT_EQ(logsOf(file), 2 * logs);
    desk.command("Undo Merge").trigger();
    EXPECT_EQ(logsOf(file), logs);

    desk.pressInList("cmdCancel");
    desk.command("Download...").trigger();
    EXPECT_EQ(desk.session.OpenFiles.size(), 1U);
    ASSERT_EQ(desk.messages.Boxes.size(), 1U);
    EXPECT_EQ(desk.messages.Boxes[0].Prompt, desk.session.LoadText(Text::DownloadAborted));
}

} // namespace
} // namespace kestrane
