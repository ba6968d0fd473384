// The bar above the pages of the log view: the choices of band or parameter, axis, channel, panel and interval, as far
// as the core offers them on the tab in front; beside them what single pages bring along. Without anything to offer it
// is hidden.
#pragma once

#include "dialogs/IntervalListModel.h"
#include "explorer/ExplorerState.h"
#include "model/Session.h"
#include "resources/TextNames.h"

#include <QWidget>

#include <vector>

class QButtonGroup;
class QComboBox;

namespace kestrane {

class ChoicesBar : public QWidget {
    Q_OBJECT

public:
    ChoicesBar(const Session& session, ExplorerState& state);

    void Add(QWidget& panel); // behind those that are there; whoever adds it shows and hides it

    void ShowLog(const clsLog& inView);     // its intervals, of another log or zoom
    void ShowChoices(const clsLog& inView); // which there are on the tab in front, and what is chosen

signals:
    void Chosen(); // the tab in front may have to be drawn anew

private:
    QWidget& buttonsOf(const char* frame, Text::Id caption, QButtonGroup*& group,
                       std::initializer_list<Text::Id> texts);
    void makePanels();
    void connectChoices();
    void fillDisplayBy(const clsLog& inView);

    const Session& session_;
    ExplorerState& state_;
    bool isSetting_ = false; // code sets the controls: their handlers do nothing
    std::vector<QWidget*> panels_;
    IntervalListModel intervals_;
    QWidget* fraInterval_;
    QComboBox* lstInterval_;
    QWidget* fraDisplayBy_;
    QButtonGroup* optDisplayBy_;
    QComboBox* cboDisplayBy_;
    QWidget* fraAxis_;
    QButtonGroup* optAxis_;
    QWidget* fraTable_;
    QButtonGroup* optChannelX_;
    QWidget* fraDfltCum_;
    QButtonGroup* optCumPanels_;
};

} // namespace kestrane
