// The bar above the pages of the log view: the choices of band or parameter, axis, channel, panel and interval, as far
// as the core offers them for the tab in front, and further controls of single pages. It is hidden when it has nothing
// to offer.
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

    void Add(QWidget& panel); // behind the others; whoever adds it also shows and hides it

    void ShowLog(const clsLog& inView);     // its intervals, after another log or zoom has been chosen
    void ShowChoices(const clsLog& inView); // the choices that the tab in front offers, and what is chosen

signals:
    void Chosen(); // the tab in front may have to be drawn again

private:
    struct Choice {
        int Id; // of the button in its group
        Text::Id Words;
    };

    QWidget& buttonsOf(const char* frame, Text::Id caption, QButtonGroup*& group,
                       std::initializer_list<Choice> choices);
    void makePanels();
    void connectChoices();
    void fillDisplayBy(const clsLog& inView);

    const Session& session_;
    ExplorerState& state_;
    bool isSetting_ = false; // code is setting the controls, so their handlers do nothing
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
