// The page "Logs": which figures of a log are shown, how charts look, the exposure time.
#pragma once

#include "dialogs/OptionsPage.h"

#include <array>

class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace kestrane {

class OptionsLogsPage : public OptionsPage {
public:
    explicit OptionsLogsPage(SettingsDialog& settings);

    void store() override {} // everything except the exposure time is stored as soon as it is chosen

    std::string ExposureTimeEntry() const;
    void FocusExposureTime();

private:
    QGroupBox* parameters();
    QWidget* choices();
    QGroupBox* charts();
    QGridLayout* lines();
    QGroupBox* fonts();
    QLineEdit* exposureTime();
    LogChannel channel() const;
    FigureKind kind() const;
    void showParameters();
    void chooseFont(clsFont& font, QLabel& sample);

    QButtonGroup* optChannel_;
    QButtonGroup* optCumInt_;
    std::array<QCheckBox*, static_cast<std::size_t>(ParameterCount)> chkPlot_;
    QLineEdit* txtExposureTime_;
};

} // namespace kestrane
