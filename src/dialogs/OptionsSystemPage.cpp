#include "dialogs/OptionsSystemPage.h"

#include "dialogs/Words.h"
#include "dialogs/frmBrowse.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kPortWidth = 40; // characters

QHBoxLayout* row(QWidget* field, QWidget* button = nullptr) {
    auto* const layout = new QHBoxLayout;
    layout->addWidget(field, button == nullptr ? 0 : 1);
    if (button != nullptr) layout->addWidget(button);
    if (button == nullptr) layout->addStretch(1);
    return layout;
}

QFormLayout* form(QGroupBox* group) {
    auto* const layout = new QFormLayout(group);
    layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    return layout;
}

// The fields of all groups begin at one line.
void alignLabels(const QList<QLabel*>& labels) {
    int width = 0;
    for (const QLabel* label : labels)
        width = std::max(width, label->sizeHint().width());
    for (QLabel* label : labels)
        label->setMinimumWidth(width);
}

} // namespace

OptionsSystemPage::OptionsSystemPage(SettingsDialog& settings) :
    OptionsPage(settings),
    ports_(serialChoices(settings.session(), settings.Edited.SerialPort)),
    txtCompany_(lineEdit(5005, "txtCompany", settings.Edited.CompanyName)),
    txtLogo_(lineEdit(5006, "txtLogo", settings.Edited.CompanyLogoFile)),
    txtDataDir_(lineEdit(5007, "txtDataDir", settings.Edited.DefaultDataDirectory)),
    cboSerial_(new QComboBox),
    chkPreventSaving_(checkBox(settings.session(), 5029, "chkPreventSaving", settings.Edited.PreventEmptySaving)),
    chkCalc_(checkBox(settings.session(), 5011, "chkCalc", settings.Edited.RecalcOnOpen)),
    chkPrintIntervals_(checkBox(settings.session(), 5010, "chkPrintIntervals", settings.Edited.PrintIntervals)) {
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(reports());
    layout->addWidget(dataFiles());
    layout->addWidget(instrument());
    layout->addStretch(1);
    alignLabels(findChildren<QLabel*>());
}

void OptionsSystemPage::store() {
    clsOptions& options = settings_.Edited;
    options.CompanyName = txtCompany_->text().toStdString();
    options.CompanyLogoFile = txtLogo_->text().trimmed().toStdString();
    options.DefaultDataDirectory = txtDataDir_->text().trimmed().toStdString();
    options.SerialPort = ports_[static_cast<std::size_t>(cboSerial_->currentIndex())].Port;
    options.PreventEmptySaving = chkPreventSaving_->isChecked();
    options.RecalcOnOpen = chkCalc_->isChecked();
    options.PrintIntervals = chkPrintIntervals_->isChecked();
}

QLineEdit* OptionsSystemPage::lineEdit(int labelId, const char* name, const std::string& text) {
    auto* const edit = new QLineEdit(QString::fromStdString(text));
    nameControl(*edit, name, loadPlainText(settings_.session(), labelId));
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40);
    edit->setCursorPosition(0);
    return edit;
}

QGroupBox* OptionsSystemPage::reports() {
    const Session& session = settings_.session();
    auto* const cmdBrowseFile = pushButton(session, 5009, "cmdBrowseFile", loadPlainText(session, 5031));
    connect(cmdBrowseFile, &QPushButton::clicked, this, [this] { browseLogo(); });

    auto* const group = new QGroupBox(loadText(session, 5080));
    QFormLayout* const fields = form(group);
    fields->addRow(labelOf(session, 5005, *txtCompany_), txtCompany_);
    fields->addRow(labelOf(session, 5006, *txtLogo_), row(txtLogo_, cmdBrowseFile));
    fields->addRow(chkPrintIntervals_);
    return group;
}

QGroupBox* OptionsSystemPage::dataFiles() {
    const Session& session = settings_.session();
    auto* const cmdBrowseDir = pushButton(session, 5082, "cmdBrowseDir", loadPlainText(session, 4001));
    connect(cmdBrowseDir, &QPushButton::clicked, this, [this] { browseFolder(); });

    auto* const group = new QGroupBox(loadText(session, 5081));
    QFormLayout* const fields = form(group);
    fields->addRow(labelOf(session, 5007, *txtDataDir_), row(txtDataDir_, cmdBrowseDir));
    fields->addRow(chkPreventSaving_);
    fields->addRow(chkCalc_);
    return group;
}

QGroupBox* OptionsSystemPage::instrument() {
    const Session& session = settings_.session();
    nameControl(*cboSerial_, "cboSerial", loadPlainText(session, 5008));
    for (const SerialChoice& choice : ports_)
        cboSerial_->addItem(shown(choice.Text));
    cboSerial_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // names of devices can be long
    cboSerial_->setMinimumContentsLength(kPortWidth);
    cboSerial_->setCurrentIndex(static_cast<int>(serialChoiceOf(ports_, settings_.Edited.SerialPort)));

    auto* const group = new QGroupBox(loadText(session, 4531));
    form(group)->addRow(labelOf(session, 5008, *cboSerial_), row(cboSerial_));
    return group;
}

void OptionsSystemPage::browseLogo() {
    const Session& session = settings_.session();
    const QString name = QFileDialog::getOpenFileName(this, loadText(session, 5031), txtLogo_->text(),
                                                      fileFilter(session.LoadText(6542)));
    if (!name.isEmpty()) txtLogo_->setText(name);
}

void OptionsSystemPage::browseFolder() {
    const std::string folder = frmBrowse::AskFolder(settings_.session(), this, txtDataDir_->text().toStdString());
    if (!folder.empty()) txtDataDir_->setText(QString::fromStdString(folder));
}

} // namespace kestrane
