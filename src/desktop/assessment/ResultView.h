// The result of a group of an assessment: LEX,8h on its scale, the bars of the tasks, figures, limits and warnings, all
// as the core decided.
#pragma once

#include "assessment/AssessmentShown.h"
#include "dialogs/DrawnFigure.h"
#include "model/Session.h"

#include <QScrollArea>

#include <vector>

class QLabel;

namespace kestrane {

// LEX,8h with its band on a scale of levels, and the values that it is compared with.
class ScaleView : public DrawnFigure {
public:
    explicit ScaleView(const Session& session);

    void Show(ExposureScale scale);
    QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    ExposureScale scale_;
};

// A bar for each task, as long as its share of the day.
class TaskBarsView : public DrawnFigure {
public:
    explicit TaskBarsView(const Session& session);

    void Show(std::vector<TaskBar> bars);
    QSize sizeHint() const override;

protected:
    void draw(QPainter& painter) override;

private:
    int rowHeight() const;

    const Session& session_;
    std::vector<TaskBar> bars_;
};

class ResultView : public QScrollArea {
public:
    explicit ResultView(const Session& session);

    void Show(const GroupResult* group); // null when there is no group

private:
    QLabel* addLabel(const char* name, QWidget& column);

    const Session& session_;
    QWidget* column_;
    QLabel* lblGroup_;
    ScaleView* scale_;
    QLabel* lblTasks_;
    TaskBarsView* bars_;
    QLabel *lblFigures_, *lblActions_, *lblWarnings_;
};

} // namespace kestrane
