#include "dialogs/frmAcquire.h"

#include "dialogs/Words.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <array>

namespace kestrane {

namespace {

constexpr int kLines = 12;
constexpr int kColumns = 48;

// A click does the same as a toggle by an assistive program: it never leads to the third state, which only shows that
// some rows are selected.
class AllRowsBox : public QCheckBox {
protected:
    void nextCheckState() override { setChecked(!isChecked()); }
};

// A value beside its caption; both are read out.
QLabel* value(const char* name, const std::string& text, const QString& caption) {
    auto* const label = new QLabel(shown(text));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    nameControl(*label, name, caption + ", " + label->text());
    return label;
}

QDialogButtonBox* buttonsOf(QDialog& dialog, const Session& session) {
    QDialogButtonBox* const buttons = okAndCancel(session);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    return buttons;
}

// Asks for one of a few levels, in dB.
std::optional<int> chooseLevel(const Session& session, Text::Id title, const char* name, std::span<const int> levels,
                               int chosen, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName("frmAcquire");
    dialog.setWindowTitle(loadText(session, title));
    auto* const group = new QGroupBox(dialog.windowTitle());
    nameControl(*group, name, dialog.windowTitle());
    auto* const options = new QVBoxLayout(group);
    QButtonGroup choice;
    for (const int level : levels) {
        auto* const option = new QRadioButton(QString::number(level) + ' ' + loadText(session, Text::Decibel));
        nameControl(*option, "", option->text());
        option->setObjectName(QLatin1String(name) + QString::number(level));
        option->setChecked(level == chosen || level == levels.front());
        choice.addButton(option, level);
        options->addWidget(option);
    }
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(group);
    layout->addWidget(buttonsOf(dialog, session));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return choice.checkedId();
}

} // namespace

frmAcquire::frmAcquire(const Session& session, const AcquireList& list, QWidget* parent) :
    QDialog(parent),
    session_(session),
    choosing_(list),
    lstLocs_(new QListWidget),
    chkSelectAll_(new AllRowsBox),
    chkOctaves_(checkBox(session, Text::IncludeOctaveData, "chkOctaves", choosing_.Choice().FetchOctaves)) {
    setObjectName("frmAcquire");
    setWindowTitle(loadText(session, Text::DownloadOptions));
    fillList();
    chkSelectAll_->setText(loadText(session, Text::SelectAll));
    nameControl(*chkSelectAll_, "chkSelectAll", loadPlainText(session, Text::SelectAll));
    chkOctaves_->setEnabled(list.CanFetchOctaves);
    QDialogButtonBox* const buttons = buttonsOf(*this, session);
    cmdOK_ = buttons->button(QDialogButtonBox::Ok);
    connect(lstLocs_, &QListWidget::itemSelectionChanged, this, [this] { takeSelection(); });
    connect(chkSelectAll_, &QCheckBox::toggled, this,
            [this] { selectAll(choosing_.Selected() != AcquireDialog::Rows::All); });
    connect(chkOctaves_, &QCheckBox::toggled, this, [this](bool isChecked) {
        choosing_.FetchOctaves(isChecked);
        showState();
    });

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(instrument());
    layout->addWidget(labelOf(session, Text::LogsOnTheInstrument, *lstLocs_));
    layout->addWidget(lstLocs_, 1);
    layout->addWidget(chkSelectAll_);
    layout->addWidget(chkOctaves_);
    layout->addWidget(buttons);
    chkOctaves_->setVisible(list.HasOctaveChoice);
    lstLocs_->setFocus();
    showState();
}

QWidget* frmAcquire::instrument() {
    auto* const panel = new QWidget;
    auto* const form = new QFormLayout(panel);
    form->setContentsMargins(0, 0, 0, 0);
    const AcquireList& list = choosing_.List();
    form->addRow(loadText(session_, Text::InstrumentLabel),
                 value("lblInsType", list.InsName, loadPlainText(session_, Text::InstrumentLabel)));
    form->addRow(loadText(session_, Text::SerialNumberLabel),
                 value("lblInsSerial", list.InsSerial, loadPlainText(session_, Text::SerialNumberLabel)));
    return panel;
}

void frmAcquire::fillList() {
    nameControl(*lstLocs_, "lstLocs", loadPlainText(session_, Text::LogsOnTheInstrument));
    lstLocs_->setSelectionMode(QAbstractItemView::MultiSelection);
    lstLocs_->setUniformItemSizes(true);
    for (std::size_t row = 0; row < choosing_.List().Rows.size(); ++row)
        lstLocs_->addItem(shown(choosing_.RowText(session_, row)));
    lstLocs_->selectAll();
    const QFontMetrics metrics = lstLocs_->fontMetrics();
    lstLocs_->setMinimumSize(metrics.averageCharWidth() * kColumns, metrics.lineSpacing() * kLines);
}

void frmAcquire::takeSelection() {
    for (int row = 0; row < lstLocs_->count(); ++row)
        choosing_.Select(static_cast<std::size_t>(row), lstLocs_->item(row)->isSelected());
    showState();
}

void frmAcquire::selectAll(bool areSelected) {
    choosing_.SelectAll(areSelected);
    const QSignalBlocker blocker(lstLocs_);
    if (areSelected) {
        lstLocs_->selectAll();
    } else {
        lstLocs_->clearSelection();
    }
    showState();
}

void frmAcquire::showState() {
    constexpr std::array kStates = {Qt::Unchecked, Qt::PartiallyChecked, Qt::Checked};
    const QSignalBlocker blocker(chkSelectAll_);
    chkSelectAll_->setCheckState(kStates.at(static_cast<std::size_t>(choosing_.Selected())));
    cmdOK_->setEnabled(choosing_.CanAccept());
}

std::optional<AcquireChoice> frmAcquire::ChooseLogs(const Session& session, const AcquireList& list, QWidget* parent) {
    frmAcquire dialog(session, list, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.choosing_.Choice();
}

std::optional<int> frmAcquire::setExchRate(const Session& session, int chosen, QWidget* parent) {
    constexpr std::array kRates = {3, 4, 5};
    return chooseLevel(session, Text::ExchangeRate, "optGpExchange", kRates, chosen, parent);
}

std::optional<int> frmAcquire::setCriterion(const Session& session, int chosen, QWidget* parent) {
    constexpr std::array kLevels = {75, 80, 85, 90};
    return chooseLevel(session, Text::AskCriterionLevel, "optCriterion", kLevels, chosen, parent);
}

} // namespace kestrane
