#include "dialogs/frmCutIntervals.h"

#include "dialogs/Words.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>

namespace kestrane {

namespace {

constexpr int kLines = 12;
constexpr int kColumns = 28;
constexpr int kGap = 12;
constexpr int kBack = 0;
constexpr int kNext = 1;
constexpr int kExclude = 0;
constexpr int kInclude = 1;
constexpr int kLongestReason = 200; // characters

} // namespace

frmCutIntervals::frmCutIntervals(const Session& session, const clsLog& log, QWidget* parent) :
    QDialog(parent), session_(session), wizard_(log), picNav_(new QStackedWidget) {
    setObjectName("frmCutIntervals");
    setWindowTitle(loadText(session, Text::WizardTitle));
    intervals_.SetLog(log);
    picNav_->addWidget(welcomePage());
    picNav_->addWidget(rangePage());
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(picNav_, 1);
    layout->addSpacing(kGap);
    layout->addWidget(buttons());
    showStep();
}

QWidget* frmCutIntervals::welcomePage() {
    auto* const page = new QWidget;
    auto* const text = new QLabel(loadText(session_, Text::WizardWelcome));
    text->setWordWrap(true);
    QCheckBox* const chkDontShowAgain =
        checkBox(session_, Text::SkipThisPage, "chkDontShowAgain", wizard_.SkipsWelcome());
    connect(chkDontShowAgain, &QCheckBox::toggled, this, [this](bool isChecked) { wizard_.SkipWelcome(isChecked); });
    auto* const layout = new QVBoxLayout(page);
    layout->addWidget(text);
    layout->addStretch();
    layout->addWidget(chkDontShowAgain);
    return page;
}

QWidget* frmCutIntervals::rangePage() {
    auto* const page = new QWidget;
    auto* const grid = new QGridLayout(page);
    grid->setHorizontalSpacing(kGap);
    lblTitle_ = new QLabel;
    lblTitle_->setObjectName("lblTitle");
    QFont font = lblTitle_->font();
    font.setBold(true);
    lblTitle_->setFont(font);
    grid->addWidget(lblTitle_, 0, 0, 1, 2);
    grid->addWidget(new QLabel(loadText(session_, Text::WizardChoose)), 1, 0, 1, 2);
    for (const auto& [list, text, name] :
         {std::tuple(0, Text::ZoomFrom, "lstIntervals0"), std::tuple(1, Text::ZoomTo, "lstIntervals1")}) {
        auto* const view = new QListView;
        nameControl(*view, name, loadPlainText(session_, text));
        view->setModel(&intervals_);
        view->setUniformItemSizes(true);
        view->setMinimumSize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().lineSpacing() * kLines);
        grid->addWidget(labelOf(session_, text, *view), 2, list);
        grid->addWidget(view, 3, list);
        lstIntervals_[static_cast<std::size_t>(list)] = view;
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [this, isFrom = list == 0](const QItemSelection& selected) {
                    (isFrom ? wizard_.From : wizard_.To) = selected.isEmpty() ? 0 : selected.first().top() + 1;
                    showButtons();
                });
    }
    grid->setRowStretch(3, 1);
    optInclude_ = new QButtonGroup(page);
    optInclude_->addButton(radioButton(session_, Text::IncludeInDisplay, "optInclude0", false), kInclude);
    optInclude_->addButton(radioButton(session_, Text::ExcludeFromDisplay, "optInclude1", false), kExclude);
    grid->addWidget(optInclude_->button(kInclude), 4, 0);
    grid->addWidget(optInclude_->button(kExclude), 4, 1);
    onChosen(*optInclude_, [this](int id) { wizard_.ToBeIncluded = id == kInclude; });
    auto* const txtReason = new QLineEdit(shown(wizard_.Reason));
    nameControl(*txtReason, "txtReason", loadPlainText(session_, Text::CutReason));
    txtReason->setMaxLength(kLongestReason);
    connect(txtReason, &QLineEdit::textChanged, this,
            [this](const QString& text) { wizard_.Reason = text.toStdString(); });
    grid->addWidget(labelOf(session_, Text::CutReason, *txtReason), 5, 0, 1, 2);
    grid->addWidget(txtReason, 6, 0, 1, 2);
    return page;
}

QWidget* frmCutIntervals::buttons() {
    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](Text::Id text, const char* name) {
        QPushButton* const button = pushButton(session_, text, name, loadPlainText(session_, text));
        row->addWidget(button);
        return button;
    };
    cmdClear_ = add(Text::Clear, "cmdClear");
    row->addStretch();
    cmdNav_[kBack] = add(Text::Back, "cmdNav0");
    cmdNav_[kNext] = add(Text::Next, "cmdNav1");
    cmdFinish_ = add(Text::Finish, "cmdFinish");
    QPushButton* const cmdCancel = add(Text::Cancel, "cmdCancel");
    cmdNav_[kNext]->setDefault(true);
    connect(cmdClear_, &QPushButton::clicked, this, [this] {
        wizard_.Clear();
        showStep();
    });
    connect(cmdNav_[kBack], &QPushButton::clicked, this, [this] {
        wizard_.Back();
        showStep();
    });
    connect(cmdNav_[kNext], &QPushButton::clicked, this, [this] {
        if (wizard_.Next()) showStep();
    });
    connect(cmdFinish_, &QPushButton::clicked, this, [this] {
        if (wizard_.Finish()) accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    return bar;
}

void frmCutIntervals::showStep() {
    picNav_->setCurrentIndex(wizard_.IsWelcome() ? 0 : 1);
    lblTitle_->setText(shown(wizard_.Title()));
    const std::array rows = {wizard_.From, wizard_.To};
    for (std::size_t list = 0; list < rows.size(); ++list) {
        QListView& view = *lstIntervals_[list];
        view.clearSelection();
        if (rows[list] == 0) continue;
        view.setCurrentIndex(intervals_.index(static_cast<int>(rows[list]) - 1));
        view.scrollTo(view.currentIndex(), QAbstractItemView::PositionAtCenter);
    }
    if (wizard_.ToBeIncluded) optInclude_->button(*wizard_.ToBeIncluded ? kInclude : kExclude)->setChecked(true);
    showButtons();
}

void frmCutIntervals::showButtons() {
    cmdNav_[kBack]->setEnabled(wizard_.CanGoBack());
    cmdClear_->setEnabled(wizard_.CanClear());
    cmdFinish_->setEnabled(wizard_.CanFinish());
}

std::optional<CutWizard> frmCutIntervals::getIntervals(const Session& session, const clsLog& log, QWidget* parent) {
    frmCutIntervals dialog(session, log, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.wizard_;
}

} // namespace kestrane
