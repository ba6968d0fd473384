// The page "System": company and reports, data files, the port of the instrument.
#pragma once

#include "dialogs/OptionsPage.h"
#include "resources/TextNames.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace kestrane {

class OptionsSystemPage : public OptionsPage {
public:
    explicit OptionsSystemPage(SettingsDialog& settings);

    void store() override;

private:
    QLineEdit* lineEdit(Text::Id labelId, const char* name, const std::string& text);
    QPlainTextEdit* textEdit(Text::Id labelId, const char* name, const std::string& text);
    QGroupBox* reports();
    QGroupBox* dataFiles();
    QGroupBox* instrument();
    QGroupBox* language();
    QGroupBox* appearance();
    QComboBox* languageBox(Text::Id labelId, const char* name, Text::Id other, const std::string& chosen);
    void browseLogo();
    void browseFolder();

    std::vector<SerialChoice> ports_;
    QLineEdit* txtCompany_;
    QLineEdit* txtLogo_;
    QPlainTextEdit *txtIntroduction_, *txtClosing_, *txtFooter_; // of reports
    QLineEdit* txtDataDir_;
    QComboBox* cboSerial_;
    QComboBox* cboLanguage_;
    QComboBox* cboReportLanguage_;
    QComboBox* cboAppearance_;
    QCheckBox* chkPreventSaving_;
    QCheckBox* chkCalc_;
    QCheckBox* chkPrintIntervals_;
};

} // namespace kestrane
