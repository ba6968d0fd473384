// The tree of an assessment: groups with their tasks, logs and days, in columns that can be typed in. It shows the rows
// of the core and reports what the user enters, removes or drops.
#pragma once

#include "assessment/AssessmentShown.h"
#include "model/Session.h"

#include <QTreeWidget>

#include <optional>
#include <vector>

namespace kestrane {

class tvwAssessment : public QTreeWidget {
    Q_OBJECT

public:
    explicit tvwAssessment(const Session& session);

    // Shows the rows of an assessment, which must outlive them. What was folded stays folded.
    void ShowRows(const std::vector<AssessmentRow>& rows, const Assessment& assessment);

    std::optional<AssessmentPlace> Selected() const;
    void Select(const AssessmentPlace& place);

    // Opens the editor of a cell with an entry that was refused, of which a part is marked. It is only reported again
    // when the user has changed it.
    void EnterAgain(const AssessmentPlace& place, AssessmentColumn column, const QString& entry, const QString& part);

    // For the delegate of the cells.
    bool IsEntered(const QModelIndex& index) const;
    QString EnteredText(const QModelIndex& index) const;
    void Enter(const QModelIndex& index, const QString& text);

signals:
    void SelectionChanged();
    void Entered(const AssessmentPlace& place, AssessmentColumn column, const std::string& text);
    void RemoveAsked();
    void NodeDropped(const std::string& key, std::optional<AssessmentPlace> place); // a node of an explorer's tree

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QList<QTreeWidgetItem*> itemsOf(const std::vector<AssessmentRow>& rows);
    std::optional<AssessmentPlace> placeOf(const QTreeWidgetItem* item) const;

    const Session& session_;
    const Assessment* assessment_ = nullptr;
    std::vector<AssessmentPlace> places_; // by the number that an item holds
};

} // namespace kestrane
