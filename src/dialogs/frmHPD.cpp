#include "dialogs/frmHPD.h"

#include "dialogs/HandySplitter.h"
#include "dialogs/Palettes.h"
#include "dialogs/ProtectorBoxes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr QPoint kOffset(33, 100); // from the window that opens it: 500 and 1500 twips
constexpr int kLines = 34;
constexpr int kColumns = 220;
constexpr int kListColumns = 40;

QPushButton* button(const Session& session, Text::Id caption, const char* name) {
    return pushButton(session, caption, name, loadPlainText(session, caption));
}

} // namespace

frmHPD::frmHPD(ProtectorScreen& screen, const Download& download, QWidget* parent) :
    QDialog(parent), screen_(screen), download_(download), model_(screen) {
    const Session& session = screen.session();
    setObjectName(screen.IsSelection() ? "frmSelectHPD" : "frmHPD");
    setWindowTitle(loadText(session, screen.IsSelection() ? Text::SelectAProtector : Text::ProtectorDatabaseTitle));
    sorted_.setSourceModel(&model_);
    sorted_.setSortRole(ProtectorListModel::kSortRole);
    sorted_.setSortLocaleAware(true);
    sorted_.setFilterCaseSensitivity(Qt::CaseInsensitive);

    auto* const sides = new HandySplitter;
    sides->addWidget(listSide());
    sides->addWidget(boxesSide());
    sides->setChildrenCollapsible(false);
    sides->setStretchFactor(0, 1);
    sides->widget(0)->setMinimumWidth(fontMetrics().averageCharWidth() * kListColumns);
    // The list gets all the width that the boxes do not need.
    sides->setSizes({fontMetrics().averageCharWidth() * kColumns, 1});
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(damageBar());
    layout->addWidget(sides, 1);
    layout->addWidget(buttonRow());
    resize(QSize(fontMetrics().averageCharWidth() * kColumns, fontMetrics().height() * kLines)
               .boundedTo(this->screen()->availableSize() * 9 / 10));

    connect(lvwHPD_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] { showSelected(); });
    connect(lvwHPD_, &QTableView::doubleClicked, this, [this] {
        if (screen_.IsSelection()) {
            accept();
        } else if (editing_ == Editing::Nothing && !screen_.IsReadOnly()) {
            edit(Editing::Selected);
        }
    });
    listChanged(std::nullopt);
}

// The bar that says why nothing can be changed and what the user can do about it.
QWidget* frmHPD::damageBar() {
    const Session& session = screen_.session();
    lblDamage_ = new QLabel;
    lblDamage_->setObjectName("lblDamage");
    lblDamage_->setWordWrap(true);
    QPushButton* const cmdSaveReadable = button(session, Text::SaveReadableRecords, "cmdSaveReadable");
    QPushButton* const cmdKeepDamaged = button(session, Text::KeepDamagedFile, "cmdKeepDamaged");
    connect(cmdSaveReadable, &QPushButton::clicked, this, [this] {
        screen_.SaveReadable([this](const std::string& title, const std::string& proposal) {
            const QString name = QFileDialog::getSaveFileName(this, shown(title).remove('&'), shown(proposal));
            return name.isEmpty() ? std::nullopt : std::optional(name.toStdString());
        });
    });
    connect(cmdKeepDamaged, &QPushButton::clicked, this, [this] {
        screen_.KeepDamaged();
        enableControls();
    });
    fraDamage_ = new QFrame;
    fraDamage_->setObjectName("fraDamage");
    fraDamage_->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    auto* const layout = new QHBoxLayout(fraDamage_);
    layout->addWidget(lblDamage_, 1);
    layout->addWidget(cmdSaveReadable);
    layout->addWidget(cmdKeepDamaged);
    return fraDamage_;
}

QWidget* frmHPD::listSide() {
    const Session& session = screen_.session();
    txtSearch_ = new QLineEdit;
    nameControl(*txtSearch_, "txtSearch", loadPlainText(session, Text::SearchProtectors));
    txtSearch_->setClearButtonEnabled(true);
    if (auto* const clear = txtSearch_->findChild<QToolButton*>(); clear != nullptr)
        nameControl(*clear, "cmdClearSearch", loadPlainText(session, Text::Clear));
    lvwHPD_ = new QTableView;
    nameControl(*lvwHPD_, "lvwHPD", loadText(session, Text::ProtectorDatabaseTitle));
    lvwHPD_->setModel(&sorted_);
    lvwHPD_->setSortingEnabled(true);
    lvwHPD_->sortByColumn(0, Qt::AscendingOrder);
    lvwHPD_->setSelectionBehavior(QTableView::SelectRows);
    lvwHPD_->setSelectionMode(QTableView::SingleSelection);
    lvwHPD_->setTabKeyNavigation(false);
    lvwHPD_->setWordWrap(false);
    lvwHPD_->setShowGrid(false);
    lvwHPD_->setAlternatingRowColors(true);
    lvwHPD_->verticalHeader()->hide();
    lvwHPD_->verticalHeader()->setDefaultSectionSize(tableRowHeight(fontMetrics()));
    lvwHPD_->horizontalHeader()->setHighlightSections(false);
    lvwHPD_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    lvwHPD_->horizontalHeader()->setStretchLastSection(true);
    connect(txtSearch_, &QLineEdit::textChanged, this, [this](const QString& text) {
        const std::optional<std::size_t> record = selected();
        sorted_.setFilterFixedString(text);
        select(record);
    });

    auto* const search = new QHBoxLayout;
    search->addWidget(labelOf(session, Text::SearchProtectors, *txtSearch_));
    search->addWidget(txtSearch_, 1);
    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(search);
    layout->addWidget(lvwHPD_, 1);
    return side;
}

QWidget* frmHPD::boxesSide() {
    const Session& session = screen_.session();
    boxes_ = new ProtectorBoxes(screen_);
    chkUS_ = checkBox(session, Text::DisplayingUSValues, "chkUS", screen_.IsUS());
    chkUS_->setVisible(!screen_.IsSelection());
    connect(chkUS_, &QCheckBox::toggled, this, [this](bool isUS) {
        const std::optional<std::size_t> record = selected();
        const ProtectorEntries entries = boxes_->Entries();
        screen_.ShowUS(isUS);
        boxes_->ShowFigures(isUS);
        listChanged(record);
        boxes_->ShowEntries(entries);
    });
    cboCorrectionFactor_ = new QComboBox;
    nameControl(*cboCorrectionFactor_, "cboCorrectionFactor", loadPlainText(session, Text::CorrectionFactorLabel));
    for (const std::string& text : screen_.Corrections())
        cboCorrectionFactor_->addItem(shown(text));
    cboCorrectionFactor_->setCurrentIndex(screen_.Correction());
    connect(cboCorrectionFactor_, &QComboBox::currentTextChanged, this, [this](const QString& text) {
        const std::optional<std::size_t> record = selected();
        screen_.SetCorrection(text.toStdString());
        listChanged(record);
    });
    auto* const fraCorrection = new QWidget;
    fraCorrection->setObjectName("fraCorrection");
    fraCorrection->setVisible(screen_.IsSelection());
    auto* const correction = new QHBoxLayout(fraCorrection);
    correction->setContentsMargins(0, 0, 0, 0);
    correction->addWidget(labelOf(session, Text::CorrectionFactorLabel, *cboCorrectionFactor_));
    correction->addWidget(cboCorrectionFactor_, 1);

    auto* const side = new QWidget;
    auto* const layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(fraCorrection);
    layout->addWidget(boxes_, 1);
    layout->addWidget(chkUS_);
    return side;
}

QWidget* frmHPD::buttonRow() {
    const Session& session = screen_.session();
    cmdAdd_ = button(session, Text::AddButton, "cmdAdd");
    cmdChange_ = button(session, Text::ChangeButton, "cmdChange");
    cmdDelete_ = button(session, Text::DeleteButton, "cmdDelete");
    cmdDownload_ = button(session, Text::DownloadButton, "cmdDownload");
    cmdOK_ = button(session, Text::Ok, "cmdOK");
    cmdCancel_ = button(session, Text::Cancel, "cmdCancel");
    cmdOK_->setDefault(true);
    connect(cmdAdd_, &QPushButton::clicked, this, [this] { edit(Editing::New); });
    connect(cmdChange_, &QPushButton::clicked, this, [this] { edit(Editing::Selected); });
    connect(cmdDelete_, &QPushButton::clicked, this, [this] { deleteSelected(); });
    connect(cmdDownload_, &QPushButton::clicked, this, [this] { downloadDatabase(); });
    connect(cmdOK_, &QPushButton::clicked, this, &frmHPD::accept);
    connect(cmdCancel_, &QPushButton::clicked, this, &frmHPD::reject);

    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton* one : {cmdAdd_, cmdChange_, cmdDelete_, cmdDownload_})
        layout->addWidget(one);
    layout->addStretch(1);
    layout->addWidget(cmdOK_);
    layout->addWidget(cmdCancel_);
    return row;
}

std::optional<std::size_t> frmHPD::selected() const {
    const QModelIndex current = lvwHPD_->currentIndex();
    if (!current.isValid()) return std::nullopt;
    return static_cast<std::size_t>(sorted_.mapToSource(current).row());
}

// Selects the record, or the first one shown.
void frmHPD::select(std::optional<std::size_t> record) {
    QModelIndex index;
    if (record && *record < screen_.Protectors().size())
        index = sorted_.mapFromSource(model_.index(static_cast<int>(*record), 0));
    if (!index.isValid()) index = sorted_.index(0, 0);
    lvwHPD_->setCurrentIndex(index);
    lvwHPD_->scrollTo(index);
    showSelected();
}

void frmHPD::showSelected() {
    if (editing_ == Editing::Nothing) {
        const std::optional<std::size_t> record = selected();
        boxes_->ShowEntries(screen_.EntriesOf(record ? &screen_.Protectors()[*record] : nullptr));
    }
    enableControls();
}

void frmHPD::listChanged(std::optional<std::size_t> record) {
    model_.Refresh();
    select(record);
}

void frmHPD::edit(Editing what) {
    if (what == Editing::Selected && !selected()) return;
    editing_ = what;
    if (what == Editing::New) boxes_->ShowEntries(screen_.EntriesOf(nullptr));
    enableControls();
    if (what != Editing::Nothing) boxes_->FocusName();
}

void frmHPD::enableControls() {
    const bool isEditing = editing_ != Editing::Nothing;
    const bool isSelection = screen_.IsSelection();
    const bool hasSelected = selected().has_value();
    const bool isReadOnly = screen_.IsReadOnly();
    boxes_->SetEditable(isEditing);
    lblDamage_->setText(loadText(screen_.session(), Text::DatabaseNotReadToItsEnd) + "\n\n" + shown(screen_.Damage()));
    fraDamage_->setVisible(isReadOnly && !isSelection);
    lvwHPD_->setEnabled(!isEditing);
    txtSearch_->setEnabled(!isEditing);
    for (QPushButton* one : {cmdAdd_, cmdChange_, cmdDelete_})
        one->setVisible(!isSelection);
    cmdAdd_->setEnabled(!isEditing && !isReadOnly);
    cmdChange_->setEnabled(!isEditing && hasSelected && !isReadOnly);
    cmdDelete_->setEnabled(!isEditing && hasSelected && !isReadOnly);
    cmdDownload_->setEnabled(!isEditing);
    cmdOK_->setVisible(isSelection || isEditing);
    cmdOK_->setEnabled(isEditing || hasSelected);
    cmdCancel_->setText(loadText(screen_.session(), isSelection || isEditing ? Text::Cancel : Text::CloseButton));
    cmdCancel_->setAccessibleName(cmdCancel_->text());
}

void frmHPD::deleteSelected() {
    const std::optional<std::size_t> record = selected();
    if (!record || !screen_.Delete(*record)) return;
    const int row = lvwHPD_->currentIndex().row();
    listChanged(std::nullopt);
    lvwHPD_->setCurrentIndex(sorted_.index(std::min(row, sorted_.rowCount() - 1), 0));
}

void frmHPD::downloadDatabase() {
    if (download_(this)) listChanged(std::nullopt);
}

void frmHPD::accept() {
    const std::optional<std::size_t> record = selected();
    if (screen_.IsSelection()) {
        if (record) choice_ = screen_.Choose(*record);
        if (choice_) QDialog::accept();
        return;
    }
    if (editing_ == Editing::Nothing) return; // such as Enter in the search box
    const auto stored = screen_.Store(boxes_->Entries(), editing_ == Editing::Selected ? record : std::nullopt);
    if (!stored) return;
    editing_ = Editing::Nothing;
    listChanged(stored);
}

void frmHPD::reject() {
    if (editing_ == Editing::Nothing) return QDialog::reject();
    const std::optional<std::size_t> record = selected();
    const bool isNew = editing_ == Editing::New || !record;
    if (!screen_.MayLose(boxes_->Entries(), isNew ? nullptr : &screen_.Protectors()[*record])) return;
    editing_ = Editing::Nothing;
    showSelected();
}

void frmHPD::ShowMaintenanceScreen(Session& session, const Download& download, QWidget* parent) {
    ProtectorScreen screen(session);
    frmHPD(screen, download, parent).exec();
    screen.Close();
}

std::optional<ProtectorChoice> frmHPD::ShowHPDComparisonScreen(Session& session, const clsLog& log,
                                                               const std::string& chosen, const Download& download,
                                                               QWidget* parent) {
    ProtectorScreen screen(session, log);
    frmHPD dialog(screen, download, parent);
    const auto& records = screen.Protectors();
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const clsHP& record) { return record.Name == chosen; });
    if (found != records.end()) dialog.select(static_cast<std::size_t>(found - records.begin()));
    if (parent != nullptr) dialog.move(parent->window()->pos() + kOffset);
    dialog.exec();
    screen.Close();
    return dialog.choice_;
}

} // namespace kestrane
