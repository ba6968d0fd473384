// What the commands of the frame do.
#include "app/Documents.h"
#include "app/Download.h"
#include "app/DownloadHPD.h"
#include "app/Help.h"
#include "app/StartUp.h"
#include "app/Transcripts.h"
#include "desktop/HelpTopic.h"
#include "desktop/assessment/frmAssessment.h"
#include "desktop/frmExplorer.h"
#include "desktop/frmHelp.h"
#include "desktop/frmHistory.h"
#include "desktop/frmPreview.h"
#include "desktop/frmPrint.h"
#include "desktop/mdiMain.h"
#include "desktop/pages/ComparisonPage.h"
#include "desktop/pages/ExposurePage.h"
#include "desktop/pages/TimePage.h"
#include "desktop/tabLog.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/DownloadDialogs.h"
#include "dialogs/HPDProgressDialog.h"
#include "dialogs/Palettes.h"
#include "dialogs/Words.h"
#include "dialogs/frmAbout.h"
#include "dialogs/frmExpTime.h"
#include "dialogs/frmExport.h"
#include "dialogs/frmFind.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmOptions.h"
#include "dialogs/frmTour.h"
#include "explorer/NodeKeys.h"
#include "model/BusyFrame.h"
#include "model/LogTime.h"
#include "platform/CrashReport.h"
#include "platform/Files.h"
#include "platform/RuntimeError.h"
#include "platform/desktop/DesktopPrograms.h"
#include "platform/desktop/QtClipboard.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QToolBar>
#include <QUrl>

namespace kestrane {

namespace {

// The measured hours of a log; 0 when they are not known.
float measuredHours(const clsLog& log) {
    try {
        return getTime(log, 'h', Run::Measured, ExcludedRows::Count);
    } catch (const RuntimeError&) {
        return 0;
    }
}

Desktop desktop() {
    return {[](const std::string& mimeType) { return hasProgramFor(shown(mimeType)); },
            [](const std::string& address) {
                const QString text = shown(address);
                return QDesktopServices::openUrl(QDir::isAbsolutePath(text) ? QUrl::fromLocalFile(text) : QUrl(text));
            }};
}

// Arranges the windows one above the other or side by side, each as large as the area allows.
void tile(QMdiArea& area, Qt::Orientation orientation) {
    QList<QMdiSubWindow*> windows = area.subWindowList();
    windows.removeIf([](const QMdiSubWindow* window) { return window->isMinimized(); });
    const bool isAbove = orientation == Qt::Vertical;
    const QRect room = area.viewport()->rect();
    const int count = static_cast<int>(windows.size());
    for (int i = 0; i < count; ++i) {
        windows[i]->showNormal();
        const int from = (isAbove ? room.height() : room.width()) * i / count;
        const int to = (isAbove ? room.height() : room.width()) * (i + 1) / count;
        windows[i]->setGeometry(isAbove ? QRect(0, from, room.width(), to - from)
                                        : QRect(from, 0, to - from, room.height()));
    }
}

// Arranges minimised windows in a row along the bottom of the area.
void arrangeIcons(QMdiArea& area) {
    const QRect room = area.viewport()->rect();
    int left = 0;
    for (QMdiSubWindow* window : area.subWindowList()) {
        if (!window->isMinimized()) continue;
        window->move(left, room.height() - window->height());
        left += window->width();
    }
}

struct CommandRow {
    Command command;
    void (*act)(mdiMain& frame, frmExplorer* explorer);
};

template <std::size_t count>
constexpr bool hasRowForEach(const CommandRow (&rows)[count]) {
    for (std::size_t i = 0; i < count; ++i)
        if (static_cast<std::size_t>(rows[i].command) != i) return false;
    return count == static_cast<std::size_t>(Command::LogCalibration) + 1; // the last command
}

template <auto method, auto... arguments>
void onFrame(mdiMain& frame, frmExplorer*) {
    (frame.*method)(arguments...);
}

template <auto method>
void onExplorer(mdiMain&, frmExplorer* explorer) {
    (explorer->*method)();
}

template <auto method>
void onTabs(mdiMain&, frmExplorer* explorer) {
    (explorer->LogTabs().*method)();
}

} // namespace

// Everything that a user asks for passes through here: one thing at a time, and nothing while a dialog is open.
void mdiMain::begin(const std::function<void()>& work) {
    if (isAtWork_ || isAnswering()) return;
    const QScopedValueRollback atWork(isAtWork_, true);
    work();
    recovery_.Tidy();
    noteOpen();
}

// Checks the rule again, because a menu may show the state of a moment ago.
void mdiMain::give(Command command) {
    if (frmAssessment* const assessment = activeAssessment(); assessment != nullptr) assessment->CommitEntries();
    noteCommand(actions_.at(command)->text().remove('&').toStdString());
    begin([&] {
        if (IsMenuEnabled(session_, command, menuState())) run(command);
    });
    EnableMenusAndButtons();
}

// One row for each command, in their order, with what it does. Its rule is in the core (app/Menus.cpp) and has been
// checked by give(). The explorer is the one in front; it is null when the rule allows the command without one.
void mdiMain::run(Command command) {
    static constexpr CommandRow kRows[] = {
        {Command::FileDownload, onFrame<&mdiMain::download, nullptr>},
        {Command::FileOpen, onFrame<&mdiMain::openFiles>},
        {Command::FileMerge, onFrame<&mdiMain::mergeIntoSelected>},
        {Command::FileClose, onFrame<&mdiMain::closeSelected>},
        {Command::FileCloseAll, onFrame<&mdiMain::closeAll>},
        {Command::FileSave, onFrame<&mdiMain::saveSelected, false>},
        {Command::FileSaveAs, onFrame<&mdiMain::saveSelected, true>},
        {Command::FilePrint, onFrame<&mdiMain::printReport>},
        {Command::FilePrintPreview, onFrame<&mdiMain::showPreview>},
        {Command::PrintDefault, onFrame<&mdiMain::printReport>},
        {Command::PrintCumulative,
         [](mdiMain& frame, frmExplorer*) { frame.printer().PrintReport(Command::PrintCumulative); }},
        {Command::PrintIntervals,
         [](mdiMain& frame, frmExplorer*) { frame.printer().PrintReport(Command::PrintIntervals); }},
        {Command::PrintCurrentView, [](mdiMain& frame, frmExplorer*) { frame.printer().PrintGraph(); }},
        {Command::FileExit, onFrame<&mdiMain::close>},
        {Command::EditUndo, onFrame<&mdiMain::exchange, Direction::Undo>},
        {Command::EditRedo, onFrame<&mdiMain::exchange, Direction::Redo>},
        {Command::EditCut, [](mdiMain& frame, frmExplorer* explorer) { frame.edits_.Copy(*explorer, true); }},
        {Command::EditCopy,
         [](mdiMain& frame, frmExplorer* explorer) {
             frame.menuState().IsTreeActive ? frame.edits_.Copy(*explorer, false) : frame.copyData(false);
         }},
        {Command::EditCopyValues, onFrame<&mdiMain::copyData, true>},
        {Command::EditPaste, [](mdiMain& frame, frmExplorer* explorer) { frame.edits_.Paste(*explorer); }},
        {Command::EditDelete, [](mdiMain& frame, frmExplorer* explorer) { frame.edits_.Delete(*explorer); }},
        {Command::EditFind, onFrame<&mdiMain::showFind>},
        {Command::EditFindNext, onFrame<&mdiMain::findNext>},
        {Command::ViewToolbar,
         [](mdiMain& frame, frmExplorer*) {
             frame.tbToolBar_->setVisible(frame.actions_.at(Command::ViewToolbar)->isChecked());
         }},
        {Command::ViewStatusBar,
         [](mdiMain& frame, frmExplorer*) {
             frame.statusBar()->setVisible(frame.actions_.at(Command::ViewStatusBar)->isChecked());
         }},
        {Command::ViewHPD, onFrame<&mdiMain::showDatabase>},
        {Command::ViewZoom, onTabs<&tabLog::ToggleZoom>},
        {Command::ViewIntervals, onTabs<&tabLog::CutIntervals>},
        {Command::ViewExposureTime, onFrame<&mdiMain::askExposureTime>},
        {Command::ToolsSettings, onFrame<&mdiMain::showSettings, Command::ToolsSettings>},
        {Command::ToolsSynchronizeClocks, onFrame<&mdiMain::synchronizeClocks>},
        {Command::ToolsDownloadHPD, [](mdiMain& frame, frmExplorer*) { frame.downloadDatabase(&frame); }},
        {Command::WindowNew, onFrame<&mdiMain::NewExplorerWindow>},
        {Command::WindowReset, onExplorer<&frmExplorer::ResetControls>},
        {Command::WindowTileHorizontally, [](mdiMain& frame, frmExplorer*) { tile(*frame.area_, Qt::Vertical); }},
        {Command::WindowTileVertically, [](mdiMain& frame, frmExplorer*) { tile(*frame.area_, Qt::Horizontal); }},
        {Command::WindowCascade, [](mdiMain& frame, frmExplorer*) { frame.area_->cascadeSubWindows(); }},
        {Command::WindowArrangeIcons, [](mdiMain& frame, frmExplorer*) { arrangeIcons(*frame.area_); }},
        {Command::HelpHelp,
         [](mdiMain& frame, frmExplorer*) { frame.openHelp(helpTopicOf(QApplication::focusWidget())); }},
        {Command::HelpTerms, [](mdiMain& frame, frmExplorer*) { frame.openHelp("AcousticTerms"); }},
        {Command::HelpHomePage,
         [](mdiMain& frame, frmExplorer*) { OpenPage(frame.session_, desktop(), frame.session_.Options.HomePage); }},
        {Command::HelpManual,
         [](mdiMain& frame, frmExplorer*) {
             GetManual(frame.session_, desktop(), dataFolder() + "manuals/" + frame.session_.brand.ManualFile);
         }},
        {Command::HelpAbout, [](mdiMain& frame, frmExplorer*) { frmAbout(frame.session_, &frame).exec(); }},
        {Command::ForceRecalc, onTabs<&tabLog::FullRecalculation>},
        {Command::Rename, onExplorer<&frmExplorer::EditSelectedNode>},
        {Command::TreeDisplayOptions, onFrame<&mdiMain::showSettings, Command::TreeDisplayOptions>},
        {Command::LogDeleteRows, [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().Exposures().DeleteRows(); }},
        {Command::LogInsertRows, [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().Exposures().InsertRows(); }},
        {Command::LogCompareHPD,
         [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().Comparison().ChooseProtector(); }},
        {Command::LogConvertWeighting, onTabs<&tabLog::ConvertWeighting>},
        {Command::LogNote, onTabs<&tabLog::ToggleNote>},
        {Command::LogLegend, onTabs<&tabLog::ToggleLegend>},
        {Command::LogEditNote, onTabs<&tabLog::EditNote>},
        {Command::LogShowTable, onTabs<&tabLog::ShowChartTable>},
        {Command::FileExportPicture, onTabs<&tabLog::ExportPicture>},
        {Command::LogDelete, onFrame<&mdiMain::deleteDisplayed>},
        {Command::LogDisplayOptions, onFrame<&mdiMain::showSettings, Command::LogDisplayOptions>},
        {Command::FileNewAssessment,
         [](mdiMain& frame, frmExplorer*) { frame.showAssessment(NewAssessment(frame.session_)); }},
        {Command::LogAddToAssessment, onFrame<&mdiMain::addToAssessment>},
        {Command::PrintCriteria,
         [](mdiMain& frame, frmExplorer*) { frame.printer().PrintReport(Command::PrintCriteria); }},
        {Command::FileExport, onFrame<&mdiMain::exportTable>},
        {Command::ViewHistory, onFrame<&mdiMain::showHistory>},
        {Command::FileRecoverDownload, onFrame<&mdiMain::recoverDownload>},
        {Command::RangeMenu, [](mdiMain&, frmExplorer*) {}}, // it opens the others
        {Command::RangeMeasure, onTabs<&tabLog::ToggleRange>},
        {Command::RangeExclude, onTabs<&tabLog::ExcludeRange>},
        {Command::RangeIncludeOnly, onTabs<&tabLog::IncludeOnlyRange>},
        {Command::RangeZoom, onTabs<&tabLog::ZoomToRange>},
        {Command::RangeNote, onTabs<&tabLog::NoteAtRange>},
        {Command::RangeCopy,
         [](mdiMain&, frmExplorer* explorer) { QtClipboard().Set(explorer->LogTabs().TimeChart().CopyFigures()); }},
        {Command::RangeLoudest, [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().MarkLoudest(); }},
        {Command::RangeQuietest,
         [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().MarkQuietest(); }},
        {Command::RangeEvents, [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().ShowEvents(); }},
        {Command::LogDistribution,
         [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().ShowDistribution(); }},
        {Command::LogCompare,
         [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().ShowComparison(); }},
        {Command::HelpTour, [](mdiMain& frame, frmExplorer*) { ShowTour(frame.session_, &frame); }},
        {Command::LogSpectrogram,
         [](mdiMain&, frmExplorer* explorer) { explorer->LogTabs().TimeChart().ShowSpectrogram(); }},
        {Command::HelpKeys, onFrame<&mdiMain::showKeys>},
        {Command::LogCalibration, onTabs<&tabLog::Calibrate>},
    };
    static_assert(hasRowForEach(kRows), "a row a command, in the order of the enumeration");
    kRows[static_cast<std::size_t>(command)].act(*this, activeExplorer());
}

// In the window of the help that is open, or a new one. A dialog has one of its own, because it lets nothing else be
// used.
void mdiMain::openHelp(std::string_view topic) {
    const std::string folder = dataFolder() + "help/";
    const auto show = [&](const std::string& path) {
        QWidget* const modal = QApplication::activeModalWidget();
        QWidget* const owner = modal != nullptr ? modal : this;
        auto* help = owner->findChild<frmHelp*>("frmHelp", Qt::FindDirectChildrenOnly);
        if (help == nullptr) help = new frmHelp(session_, folder, owner);
        help->ShowPage(path);
        help->show();
        help->raise();
        help->activateWindow();
        return true;
    };
    OpenHelpFile(session_, {{}, show}, helpPage(session_, folder, std::string(topic)));
}

frmPrint mdiMain::printer() {
    return {session_, *activeExplorer(), this};
}

void mdiMain::exportTable() {
    frmExplorer& explorer = *activeExplorer();
    const ExplorerState& state = explorer.State();
    ExportSubject subject{state.SelectedKey, state.View.Key, state.LogInView(session_), {}};
    if (subject.InView != nullptr) subject.Rows = explorer.LogTabs().RowsOfLogInView();
    frmExport(session_, std::move(subject), this).exec();
}

void mdiMain::printReport() {
    const frmAssessment* const assessment = activeAssessment();
    if (assessment == nullptr) return printer().PrintReport(Command::PrintDefault);
    Printers printers;
    PrintProgress progress(session_, this);
    printDocument(
        session_, printers, this, false, [&](const PageMetrics& paper) { return assessment->Report(paper); },
        progress.function());
}

void mdiMain::showPreview() {
    const frmAssessment* const assessment = activeAssessment();
    if (assessment == nullptr) return printer().ShowPreview();
    Printers printers;
    frmPreview(session_,
               {{Text::AssessmentReportTitle, [&](const PageMetrics& paper) { return assessment->Report(paper); }}},
               printers, this)
        .exec();
}

void mdiMain::deleteDisplayed() {
    frmExplorer& explorer = *activeExplorer();
    explorer.SelectNode(explorer.State().View.Key);
    edits_.Delete(explorer);
}

void mdiMain::closeAll() {
    commitCells();
    CloseFile(session_, nullptr, saveName());
}

void mdiMain::download(clsFile* file) {
    DownloadDialogs dialogs(session_, steadyClock_, this);
    KeptTranscript transcript(session_);
    if (DownloadData({session_, *session_.comm, dialogs, steadyClock_, transcript.Sink(dialogs.Transcript())}, file))
        return recovery_.Look(); // what was downloaded may be gone from the instrument soon
    dialogs.OfferTranscript();
    if (transcript.IsKept()) Tell(session_.LoadText(Text::TranscriptKept));
}

void mdiMain::recoverDownload() {
    const QString name = QFileDialog::getOpenFileName(this, loadText(session_, Text::RecoverDownloadTitle),
                                                      shown(transcriptFolder(session_)),
                                                      fileFilter(session_.LoadText(Text::TranscriptFilter)));
    if (!name.isEmpty() && RecoverDownload(session_, name.toStdString())) recovery_.Look();
}

void mdiMain::mergeIntoSelected() {
    if (clsFile* const file = resolve(session_, menuState().SelectedKey).file; file != nullptr) download(file);
}

void mdiMain::synchronizeClocks() {
    DownloadDialogs dialogs(session_, steadyClock_, this);
    clsInsData instrument(session_);
    if (!SynchronizeClock({session_, *session_.comm, dialogs, steadyClock_, dialogs.Transcript()}, instrument))
        dialogs.OfferTranscript();
}

void mdiMain::openFiles() {
    const QStringList names = QFileDialog::getOpenFileNames(
        this, loadText(session_, Text::OpenDataFile), shown(session_.Options.DefaultDataDirectory),
        fileFilter(session_.LoadText(Text::OpenFilter) + "|" + session_.LoadText(Text::AssessmentFilter)));
    if (!names.isEmpty()) openNamed(names, OpenSource::Dialog);
}

void mdiMain::openNamed(const QStringList& paths, OpenSource source) {
    std::vector<std::string> names;
    for (const QString& path : paths)
        names.push_back(path.toStdString());
    OpenAssessments(names, source);
    std::erase_if(names, isNamedAsAssessment);
    if (names.empty()) return;
    if (explorers().empty()) NewExplorerWindow(); // what is opened is to be seen
    OpenFiles(session_, names, source);
}

void mdiMain::OpenAssessments(const std::vector<std::string>& names, OpenSource source) {
    for (const std::string& name : names) {
        if (!isNamedAsAssessment(name)) continue;
        const std::vector<frmAssessment*> open = assessments();
        const auto there = std::ranges::find_if(
            open, [&](const frmAssessment* window) { return isSameFile(window->Document().Path(), name); });
        if (there != open.end()) {
            area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>((*there)->parentWidget()));
        } else if (auto document = OpenAssessment(session_, name, source); document) {
            showAssessment(std::move(*document));
        }
    }
    showRecentFiles();
}

frmAssessment* mdiMain::showAssessment(AssessmentDocument document) {
    auto* const assessment = new frmAssessment(session_, std::move(document), [this](const std::string& proposal) {
        return askSaveName(proposal, Text::AssessmentSaveFilter, "kxa");
    });
    connect(assessment, &frmAssessment::StateChanged, this, [this] { EnableMenusAndButtons(); });
    connect(assessment, &frmAssessment::WorkAsked, this, &mdiMain::begin);
    assessment_ = assessment;
    showChild(*assessment);
    assessment->Refresh();
    return assessment;
}

// To the assessment that was in front last, or a new one.
void mdiMain::addToAssessment() {
    frmExplorer& explorer = *activeExplorer();
    const std::string otherSelection =
        explorer.State().ZoomRange.otherSelectionLine(*explorer.State().OpenedLog(session_));
    if (!otherSelection.empty()) {
        session_.ShowMessage(otherSelection + "\r\n\r\n" + session_.LoadText(Text::EndZoomFirst), kIconExclamation);
        return;
    }
    const auto sample = sampleOfNode(session_, explorer.State().View.Key, explorer.LogTabs().RowsToTake());
    if (!sample) return;
    if (assessment_ == nullptr) showAssessment(NewAssessment(session_));
    assessment_->AddSample(*sample);
    const std::string name = assessmentName(session_, assessment_->Document());
    Tell(ReplaceText(session_.LoadText(Text::AddedToAssessment), "^", name));
}

void mdiMain::saveSelected(bool bSaveAs) {
    commitCells();
    if (frmAssessment* const assessment = activeAssessment(); assessment != nullptr) return assessment->Save(bSaveAs);
    clsFile* const file = resolve(session_, menuState().SelectedKey).file;
    if (file == nullptr) return;
    SaveFile(session_, *file, bSaveAs, saveName());
}

void mdiMain::closeSelected() {
    commitCells();
    if (const frmAssessment* const assessment = activeAssessment(); assessment != nullptr) {
        assessment->parentWidget()->close();
        return;
    }
    clsFile* const file = resolve(session_, menuState().SelectedKey).file;
    if (file == nullptr) return;
    CloseFile(session_, file, saveName());
}

AskSaveName mdiMain::saveName() {
    return [this](const std::string& proposal) { return askSaveName(proposal, Text::SaveFilter, "xml"); };
}

std::optional<std::string> mdiMain::askSaveName(const std::string& proposal, Text::Id filter, const char* suffix) {
    const QString name = QFileInfo(shown(proposal)).isAbsolute()
                             ? shown(proposal)
                             : QDir(shown(session_.Options.DefaultDataDirectory)).filePath(shown(proposal));
    return kestrane::askSaveName(session_, this,
                                 {loadPlainText(session_, Text::CommandSave), name,
                                  fileFilter(session_.LoadText(filter)), QLatin1String(suffix)});
}

void mdiMain::askExposureTime() {
    if (clsLog* log = resolve(session_, menuState().SelectedKey).log; log != nullptr)
        frmExpTime::getExpTime(session_, log->objLogOptions.ExposureTime, measuredHours(*log), *log, this);
}

void mdiMain::showHistory() {
    if (const clsFile* file = resolve(session_, menuState().SelectedKey).file; file != nullptr)
        ShowHistory(*file, this);
}

void mdiMain::showDatabase() {
    frmHPD::ShowMaintenanceScreen(
        session_, [this](QWidget* parent) { return downloadDatabase(parent); }, this);
    followProtectors();
}

void mdiMain::followProtectors() {
    for (frmExplorer* explorer : explorers())
        explorer->LogTabs().ShowControls();
    for (frmAssessment* assessment : assessments())
        assessment->FollowProtectors();
}

bool mdiMain::downloadDatabase(QWidget* parent) {
    HPDProgressDialog progress(session_, parent);
    const bool isReplaced = DownloadHPD(session_, progress, false);
    followProtectors();
    return isReplaced;
}

void mdiMain::showSettings(Command command) {
    frmExplorer* const explorer = activeExplorer();
    std::optional<SettingsChanges> changes;
    if (command == Command::ToolsSettings) {
        changes = frmOptions::ShowFromToolsMenu(session_, this);
    } else if (command == Command::TreeDisplayOptions) {
        changes = frmOptions::ShowFromTreeViewRightClick(session_, session_.Options, popUpAt_, this);
    } else if (clsLog* log = explorer->State().OpenedLog(session_); log != nullptr) {
        const bool isOfRows = tabRow(explorer->State().View.Tab).Figures == TabFigures::OfRows;
        changes = frmOptions::ShowFromLogTabCtrlRightClick(session_, *log, isOfRows ? kInterval : kCumulative, popUpAt_,
                                                           this);
    }
    if (changes) applySettings(*changes, explorer);
}

void mdiMain::applySettings(const SettingsChanges& changes, frmExplorer* opener) {
    if (changes.ShowLook) showAppearance(readAppearance(session_.settings));
    if (changes.RebuildTrees) RebuildExplorerTrees();
    for (frmExplorer* explorer : explorers())
        explorer->LogTabs().FollowSettings(changes.ResetTabs || (changes.RedrawTab && explorer == opener));
    for (frmAssessment* assessment : assessments())
        assessment->FollowProtectors();
    EnableMenusAndButtons();
}

void mdiMain::copyData(bool valuesOnly) {
    const BusyFrame busy(*this); // a table may be long
    QtClipboard().Set(activeExplorer()->LogTabs().CopyData(valuesOnly));
}

void mdiMain::showFind() {
    if (find_ == nullptr)
        find_ = new frmFind(
            session_, [this] { give(Command::EditFindNext); }, this);
    find_->ShowFind(QRect(activeExplorer()->mapToGlobal(QPoint()), activeExplorer()->size()));
}

void mdiMain::findNext() {
    if (find_ == nullptr || find_->Entry().What.empty()) return showFind();
    frmExplorer* const explorer = activeExplorer();
    if (const auto key = search_.Find(buildTree(session_), find_->Entry())) return explorer->SelectNode(*key);
    const bool isFromDialog = find_->isActiveWindow();
    session_.ShowMessage(session_.LoadText(Text::CannotFind), kIconInformation);
    if (isFromDialog) find_->activateWindow(); // the desktop gives the focus to the frame
}

} // namespace kestrane
