#include "dialogs/frmOptions.h"

#include "dialogs/OptionsExplorerPage.h"
#include "dialogs/OptionsLogsPage.h"
#include "dialogs/OptionsSystemPage.h"
#include "dialogs/Words.h"

#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kTwipsPerPixel = 15;

// The minimum height of the pages in twips.
int tabHeight(SettingsMode mode) {
    switch (mode) {
    case SettingsMode::Explorer:
        return 4195;
    case SettingsMode::Logs:
        return 6995;
    default:
        return 0;
    }
}

// The corner nearest to a point at which the dialog lies within the screen.
QPoint cornerOnScreen(QPoint at, QSize size) {
    const QScreen* screen = QGuiApplication::screenAt(at);
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    return {std::max(area.left(), std::min(at.x(), area.right() - size.width())),
            std::max(area.top(), std::min(at.y(), area.bottom() - size.height()))};
}

} // namespace

frmOptions::frmOptions(const SettingsDialog& settings, QWidget* parent) :
    QDialog(parent), settings_(settings), tabSettings_(new QTabWidget), logs_(new OptionsLogsPage(settings_)) {
    const Session& session = settings_.session();
    const bool isOfProgram = settings_.Mode() == SettingsMode::All;
    setObjectName(isOfProgram ? "frmOptions" : "frmDisplayOptions");
    setWindowTitle(isOfProgram ? loadText(session, Text::Settings)
                               : loadPlainText(session, Text::CommandDisplayOptions));
    nameControl(*tabSettings_, "tabSettings", windowTitle());
    addPage(new OptionsSystemPage(settings_), Text::SettingsSystem, SettingsMode::All);
    addPage(new OptionsExplorerPage(settings_), Text::SettingsExplorer, SettingsMode::Explorer);
    addPage(logs_, Text::SettingsLogs, SettingsMode::Logs);
    auto* const pages = new QHBoxLayout;
    pages->addWidget(tabSettings_);
    pages->addStrut(tabHeight(settings_.Mode()) / kTwipsPerPixel);

    QDialogButtonBox* const buttons = okAndCancel(session);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(pages);
    layout->addWidget(buttons);
}

// A page that this way of opening does not offer is disabled and takes no room.
void frmOptions::addPage(OptionsPage* page, Text::Id title, SettingsMode mode) {
    const bool isOffered = settings_.Mode() == SettingsMode::All || settings_.Mode() == mode;
    if (!isOffered) page->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    pages_.push_back(page);
    const int index = tabSettings_->addTab(page, loadText(settings_.session(), title));
    tabSettings_->setTabEnabled(index, isOffered);
    if (settings_.Mode() == mode) tabSettings_->setCurrentIndex(index);
}

void frmOptions::accept() {
    for (OptionsPage* page : pages_)
        page->store();
    changes_ = settings_.Confirm(logs_->ExposureTimeEntry());
    if (changes_) return QDialog::accept();
    tabSettings_->setCurrentWidget(logs_);
    logs_->FocusExposureTime();
}

std::optional<SettingsChanges> frmOptions::run() {
    exec();
    return changes_;
}

std::optional<SettingsChanges> frmOptions::showAt(QPoint at) {
    resize(minimumSizeHint()); // sizeHint() would include the pages that are not offered
    move(cornerOnScreen(at, size()));
    return run();
}

std::optional<SettingsChanges> frmOptions::ShowFromToolsMenu(Session& session, QWidget* parent) {
    return frmOptions(SettingsDialog(session), parent).run();
}

std::optional<SettingsChanges> frmOptions::ShowFromTreeViewRightClick(Session& session, clsOptions& options, QPoint at,
                                                                      QWidget* parent) {
    return frmOptions(SettingsDialog(session, options), parent).showAt(at);
}

std::optional<SettingsChanges> frmOptions::ShowFromLogTabCtrlRightClick(Session& session, clsLog& log, FigureKind kind,
                                                                        QPoint at, QWidget* parent) {
    return frmOptions(SettingsDialog(session, log, kind), parent).showAt(at);
}

} // namespace kestrane
