// The window of an exposure assessment: its forms and the tree of its groups on the left, what the chosen group comes
// to on the right. Every change goes through the core as an edit of the document, and all is shown anew behind it.
#pragma once

#include "app/Assessments.h"
#include "assessment/AssessmentShown.h"
#include "model/Session.h"
#include "reports/PagedDocument.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace kestrane {

class FieldsForm;
class ResultView;
class tvwAssessment;

class frmAssessment : public QWidget {
    Q_OBJECT

public:
    frmAssessment(Session& session, AssessmentDocument document, AskSaveName askName);

    const AssessmentDocument& Document() const { return document_; }

    const std::vector<GroupResult>& Results() const { return results_; }

    std::unique_ptr<PagedDocument> Report(const PageMetrics& paper) const;

    void Save(bool bSaveAs);
    bool MayClose(); // asks to save changes, among them what is being typed
    void Exchange(Direction direction);
    void AddSample(const LogSample& sample); // to what is selected
    void CommitEntries();                    // what is being typed counts
    void LookForOtherPrograms();             // that have changed its file
    void FollowProtectors();                 // which have changed, or how they are reckoned

    // Reads the data files that are needed, and computes and shows everything.
    void Refresh();

    void ShowResult(); // as it was computed, in the colours of the moment

signals:
    void StateChanged();                               // the frame's menus follow
    void WorkAsked(const std::function<void()>& work); // done when the frame is free for it

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* buttons();
    QPushButton* addButton(QWidget& bar, Text::Id text, const char* name, void (frmAssessment::*act)());
    void apply(std::optional<AssessmentEdit> edit, const std::string& refused, Text::Id why = Text::EntryDoesNotFit);
    void enter(const AssessmentPlace& place, AssessmentColumn column, const std::string& entry);
    void later(const std::function<void()>& work);
    void readDataFiles();
    void showAll();
    void showSelected();
    std::vector<std::string> protectors() const;
    std::size_t group() const; // the one that is selected, or the first

    bool hasGroup() const { return !document_.Now().Groups.empty(); }

    void addGroup();
    void addTask();
    void addDay();
    void remove();
    void takeFile();
    void readAgain();

    Session& session_;
    AssessmentDocument document_;
    const AskSaveName askName_;
    Measurements measured_;
    std::vector<GroupResult> results_;
    FieldsForm *documentForm_, *groupForm_;
    tvwAssessment* tree_;
    ResultView* result_;
    QPushButton *cmdTask_, *cmdDay_, *cmdRemove_, *cmdTakeFile_;
};

} // namespace kestrane
