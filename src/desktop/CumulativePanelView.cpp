#include "desktop/CumulativePanelView.h"

#include "dialogs/Words.h"
#include "views/CaptionHints.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace kestrane {

namespace {

constexpr int kLongestNumber = 999;
constexpr int kGap = 12;
constexpr std::size_t kLongCaption = 30; // characters; a longer caption takes two lines
constexpr int kWidest = 1000;            // pixels, so that captions stay near their values in a wide window

struct SectionBox {
    PanelSection section;
    Text::Id title;
};

constexpr SectionBox kFigureBoxes[] = {{PanelSection::Levels, Text::PanelLevels},
                                       {PanelSection::Exposure, Text::PanelExposure}};
constexpr SectionBox kCommonBoxes[] = {{PanelSection::Measurement, Text::PanelMeasurement},
                                       {PanelSection::Instrument, Text::Instrument}};

bool isOfFigures(PanelSection section) {
    return section == PanelSection::Levels || section == PanelSection::Exposure;
}

QComboBox* numberBox(const char* name, const QString& spoken) {
    auto* const box = new QComboBox;
    nameControl(*box, name, spoken);
    box->setEditable(true);
    box->lineEdit()->setAccessibleName(spoken); // the line edit is what gets the focus
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setValidator(new QIntValidator(0, kLongestNumber, box));
    return box;
}

QLabel* captionLabel(const Session& session, const std::string& text) {
    auto* const label = new QLabel(shown(text));
    label->setToolTip(shown(captionHint(session, text)));
    label->setAccessibleDescription(label->toolTip());
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setWordWrap(text.size() > kLongCaption);
    return label;
}

QLabel* valueLabel(const Session& session, const PanelRow& row, LogChannel channel) {
    const PanelLabel& label = channel == kChannelB ? row.B : row.A;
    const bool isFigure = isOfFigures(row.Section);
    auto* const value = new QLabel(shown(valueText(label, row.Unit)));
    nameControl(*value, label.Name.c_str(), shown(heardText(session, row, channel)));
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setAlignment((isFigure ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    value->setWordWrap(!isFigure || label.Name == "lblLn");
    if (label.IsWarning) {
        QPalette palette = value->palette();
        palette.setColor(QPalette::Window, QColor(HighlightColour.red, HighlightColour.green, HighlightColour.blue));
        palette.setColor(QPalette::WindowText, Qt::black);
        value->setPalette(palette);
        value->setAutoFillBackground(true);
        value->setMargin(2);
    }
    return value;
}

void clearLayout(QLayout& layout) {
    while (QLayoutItem* const item = layout.takeAt(0)) {
        delete item->widget();
        delete item;
    }
}

template <class Boxes, class Make>
QVBoxLayout* columnOf(const Boxes& boxes, Make make) {
    auto* const column = new QVBoxLayout;
    column->setSpacing(kGap);
    for (const SectionBox& box : boxes)
        column->addWidget(make(box));
    return column;
}

} // namespace

CumulativePanelView::CumulativePanelView(const Session& session, QWidget* parent) :
    QScrollArea(parent), session_(session) {
    nameControl(*this, "fraDefaultData", loadText(session, Text::TabCumulativeData));
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    const auto make = [this](const SectionBox& box) { return figuresBox(box.section, box.title); };
    QVBoxLayout* const figures = columnOf(kFigureBoxes, make);
    QVBoxLayout* const common = columnOf(kCommonBoxes, make);
    figures->addWidget(calculationBox());
    for (QVBoxLayout* column : {figures, common})
        column->addStretch();
    auto* const content = new QWidget;
    content->setMaximumWidth(kWidest);
    auto* const columns = new QHBoxLayout(content);
    columns->setContentsMargins(kGap, kGap, kGap, kGap);
    columns->setSpacing(kGap);
    columns->addLayout(figures, 3);
    columns->addLayout(common, 2);
    setWidget(content);
}

QGroupBox* CumulativePanelView::figuresBox(PanelSection section, Text::Id title) {
    auto* const box = new QGroupBox(loadText(session_, title));
    auto* const grid = new QGridLayout(box);
    grid->setHorizontalSpacing(kGap);
    boxes_[section] = box;
    return box;
}

QGroupBox* CumulativePanelView::calculationBox() {
    auto* const box = new QGroupBox(loadText(session_, Text::Calculation));
    cboCriterion_ = numberBox("cboCriterion", loadPlainText(session_, Text::CriterionLevelEdit));
    cboExchRate_ = numberBox("cboExchRate", loadPlainText(session_, Text::ExchangeRateEdit));
    txtUserCal_ = new QLineEdit;
    nameControl(*txtUserCal_, "txtUserCal", loadPlainText(session_, Text::UserCalibrationEdit));
    txtUserCal_->setPlaceholderText(loadText(session_, Text::DateHint));
    cmdApplyChanges_ = new QPushButton(loadText(session_, Text::ApplyChanges));
    nameControl(*cmdApplyChanges_, "cmdApplyChanges", loadPlainText(session_, Text::ApplyChanges));
    cmdRevertChanges_ = new QPushButton(loadText(session_, Text::RevertChanges));
    nameControl(*cmdRevertChanges_, "cmdRevertChanges", loadPlainText(session_, Text::RevertChanges));

    auto* const form = new QFormLayout(box);
    form->addRow(loadText(session_, Text::CriterionLevelEdit), cboCriterion_);
    form->addRow(loadText(session_, Text::ExchangeRateEdit), cboExchRate_);
    form->addRow(loadText(session_, Text::UserCalibrationEdit), txtUserCal_);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdApplyChanges_);
    buttons->addWidget(cmdRevertChanges_);
    form->addRow(buttons);

    for (QComboBox* combo : {cboCriterion_, cboExchRate_})
        connect(combo, &QComboBox::currentTextChanged, this, &CumulativePanelView::compareEntries);
    connect(txtUserCal_, &QLineEdit::textEdited, this, &CumulativePanelView::compareEntries);
    connect(txtUserCal_, &QLineEdit::editingFinished, this, &CumulativePanelView::leaveUserCal);
    connect(cmdApplyChanges_, &QPushButton::clicked, this, &CumulativePanelView::ApplyChanges);
    connect(cmdRevertChanges_, &QPushButton::clicked, this, &CumulativePanelView::RevertChanges);
    return box;
}

void CumulativePanelView::Follow(const clsLog* log) {
    if (log != filled_) filled_ = nullptr;
}

void CumulativePanelView::ShowLog(const clsLog& log, int band, PanelForm panel) {
    const std::vector<PanelRow> rows = cumulativePanel(log, band);
    for (const auto& [section, box] : boxes_) {
        box->setVisible(isShownIn(panel, section));
        fillSection(section, rows, panel, log.IsChannelBOn && showsChannelB(panel));
    }
    if (&log != filled_ || calculationEntries(log) != stored_) showEntries(log);
}

void CumulativePanelView::fillSection(PanelSection section, const std::vector<PanelRow>& rows, PanelForm panel,
                                      bool hasChannelB) {
    auto& grid = *qobject_cast<QGridLayout*>(boxes_.at(section)->layout());
    clearLayout(grid);
    if (!isShownIn(panel, section)) return;
    int line = 0;
    for (const PanelRow& row : rows) {
        const bool hasB = hasChannelB && !row.B.Name.empty() && !row.B.Text.empty();
        if (row.Section != section || (row.A.Text.empty() && !hasB)) continue;
        const bool isWide = row.A.Name == "lblLn" || !hasChannelB;
        grid.addWidget(captionLabel(session_, row.Caption), line, 0, Qt::AlignTop);
        grid.addWidget(valueLabel(session_, row, kChannelA), line, 1, 1, isWide ? 3 : 1);
        if (hasB) {
            const bool isRepeated = !isOfFigures(section) && row.B.Caption == row.Caption;
            if (!isRepeated) grid.addWidget(captionLabel(session_, row.B.Caption), line, 2);
            grid.addWidget(valueLabel(session_, row, kChannelB), line, 3);
        }
        ++line;
    }
    const bool isFigures = isOfFigures(section);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, hasChannelB && isFigures ? 1 : 0);
}

void CumulativePanelView::showEntries(const clsLog& log) {
    filled_ = &log;
    stored_ = calculationEntries(log);
    const QSignalBlocker noCriterion(cboCriterion_);
    const QSignalBlocker noExchange(cboExchRate_);
    const auto fill = [](QComboBox& box, const std::vector<std::string>& choices, const std::string& text) {
        box.clear();
        for (const std::string& choice : choices)
            box.addItem(shown(choice));
        box.setCurrentText(shown(text));
    };
    fill(*cboCriterion_, criterionChoices(log), stored_.Criterion);
    fill(*cboExchRate_, exchangeChoices(log), stored_.Exchange);
    txtUserCal_->setText(shown(stored_.UserCal));
    compareEntries();
}

CalculationEntries CumulativePanelView::Entries() const {
    return {cboCriterion_->currentText().toStdString(), cboExchRate_->currentText().toStdString(),
            txtUserCal_->text().trimmed().toStdString()};
}

void CumulativePanelView::FocusField(CalculationField field) {
    const std::map<CalculationField, QWidget*> fields = {{CalculationField::Criterion, cboCriterion_},
                                                         {CalculationField::Exchange, cboExchRate_},
                                                         {CalculationField::UserCal, txtUserCal_}};
    fields.at(field)->setFocus();
}

void CumulativePanelView::leaveUserCal() {
    const std::string entered = txtUserCal_->text().trimmed().toStdString();
    txtUserCal_->setText(shown(acceptedUserCal(session_, entered, stored_.UserCal)));
    compareEntries();
}

void CumulativePanelView::compareEntries() {
    const bool hasChanges = Entries() != stored_;
    cmdApplyChanges_->setEnabled(hasChanges);
    cmdRevertChanges_->setEnabled(hasChanges);
}

} // namespace kestrane
