// Asks what is to be downloaded: logs of an instrument from a list, or a number for a download. What can be chosen is
// decided in app/AcquireDialog.
#pragma once

#include "app/AcquireDialog.h"
#include "model/Session.h"

#include <QDialog>

#include <optional>

class QCheckBox;
class QListWidget;
class QPushButton;

namespace kestrane {

class frmAcquire : public QDialog {
public:
    // Each function shows its dialog and returns when it is closed; nothing when the user cancels.
    static std::optional<AcquireChoice> ChooseLogs(const Session& session, const AcquireList& list, QWidget* parent);
    static std::optional<int> setExchRate(const Session& session, int chosen, QWidget* parent);  // 3, 4 or 5 dB
    static std::optional<int> setCriterion(const Session& session, int chosen, QWidget* parent); // 75, 80, 85 or 90 dB

private:
    frmAcquire(const Session& session, const AcquireList& list, QWidget* parent);

    QWidget* instrument();
    void fillList();
    void takeSelection();
    void selectAll(bool areSelected);
    void showState();

    const Session& session_;
    AcquireDialog choosing_;
    QListWidget* lstLocs_;
    QCheckBox* chkSelectAll_;
    QCheckBox* chkOctaves_;
    QPushButton* cmdOK_ = nullptr;
};

} // namespace kestrane
