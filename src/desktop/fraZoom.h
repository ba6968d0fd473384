// The zoom panel of the log view: the whole log, or the rows from one interval to another. Shows and changes what the
// window's Zoom has chosen; whoever owns it brings that on view.
#pragma once

#include "dialogs/IntervalListModel.h"
#include "model/Session.h"
#include "views/Zoom.h"

#include <QWidget>

#include <array>

class QButtonGroup;
class QComboBox;

namespace kestrane {

class fraZoom : public QWidget {
    Q_OBJECT

public:
    fraZoom(const Session& session, Zoom& zoom, QWidget* parent = nullptr);

    void ShowLog(const clsLog& opened); // another one
    void ShowChoice();                  // as the Zoom has it

signals:
    void ApplyZoom();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Zoom& zoom_;
    IntervalListModel intervals_;
    QButtonGroup* optZoom_;
    std::array<QComboBox*, 2> lstZoom_{}; // from, to
    std::array<QWidget*, 2> fields_{};    // each with its label
};

} // namespace kestrane
