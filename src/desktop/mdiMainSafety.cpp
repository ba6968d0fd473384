// What the frame does so that nothing is lost: copies of unsaved work, and what was left of it.
#include "app/OtherPrograms.h"
#include "desktop/assessment/frmAssessment.h"
#include "desktop/mdiMain.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/Palettes.h"
#include "dialogs/frmRecovery.h"
#include "platform/CrashReport.h"

#include <QEvent>

#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrane {

namespace {

constexpr std::chrono::seconds kBusyAgain(1);        // until the next look when the program is busy
constexpr std::chrono::milliseconds kFreeAgain(200); // until the next look whether a dialog is still in the way

} // namespace

std::vector<const AssessmentDocument*> mdiMain::openAssessments() const {
    std::vector<const AssessmentDocument*> documents;
    for (const frmAssessment* assessment : assessments())
        documents.push_back(&assessment->Document());
    return documents;
}

// While the program is busy, a worker thread may be changing a document.
void mdiMain::watchUnsaved() {
    setLastWords([this] { recovery_.WriteNow(); });
    opening_.setSingleShot(true);
    opening_.setInterval(kFreeAgain);
    connect(&opening_, &QTimer::timeout, this, &mdiMain::openHandedOver);
    looking_.setSingleShot(true);
    connect(&looking_, &QTimer::timeout, this, [this] {
        if (busy_ == 0) recovery_.Look();
        looking_.start(busy_ > 0 ? kBusyAgain : std::chrono::seconds(Recovery::kSecondsBetweenLooks));
    });
    looking_.start(std::chrono::seconds(Recovery::kSecondsBetweenLooks));
}

void mdiMain::OfferRecovery() {
    const std::vector<LeftCopy> left = recovery_.Left();
    std::vector<CopyRow> rows;
    rows.reserve(left.size());
    for (const LeftCopy& copy : left)
        rows.push_back(recovery_.RowOf(copy));
    begin([&] {
        const auto choices = rows.empty() ? std::vector<CopyChoice>() : frmRecovery::Ask(session_, rows, this);
        recovery_.Settle(left, choices, [this](AssessmentDocument document) -> const AssessmentDocument& {
            return showAssessment(std::move(document))->Document();
        });
    });
}

void mdiMain::TellOfCrash() {
    const std::string path = takeCrashReport(session_.StateFolder);
    if (path.empty()) return;
    session_.ShowMessage(ReplaceText(session_.LoadText(Text::CrashReported), "^", path), kIconExclamation);
}

void mdiMain::noteOpen() const {
    std::string names;
    for (const auto& file : session_.OpenFiles)
        names += file->FileName + "\n";
    for (const AssessmentDocument* assessment : openAssessments())
        names += assessment->Path() + "\n";
    noteOpenFiles(names);
}

void mdiMain::OpenForAnother(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        handedOver_.push_back(QString::fromStdString(path));
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    openHandedOver();
}

void mdiMain::openHandedOver() {
    begin([&] {
        const QStringList paths = std::exchange(handedOver_, {});
        if (!paths.isEmpty()) openNamed(paths, OpenSource::Named);
    });
    if (!handedOver_.isEmpty()) opening_.start();
}

// Coming to the front, the window may find that files have changed meanwhile.
void mdiMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) followColours();
    if (event->type() != QEvent::ActivationChange || !isActiveWindow()) return;
    QMetaObject::invokeMethod(this, &mdiMain::lookForOtherPrograms, Qt::QueuedConnection);
}

// The desktop, or the user, has chosen other colours.
void mdiMain::followColours() {
    keepQuietTextReadable();
    showErrorColour();
    QMetaObject::invokeMethod(
        this,
        [this] {
            for (frmAssessment* assessment : assessments())
                assessment->ShowResult();
        },
        Qt::QueuedConnection); // when they have the colours, too
}

void mdiMain::lookForOtherPrograms() {
    begin([&] {
        LookForOtherPrograms(session_, saveName());
        for (frmAssessment* assessment : assessments())
            assessment->LookForOtherPrograms();
    });
}

std::size_t mdiMain::Choose(const std::string& question, const std::vector<std::string>& captions) {
    return chooseAnswer(session_, question, captions, this);
}

} // namespace kestrane
