#include "dialogs/OptionsExplorerPage.h"

#include "dialogs/Words.h"
#include "model/Captions.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrane {

namespace {

// Buttons with the values from 0 on, in a box with a layout; the button of the chosen value is on.
QButtonGroup* buttons(const Session& session, QLayout& layout, const char* name,
                      std::initializer_list<Text::Id> textIds, int chosen) {
    auto* const group = new QButtonGroup(&layout);
    for (const Text::Id textId : textIds) {
        const int value = static_cast<int>(group->buttons().size());
        const QByteArray itsName = QByteArray(name) + QByteArray::number(value);
        QRadioButton* const button = radioButton(session, textId, itsName, value == chosen);
        group->addButton(button, value);
        layout.addWidget(button);
    }
    return group;
}

} // namespace

OptionsExplorerPage::OptionsExplorerPage(SettingsDialog& settings) :
    OptionsPage(settings), keptMethod_(settings.Edited.HPDCalcMethod) {
    const Session& session = settings.session();
    auto* const fraFiles = new QGroupBox(loadText(session, Text::DisplayFiles));
    auto* const files = new QVBoxLayout(fraFiles);
    optTVFiles_ =
        buttons(session, *files, "optTVFiles", {Text::FilesAsNodes, Text::FilesBesideLogNames, Text::HideFileNames},
                settings.Edited.FilesOnTreeView);

    auto* const fraDfltCum = new QGroupBox(loadText(session, Text::PanelShownFirst));
    fraDfltCum->setObjectName("fraDfltCum");
    auto* const panels = new QVBoxLayout(fraDfltCum);
    optCumPanels_ = buttons(session, *panels, "optCumPanels",
                            {Text::ShowChannelsAAndB, Text::ShowFullChannelA, Text::ShowAdvanced, Text::HidePanels},
                            settings.Edited.CumulativePanel);
    fraDfltCum->setVisible(settings.Mode() != SettingsMode::Explorer);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(fraFiles);
    layout->addWidget(fraDfltCum);
    layout->addWidget(behaviour());
    layout->addStretch(1);
}

QGroupBox* OptionsExplorerPage::behaviour() {
    const Session& session = settings_.session();
    auto* const fraBehaviour = new QGroupBox(loadText(session, Text::Behaviour));
    fraBehaviour->setObjectName("fraBehaviour");
    auto* const layout = new QVBoxLayout(fraBehaviour);
    chkHPD_ = checkBox(session, Text::KeepLastProtector, "chkHPD", settings_.Edited.PersistSelectedHP);
    layout->addWidget(chkHPD_);

    auto* const calculation = new QHBoxLayout;
    calculation->addWidget(new QLabel(shown(withColon(session, session.LoadText(Text::ProtectorCalculation)))));
    optHPD_ = buttons(session, *calculation, "optHPD", {Text::HSE, Text::OSHA, Text::NIOSH}, settings_.Edited.HPDCalc);
    cboCalcMethod_ = new QComboBox;
    nameControl(*cboCalcMethod_, "cboCalcMethod", loadPlainText(session, Text::MethodLabel));
    cboCalcMethod_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    calculation->addSpacing(fontMetrics().averageCharWidth() * 3);
    calculation->addWidget(labelOf(session, Text::MethodLabel, *cboCalcMethod_));
    calculation->addWidget(cboCalcMethod_);
    calculation->addStretch(1);
    layout->addLayout(calculation);

    fillMethods();
    onChosen(*optHPD_, [this](int) { fillMethods(); });
    connect(cboCalcMethod_, &QComboBox::textActivated, this,
            [this](const QString& text) { keptMethod_ = text.toStdString(); });
    return fraBehaviour;
}

void OptionsExplorerPage::fillMethods() {
    const auto mode = static_cast<std::int16_t>(optHPD_->checkedId());
    cboCalcMethod_->clear();
    for (const std::string& method : calcMethods(mode))
        cboCalcMethod_->addItem(QString::fromStdString(method));
    cboCalcMethod_->setCurrentText(QString::fromStdString(calcMethodOf(mode, keptMethod_)));
}

void OptionsExplorerPage::store() {
    clsOptions& options = settings_.Edited;
    const auto keep = [](std::int16_t& value, const QButtonGroup* group) {
        if (group->checkedId() >= 0) value = static_cast<std::int16_t>(group->checkedId());
    };
    keep(options.FilesOnTreeView, optTVFiles_);
    keep(options.CumulativePanel, optCumPanels_);
    keep(options.HPDCalc, optHPD_);
    options.HPDCalcMethod = cboCalcMethod_->currentText().toStdString();
    options.PersistSelectedHP = chkHPD_->isChecked();
}

} // namespace kestrane
