// The zoom panel of the log view: the whole log, or the rows from one interval to another. It shows and changes the
// choice in the window's Zoom; its owner then shows that range.
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

    void ShowLog(const clsLog& opened); // another log
    void ShowChoice();                  // the choice that the Zoom has

signals:
    void ApplyZoom();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    Zoom& zoom_;
    IntervalListModel intervals_;
    QButtonGroup* optZoom_;
    std::array<QComboBox*, 2> lstZoom_{}; // from, to
    std::array<QWidget*, 2> fields_{};    // each list with its label
};

} // namespace kestrane
