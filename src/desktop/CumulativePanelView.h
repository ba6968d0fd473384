// The "Cumultv (Data)" tab: the figures of a log in the core's words, and the three fields that recalculate it. It
// checks nothing itself: the core takes the entries.
#pragma once

#include "explorer/CalculationEntries.h"
#include "model/Session.h"
#include "model/clsOptions.h"
#include "resources/TextNames.h"
#include "views/CumulativePanel.h"

#include <QScrollArea>

#include <map>

class QComboBox;
class QGridLayout;
class QGroupBox;
class QLineEdit;
class QPushButton;

namespace kestrane {

class CumulativePanelView : public QScrollArea {
    Q_OBJECT

public:
    explicit CumulativePanelView(const Session& session, QWidget* parent = nullptr);

    // Drops what is typed into the fields for another log than this one; for any log when it is null.
    void Follow(const clsLog* log);

    // Shows the figures at a band in the form of the panel, and the fields as the log has them. What is typed into them
    // stays while the log has the same values as before.
    void ShowLog(const clsLog& log, int band, PanelForm panel);

    CalculationEntries Entries() const;
    void FocusField(CalculationField field);

signals:
    void ApplyChanges();
    void RevertChanges();

private:
    QGroupBox* figuresBox(PanelSection section, Text::Id title);
    QGroupBox* calculationBox();
    void fillSection(PanelSection section, const std::vector<PanelRow>& rows, PanelForm panel, bool hasChannelB);
    void showEntries(const clsLog& log);
    void leaveUserCal();
    void compareEntries();

    const Session& session_;
    std::map<PanelSection, QGroupBox*> boxes_;
    QComboBox* cboCriterion_;
    QComboBox* cboExchRate_;
    QLineEdit* txtUserCal_;
    QPushButton* cmdApplyChanges_;
    QPushButton* cmdRevertChanges_;
    CalculationEntries stored_;      // as the log has them
    const clsLog* filled_ = nullptr; // the log that the fields are about; never dereferenced
};

} // namespace kestrane
