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
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kPortWidth = 40; // characters
constexpr int kTextLines = 2;  // of the company's own words that are visible at once

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

// Makes the fields of the groups below each other begin on the same vertical line.
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
    txtCompany_(lineEdit(Text::CompanyName, "txtCompany", settings.Edited.CompanyName)),
    txtLogo_(lineEdit(Text::CompanyLogo, "txtLogo", settings.Edited.CompanyLogoFile)),
    txtIntroduction_(textEdit(Text::ReportIntroduction, "txtIntroduction", settings.Edited.ReportIntroduction)),
    txtClosing_(textEdit(Text::ReportClosing, "txtClosing", settings.Edited.ReportClosing)),
    txtFooter_(textEdit(Text::ReportFooter, "txtFooter", settings.Edited.ReportFooter)),
    txtDataDir_(lineEdit(Text::DataFolder, "txtDataDir", settings.Edited.DefaultDataDirectory)),
    cboSerial_(new QComboBox),
    cboLanguage_(languageBox(Text::LanguageOfProgram, "cboLanguage", Text::LanguageAsSystem, settings.Edited.Language)),
    cboReportLanguage_(languageBox(Text::LanguageOfReports, "cboReportLanguage", Text::LanguageAsProgram,
                                   settings.Edited.ReportLanguage)),
    cboAppearance_(new QComboBox),
    chkPreventSaving_(checkBox(settings.session(), Text::PreventSavingWithoutLogs, "chkPreventSaving",
                               settings.Edited.PreventEmptySaving)),
    chkCalc_(checkBox(settings.session(), Text::RecalcOnOpen, "chkCalc", settings.Edited.RecalcOnOpen)),
    chkPrintIntervals_(
        checkBox(settings.session(), Text::PrintIntervals, "chkPrintIntervals", settings.Edited.PrintIntervals)) {
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(reports());
    layout->addWidget(dataFiles());
    layout->addWidget(instrument());
    auto* const user = new QHBoxLayout;
    layout->addLayout(user);
    user->addWidget(language(), 1);
    alignLabels(findChildren<QLabel*>());
    user->addWidget(appearance(), 1); // beside the others, so its label is as wide as its text
    layout->addStretch(1);
}

void OptionsSystemPage::store() {
    clsOptions& options = settings_.Edited;
    options.CompanyName = txtCompany_->text().toStdString();
    options.CompanyLogoFile = txtLogo_->text().trimmed().toStdString();
    options.ReportIntroduction = txtIntroduction_->toPlainText().toStdString();
    options.ReportClosing = txtClosing_->toPlainText().toStdString();
    options.ReportFooter = txtFooter_->toPlainText().toStdString();
    options.DefaultDataDirectory = txtDataDir_->text().trimmed().toStdString();
    options.SerialPort = ports_[static_cast<std::size_t>(cboSerial_->currentIndex())].Port;
    options.Language = cboLanguage_->currentData().toString().toStdString();
    options.ReportLanguage = cboReportLanguage_->currentData().toString().toStdString();
    settings_.Look = static_cast<Appearance>(cboAppearance_->currentIndex());
    options.PreventEmptySaving = chkPreventSaving_->isChecked();
    options.RecalcOnOpen = chkCalc_->isChecked();
    options.PrintIntervals = chkPrintIntervals_->isChecked();
}

QLineEdit* OptionsSystemPage::lineEdit(Text::Id labelId, const char* name, const std::string& text) {
    auto* const edit = new QLineEdit(QString::fromStdString(text));
    nameControl(*edit, name, loadPlainText(settings_.session(), labelId));
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 40);
    edit->setCursorPosition(0);
    return edit;
}

// A few lines. Tab goes to the next control.
QPlainTextEdit* OptionsSystemPage::textEdit(Text::Id labelId, const char* name, const std::string& text) {
    auto* const edit = new QPlainTextEdit(QString::fromStdString(text));
    nameControl(*edit, name, loadPlainText(settings_.session(), labelId));
    edit->setTabChangesFocus(true);
    edit->setFixedHeight(edit->fontMetrics().lineSpacing() * kTextLines + 2 * edit->frameWidth() +
                         static_cast<int>(2 * edit->document()->documentMargin()));
    return edit;
}

QGroupBox* OptionsSystemPage::reports() {
    const Session& session = settings_.session();
    auto* const cmdBrowseFile =
        pushButton(session, Text::BrowseLogo, "cmdBrowseFile", loadPlainText(session, Text::CompanyLogoFile));
    connect(cmdBrowseFile, &QPushButton::clicked, this, [this] { browseLogo(); });

    auto* const group = new QGroupBox(loadText(session, Text::Reports));
    QFormLayout* const fields = form(group);
    fields->addRow(labelOf(session, Text::CompanyName, *txtCompany_), txtCompany_);
    fields->addRow(labelOf(session, Text::CompanyLogo, *txtLogo_), row(txtLogo_, cmdBrowseFile));
    fields->addRow(labelOf(session, Text::ReportIntroduction, *txtIntroduction_), txtIntroduction_);
    fields->addRow(labelOf(session, Text::ReportClosing, *txtClosing_), txtClosing_);
    fields->addRow(labelOf(session, Text::ReportFooter, *txtFooter_), txtFooter_);
    fields->addRow(chkPrintIntervals_);
    return group;
}

QGroupBox* OptionsSystemPage::dataFiles() {
    const Session& session = settings_.session();
    auto* const cmdBrowseDir =
        pushButton(session, Text::BrowseData, "cmdBrowseDir", loadPlainText(session, Text::BrowseForFolder));
    connect(cmdBrowseDir, &QPushButton::clicked, this, [this] { browseFolder(); });

    auto* const group = new QGroupBox(loadText(session, Text::DataFiles));
    QFormLayout* const fields = form(group);
    fields->addRow(labelOf(session, Text::DataFolder, *txtDataDir_), row(txtDataDir_, cmdBrowseDir));
    fields->addRow(chkPreventSaving_);
    fields->addRow(chkCalc_);
    return group;
}

QGroupBox* OptionsSystemPage::instrument() {
    const Session& session = settings_.session();
    nameControl(*cboSerial_, "cboSerial", loadPlainText(session, Text::SerialPort));
    for (const SerialChoice& choice : ports_)
        cboSerial_->addItem(shown(choice.Text));
    cboSerial_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // names of devices can be long
    cboSerial_->setMinimumContentsLength(kPortWidth);
    cboSerial_->setCurrentIndex(static_cast<int>(serialChoiceOf(ports_, settings_.Edited.SerialPort)));

    auto* const group = new QGroupBox(loadText(session, Text::Instrument));
    form(group)->addRow(labelOf(session, Text::SerialPort, *cboSerial_), row(cboSerial_));
    return group;
}

QComboBox* OptionsSystemPage::languageBox(Text::Id labelId, const char* name, Text::Id other,
                                          const std::string& chosen) {
    auto* const box = new QComboBox;
    nameControl(*box, name, loadPlainText(settings_.session(), labelId));
    for (const LanguageChoice& choice : languageChoices(settings_.session(), other)) {
        box->addItem(shown(choice.Text), QString::fromStdString(choice.Code));
        if (choice.Code == chosen) box->setCurrentIndex(box->count() - 1);
    }
    return box;
}

QGroupBox* OptionsSystemPage::language() {
    const Session& session = settings_.session();
    auto* const group = new QGroupBox(loadText(session, Text::LanguageGroup));
    QFormLayout* const fields = form(group);
    fields->addRow(labelOf(session, Text::LanguageOfProgram, *cboLanguage_), row(cboLanguage_));
    fields->addRow(labelOf(session, Text::LanguageOfReports, *cboReportLanguage_), row(cboReportLanguage_));
    cboLanguage_->setToolTip(loadText(session, Text::LanguageAtNextStart));
    return group;
}

QGroupBox* OptionsSystemPage::appearance() {
    const Session& session = settings_.session();
    nameControl(*cboAppearance_, "cboAppearance", loadPlainText(session, Text::AppearanceLabel));
    for (const Text::Id text :
         {Text::AppearanceAsSystem, Text::AppearanceLight, Text::AppearanceDark, Text::AppearanceHighContrast})
        cboAppearance_->addItem(loadText(session, text));
    cboAppearance_->setCurrentIndex(static_cast<int>(settings_.Look));
    auto* const group = new QGroupBox(loadText(session, Text::AppearanceGroup));
    form(group)->addRow(labelOf(session, Text::AppearanceLabel, *cboAppearance_), row(cboAppearance_));
    return group;
}

void OptionsSystemPage::browseLogo() {
    const Session& session = settings_.session();
    const QString name = QFileDialog::getOpenFileName(this, loadText(session, Text::CompanyLogoFile), txtLogo_->text(),
                                                      fileFilter(session.LoadText(Text::GraphicsFilter)));
    if (!name.isEmpty()) txtLogo_->setText(name);
}

void OptionsSystemPage::browseFolder() {
    const std::string folder = frmBrowse::AskFolder(settings_.session(), this, txtDataDir_->text().toStdString());
    if (!folder.empty()) txtDataDir_->setText(QString::fromStdString(folder));
}

} // namespace kestrane
