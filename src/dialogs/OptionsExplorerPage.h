// The page "Explorer": the tree, the cumulative panel shown first, and how protectors are compared.
#pragma once

#include "dialogs/OptionsPage.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;

namespace kestrane {

class OptionsExplorerPage : public OptionsPage {
public:
    explicit OptionsExplorerPage(SettingsDialog& settings);

    void store() override;

private:
    QGroupBox* behaviour();
    void fillMethods();

    QButtonGroup* optTVFiles_;
    QButtonGroup* optCumPanels_;
    QButtonGroup* optHPD_;
    QComboBox* cboCalcMethod_;
    QCheckBox* chkHPD_;
    std::string keptMethod_; // chosen again whenever it is offered
};

} // namespace kestrane
