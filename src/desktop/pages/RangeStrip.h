// The strip under the time chart: the figures of the range that is marked there, what they are asked for, and a button
// for each command of the range. It shows what the core has decided. Where the window is too low for chart and strip,
// the strip scrolls.
#pragma once

#include "model/Session.h"
#include "views/RangeTable.h"

#include <QScrollArea>

#include <map>
#include <string>
#include <vector>

class QAction;
class QComboBox;
class QDoubleSpinBox;
class QLabel;

namespace kestrane {

class FlowLayout;

class RangeStrip : public QScrollArea {
    Q_OBJECT

public:
    explicit RangeStrip(const Session& session, QWidget* parent = nullptr);

    void ShowFigures(const std::vector<RangeFigure>& figures); // none: says how a range is marked
    void AddButtons(const std::vector<QAction*>& actions);     // the frame's own actions, enabled as its menus are

    double Percent() const; // 0..100, of the level that is exceeded for so much of the time

    // The length of the window that is looked for, in minutes; 0 when what was typed is no such length.
    double WindowMinutes() const;

    QSize sizeHint() const override;        // the height of its content at the width that it has
    QSize minimumSizeHint() const override; // a line of its content

signals:
    void PercentChosen();

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const Session& session_;
    QLabel* hint_;
    FlowLayout* figures_;
    FlowLayout* buttons_;
    QDoubleSpinBox* percent_;
    QComboBox* window_;
    std::map<std::string, QLabel*> labels_; // by the name of the figure
};

} // namespace kestrane
