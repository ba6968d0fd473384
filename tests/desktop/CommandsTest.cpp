// Every command in every state of the window, whatever its menu item says, and behind each dialog that comes up the
// keys that would take away what the dialog works on.
#include "app/HelpPages.h"
#include "desktop/Desk.h"
#include "desktop/HelpTopic.h"
#include "desktop/frmExplorer.h"
#include "dialogs/ModalDialog.h"
#include "download/ScriptedLine.h"
#include "platform/desktop/DesktopMessages.h"
#include "protection/ProtectorDatabase.h"

#include <QInputDialog>
#include <QMenu>
#include <QMenuBar>

#include <set>

namespace kestrane {
namespace {

constexpr auto kShift = "shift-dosimeter.xml";
constexpr auto kSurvey = "machine-survey-octave.xml";

// The dialogs of the toolkit, which ask for a file or an answer, and the about box have no page of the help.
bool needsPage(const QDialog& dialog) {
    const QByteArray kind = dialog.metaObject()->className();
    return (kind == "QDialog" || !kind.startsWith('Q')) && dialog.windowTitle() != "About Kestrane";
}

// Message boxes are real here. Nothing is on the serial line and in the database.
struct SweptDesk : Desk {
    explicit SweptDesk(DesktopMessages& boxes) : Desk({}, {1024, 700}, &boxes) {
        session.comm = &comm;
        session.protectors = &protectors;
        comm.TheirPorts.clear();
        protectors.File = path("none.txt");
        QObject::connect(&looking, &QTimer::timeout, &looking, [this] { onDialog(); });
        looking.start(0);
    }

    std::pair<std::size_t, std::size_t> whatIsThere() {
        return {area().subWindowList().size(), session.OpenFiles.size()};
    }

    // Keys that were sent before the dialog had the focus; then it is cancelled.
    void onDialog() {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) return;
        looking.stop();
        const auto before = whatIsThere();
        QApplication::setActiveWindow(frame.get());
        for (const char* keys : {"Ctrl+F4", "Ctrl+W", "Ctrl+Shift+W", "Ctrl+Q", "Ctrl+I", "F5"})
            QTest::keySequence(frame->windowHandle(), QKeySequence(keys));
        for (QAction* action : frame->actions())
            emit action->triggered();
        if (area().currentSubWindow() != nullptr) area().currentSubWindow()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(whatIsThere(), before) << "behind " << dialog->windowTitle().toStdString();
        EXPECT_TRUE(frame->isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), dialog);
        EXPECT_TRUE(!needsPage(*dialog) || helpTopicOf(dialog) != kFirstHelpTopic)
            << "no page of the help is about " << dialog->windowTitle().toStdString();
        const auto* const question = qobject_cast<QInputDialog*>(dialog); // which all have the program's title
        titles.insert((question != nullptr ? question->labelText() : dialog->windowTitle()).toStdString());
        looking.start(0);
        dialog->reject();
    }

    ScriptedTime time;
    ScriptedComm comm{time};
    ProtectorCollection protectors;
    QTimer looking;
    std::set<std::string> titles; // of the dialogs that came up, and what they ask
};

struct State {
    const char* name;
    std::size_t dialogs; // of different titles that come up at least
    void (*arrange)(SweptDesk& desk);
    std::vector<std::string> named = {}; // that come up among others
};

void zoomIn(SweptDesk& desk) {
    desk.openLog(kShift, "Broadband 1");
    auto& state = desk.area().currentSubWindow()->findChild<frmExplorer*>()->State();
    state.View.ShowsZoom = state.ZoomRange.ByTime = true;
    state.ZoomRange.Range = {10, 20};
    ASSERT_TRUE(state.ApplyZoom(desk.session));
    desk.frame->LogValuesChanged(*state.OpenedLog(desk.session));
}

const State kStates[] = {
    {"no file", 6, [](SweptDesk&) {}, {"Hearing Protector Database"}},
    {"no log", 7,
     [](SweptDesk& desk) {
         desk.open(kShift);
         desk.clickNode(kShift);
     }},
    {"a log",
     12,
     [](SweptDesk& desk) { desk.openLog(kShift, "Broadband 1"); },
     {"Chart Note", "Print Preview", "Hearing Protector Database"}},
    {"the exposure calculator", 9, [](SweptDesk& desk) { desk.openLog(kShift, "Broadband 1", "Exp Calc"); }},
    {"octaves",
     10,
     [](SweptDesk& desk) { desk.openLog(kSurvey, "Planer", "Cumultv (Data)"); },
     {"Convert to which frequency weighting (A, C or Z)?", "Print Preview"}},
    {"comparing",
     10,
     [](SweptDesk& desk) { desk.openLog(kSurvey, "Planer", "Compare HPD"); },
     {"Select a Hearing Protector"}},
    {"zoomed", 12, zoomIn},
    {"an assessment",
     6,
     [](SweptDesk& desk) { desk.frame->OpenAssessments({desk.copyOf("welder-tasks.kxa")}, OpenSource::Named); },
     {"Print Preview"}},
    {"minimised", 6,
     [](SweptDesk& desk) {
         desk.openLog(kShift, "Broadband 1");
         desk.area().currentSubWindow()->showMinimized();
     }},
    {"no explorer", 6,
     [](SweptDesk& desk) {
         desk.openLog(kShift, "Broadband 1");
         desk.area().currentSubWindow()->close();
         QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
     }},
    {"busy", 6, [](SweptDesk& desk) {
         OpenFile(desk.session, desk.copyOf("third-octave-2000.xml"), OpenSource::Dialog, true);
         desk.clickNode("Third Octave 1");
     }}};

class EveryCommand : public ::testing::TestWithParam<State> {};

TEST_P(EveryCommand, CanBeGivenAndNothingIsTakenBehindADialog) {
    DesktopMessages boxes([](Button) { return std::string("x"); });
    std::set<std::string> titles;
    const auto commands = SweptDesk(boxes).frame->actions().size();
    for (qsizetype i = 0; i < commands; ++i) {
        SweptDesk desk(boxes);
        GetParam().arrange(desk);
        QAction* const action = desk.frame->actions().at(i);
        SCOPED_TRACE(action->text().toStdString());
        action->isCheckable() ? action->toggle() : emit action->triggered();
        desk.settle();
        titles.merge(desk.titles);
    }
    titles.erase("Error Connecting to Printer"); // where there is none
    EXPECT_GE(titles.size(), GetParam().dialogs);
    for (const std::string& title : GetParam().named)
        EXPECT_TRUE(titles.contains(title)) << title;
}

INSTANTIATE_TEST_SUITE_P(InEveryState, EveryCommand, ::testing::ValuesIn(kStates),
                         [](const auto& state) { return QString(state.param.name).remove(' ').toStdString(); });

} // namespace
} // namespace kestrane
