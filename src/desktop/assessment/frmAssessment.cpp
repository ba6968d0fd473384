#include "desktop/assessment/frmAssessment.h"

#include "desktop/FlowLayout.h"
#include "desktop/assessment/FieldsForm.h"
#include "desktop/assessment/ResultView.h"
#include "desktop/assessment/tvwAssessment.h"
#include "dialogs/HandySplitter.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"
#include "model/BusyFrame.h"
#include "protection/ProtectorDatabase.h"
#include "reports/AssessmentReport.h"
#include "reports/ReportLanguage.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

namespace kestrane {

namespace {

constexpr std::size_t kManyFiles = 3; // so many are read under a dialog with a Cancel button
constexpr int kLeftWidth = 560;       // pixels
constexpr int kRightWidth = 440;
constexpr int kGap = 6;

QGroupBox* boxed(const QString& title, QWidget& content) {
    auto* const box = new QGroupBox(title);
    auto* const layout = new QVBoxLayout(box);
    layout->setContentsMargins(layout->contentsMargins() / 2);
    layout->addWidget(&content);
    return box;
}

// Scrolls up and down where the window is low, and is never narrower than its content.
class ScrolledColumn : public QScrollArea {
public:
    explicit ScrolledColumn(QWidget* content) {
        setFrameShape(NoFrame);
        setFocusPolicy(Qt::NoFocus); // its controls have it
        setWidgetResizable(true);
        setWidget(content);
    }

    QSize minimumSizeHint() const override {
        const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
        return {width, QScrollArea::minimumSizeHint().height()};
    }
};

} // namespace

frmAssessment::frmAssessment(Session& session, AssessmentDocument document, AskSaveName askName) :
    session_(session), document_(std::move(document)), askName_(std::move(askName)) {
    setObjectName("frmAssessment");
    setWindowIcon(iconOf("application"));
    documentForm_ = new FieldsForm(session, "documentField", loadText(session, Text::AssessmentForm));
    groupForm_ = new FieldsForm(session, "groupField", loadText(session, Text::GroupForm));
    // Tab goes through the controls in the order in which they get their places, so they are there before.
    documentForm_->Show(documentFields(document_.Now()));
    groupForm_->Show(groupFields(session, withGroup(session, document_.Now()).Next, 0, {}));
    tree_ = new tvwAssessment(session);
    result_ = new ResultView(session);
    auto* const left = new QWidget;
    auto* const column = new QVBoxLayout(left);
    column->setContentsMargins({});
    column->addWidget(boxed(loadText(session, Text::AssessmentForm), *documentForm_));
    column->addWidget(buttons());
    column->addWidget(tree_, 1);
    column->addWidget(boxed(loadText(session, Text::GroupForm), *groupForm_));
    auto* const splitter = new HandySplitter;
    splitter->addWidget(new ScrolledColumn(left));
    splitter->addWidget(result_);
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kLeftWidth, kRightWidth});
    splitter->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(layout->contentsMargins() / 2);
    layout->addWidget(splitter);

    // Deferred: the rows and fields are made anew, which must wait until their editor has closed, or the drag has
    // ended.
    connect(tree_, &tvwAssessment::Entered, this,
            [this](const AssessmentPlace& place, AssessmentColumn cell, const std::string& text) {
                later([=, this] { enter(place, cell, text); });
            });
    connect(tree_, &tvwAssessment::RemoveAsked, this, [this] { later([this] { remove(); }); });
    connect(tree_, &tvwAssessment::SelectionChanged, this, &frmAssessment::showSelected);
    connect(tree_, &tvwAssessment::NodeDropped, this,
            [this](const std::string& key, const std::optional<AssessmentPlace>& place) {
                later([=, this] {
                    if (place) tree_->Select(*place);
                    if (const auto sample = sampleOfNode(session_, key); sample) AddSample(*sample);
                });
            });
    connect(documentForm_, &FieldsForm::Entered, this, [this](int field, const QString& text) {
        later([=, this] {
            apply(withDocumentField(document_.Now(), static_cast<std::size_t>(field), text.toStdString()), {});
        });
    });
    connect(groupForm_, &FieldsForm::Entered, this, [this](int field, const QString& text) {
        later([=, this] {
            if (hasGroup())
                apply(withGroupField(session_, document_.Now(), group(), static_cast<std::size_t>(field),
                                     text.toStdString()),
                      text.toStdString(), refusalOf(static_cast<std::size_t>(field)));
        });
    });
    showAll();
}

QPushButton* frmAssessment::addButton(QWidget& bar, Text::Id text, const char* name, void (frmAssessment::*act)()) {
    QPushButton* const button = pushButton(session_, text, name, loadPlainText(session_, text));
    connect(button, &QPushButton::clicked, this, [this, act] { later([this, act] { (this->*act)(); }); });
    bar.layout()->addWidget(button);
    return button;
}

QWidget* frmAssessment::buttons() {
    auto* const bar = new QWidget;
    auto* const row = new FlowLayout(kGap, kGap);
    bar->setLayout(row);
    row->setContentsMargins({});
    addButton(*bar, Text::ButtonAddGroup, "cmdGroup", &frmAssessment::addGroup);
    cmdTask_ = addButton(*bar, Text::ButtonAddTask, "cmdTask", &frmAssessment::addTask);
    cmdDay_ = addButton(*bar, Text::ButtonAddDay, "cmdDay", &frmAssessment::addDay);
    cmdRemove_ = addButton(*bar, Text::ButtonRemove, "cmdRemove", &frmAssessment::remove);
    cmdTakeFile_ = addButton(*bar, Text::ButtonTakeFile, "cmdTakeFile", &frmAssessment::takeFile);
    addButton(*bar, Text::AskReadAgain, "cmdReadAgain", &frmAssessment::readAgain);
    return bar;
}

void frmAssessment::later(const std::function<void()>& work) {
    QMetaObject::invokeMethod(
        this, [this, work] { emit WorkAsked(work); }, Qt::QueuedConnection);
}

void frmAssessment::apply(std::optional<AssessmentEdit> edit, const std::string& refused, Text::Id why) {
    if (!edit) {
        session_.ShowMessage(ReplaceText(session_.LoadText(why), "^", refused), kIconInformation);
        return showAll(); // the cell or field shows its value again
    }
    document_.Change(edit->Title, std::move(edit->Next));
    Refresh();
    tree_->Select(edit->Place);
}

// A refused entry is offered again as it was typed, since there may be a whole list in it.
void frmAssessment::enter(const AssessmentPlace& place, AssessmentColumn column, const std::string& entry) {
    const auto edit = withEntry(session_, document_.Now(), place, column, entry);
    const std::string refused = edit ? std::string() : refusedPart(session_, place, column, entry);
    apply(edit, refused);
    if (!edit) tree_->EnterAgain(place, column, shown(entry), shown(refused));
}

void frmAssessment::Refresh() {
    readDataFiles();
    results_ = assess(session_, document_.Now(), document_.Path(), measured_);
    showAll();
    emit StateChanged();
}

// While many files are read, a dialog shows how many there are still to come, and can be cancelled.
void frmAssessment::readDataFiles() {
    const std::size_t files = measured_.unread(document_.Now(), document_.Path()).size();
    if (files < kManyFiles) {
        std::optional<BusyFrame> busy;
        if (files > 0) busy.emplace(*session_.frame);
        return ReadDataFiles(session_, document_, measured_, [](std::size_t, std::size_t) { return true; });
    }
    QProgressDialog progress(QString(), loadPlainText(session_, Text::Cancel), 0, static_cast<int>(files), this);
    progress.setObjectName("frmReading");
    progress.setWindowTitle(windowTitle());
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(0);
    ReadDataFiles(session_, document_, measured_, [&](std::size_t read, std::size_t all) {
        const std::string words = ReplaceText(session_.LoadText(Text::ReadingDataFiles), "^", std::to_string(read + 1));
        progress.setLabelText(shown(ReplaceText(words, "*", std::to_string(all))));
        progress.setValue(static_cast<int>(read));
        return !progress.wasCanceled();
    });
}

void frmAssessment::showAll() {
    if (results_.size() != document_.Now().Groups.size())
        results_ = assess(session_, document_.Now(), document_.Path(), measured_);
    setWindowTitle(
        shown(ReplaceText(session_.LoadText(Text::AssessmentCaption), "^", assessmentTitle(session_, document_)) +
              (document_.IsChanged() ? "*" : "")));
    documentForm_->Show(documentFields(document_.Now()));
    tree_->ShowRows(assessmentRows(session_, document_.Now(), document_.Path(), measured_, results_), document_.Now());
    showSelected();
}

void frmAssessment::showSelected() {
    const std::optional<AssessmentPlace> place = tree_->Selected();
    groupForm_->parentWidget()->setEnabled(hasGroup());
    cmdTask_->setEnabled(hasGroup() && document_.Now().Groups[group()].Strategy == Strategy::Task);
    cmdDay_->setEnabled(hasGroup());
    cmdRemove_->setEnabled(place.has_value());
    cmdTakeFile_->setEnabled(place && place->Kind == AssessmentKind::Rows);
    ShowResult();
    if (hasGroup()) groupForm_->Show(groupFields(session_, document_.Now(), group(), protectors()));
}

void frmAssessment::ShowResult() {
    result_->Show(group() < results_.size() ? &results_[group()] : nullptr);
}

std::vector<std::string> frmAssessment::protectors() const {
    std::vector<std::string> names;
    if (session_.protectors == nullptr) return names;
    for (const clsHP& hp : session_.protectors->Protectors)
        names.push_back(hp.Name);
    return names;
}

std::size_t frmAssessment::group() const {
    const std::optional<AssessmentPlace> place = tree_->Selected();
    return place ? place->Group : 0;
}

void frmAssessment::addGroup() {
    apply(withGroup(session_, document_.Now()), {});
}

void frmAssessment::addTask() {
    if (hasGroup()) apply(withTask(session_, document_.Now(), group()), {});
}

void frmAssessment::addDay() {
    if (hasGroup()) apply(withDay(session_, document_.Now(), group()), {});
}

void frmAssessment::remove() {
    if (const auto place = tree_->Selected(); place) apply(without(document_.Now(), *place), {});
}

void frmAssessment::takeFile() {
    const auto place = tree_->Selected();
    if (!place || place->Kind != AssessmentKind::Rows) return;
    measured_.forget();
    apply(withFileAsItIs(document_.Now(), *place), {});
}

void frmAssessment::readAgain() {
    measured_.forget();
    Refresh();
}

void frmAssessment::AddSample(const LogSample& sample) {
    apply(withRows(session_, document_.Now(), tree_->Selected(), sample.Rows, sample.Name), {});
}

// An editor hands over its entry when it loses the focus. Edits are deferred, so those that wait are made at once.
void frmAssessment::CommitEntries() {
    QWidget* const focused = QApplication::focusWidget();
    if (qobject_cast<QLineEdit*>(focused) == nullptr || !isAncestorOf(focused)) return;
    focused->clearFocus();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

void frmAssessment::FollowProtectors() {
    measured_.forgetProtectors();
    Refresh();
}

void frmAssessment::Exchange(Direction direction) {
    if (!document_.CanExchange(direction)) return;
    document_.Exchange(direction);
    Refresh();
}

std::unique_ptr<PagedDocument> frmAssessment::Report(const PageMetrics& paper) const {
    return inReportLanguage(session_, [&] {
        const auto results = assess(session_, document_.Now(), document_.Path(), measured_); // the results hold words
        const AssessmentSubject subject{session_, document_.Now(), document_.Path(), measured_, results};
        return std::make_unique<AssessmentReport>(subject, paper);
    });
}

void frmAssessment::Save(bool bSaveAs) {
    if (!SaveAssessment(session_, document_, bSaveAs, askName_)) return;
    Refresh(); // the names of the data files may now be relative to another folder
}

void frmAssessment::LookForOtherPrograms() {
    if (kestrane::LookForOtherPrograms(session_, document_, askName_)) Refresh();
}

bool frmAssessment::MayClose() {
    CommitEntries();
    return MayCloseAssessment(session_, document_, askName_);
}

void frmAssessment::closeEvent(QCloseEvent* event) {
    MayClose() ? event->accept() : event->ignore();
}

} // namespace kestrane
