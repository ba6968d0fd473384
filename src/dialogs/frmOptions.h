// The settings dialog: three pages that edit a working copy. What may be chosen, and what confirming does, is decided
// in app/SettingsDialog; the frame carries out the returned changes.
#pragma once

#include "app/SettingsDialog.h"
#include "resources/TextNames.h"

#include <QDialog>
#include <QPoint>

class QTabWidget;

namespace kestrane {

class OptionsLogsPage;
class OptionsPage;

class frmOptions : public QDialog {
public:
    // Each function shows the dialog and returns when it is closed; nothing when the user cancels. Points are in screen
    // coordinates.
    static std::optional<SettingsChanges> ShowFromToolsMenu(Session& session, QWidget* parent);
    static std::optional<SettingsChanges> ShowFromTreeViewRightClick(Session& session, clsOptions& options, QPoint at,
                                                                     QWidget* parent);
    static std::optional<SettingsChanges> ShowFromLogTabCtrlRightClick(Session& session, clsLog& log, FigureKind kind,
                                                                       QPoint at, QWidget* parent);

    void accept() override;

private:
    frmOptions(const SettingsDialog& settings, QWidget* parent);

    std::optional<SettingsChanges> run();
    std::optional<SettingsChanges> showAt(QPoint at);
    void addPage(OptionsPage* page, Text::Id title, SettingsMode mode);

    SettingsDialog settings_;
    QTabWidget* tabSettings_;
    OptionsLogsPage* logs_;
    std::vector<OptionsPage*> pages_;
    std::optional<SettingsChanges> changes_;
};

} // namespace kestrane
