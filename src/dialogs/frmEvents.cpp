#include "dialogs/frmEvents.h"

#include "dialogs/CellTableModel.h"
#include "dialogs/Words.h"
#include "views/CopyData.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include <utility>

namespace kestrane {

namespace {

constexpr QSize kSize(560, 300);
constexpr double kMostLevel = 200;     // dB
constexpr double kMostSeconds = 86400; // a day

} // namespace

frmEvents::frmEvents(const clsLog& log, AnalysedRows rows, Owner owner, QWidget* parent) :
    QDialog(parent), log_(log), rows_(std::move(rows)), owner_(std::move(owner)) {
    const Session& session = log.session();
    setObjectName("frmEvents");
    setWindowTitle(shown(ReplaceText(session.LoadText(Text::EventsTitle), "^", log.Name)).simplified());
    level_ = numberBox("txtLevel", Text::EventLevel, kMostLevel);
    level_->setDecimals(1);
    level_->setValue(log.Criterion);
    seconds_ = numberBox("txtSeconds", Text::EventSeconds, kMostSeconds);
    seconds_->setDecimals(0);
    model_ = new CellTableModel({}, this);
    table_ = readTable(*model_, "tblEvents", windowTitle());
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    summary_ = new QLabel;
    summary_->setObjectName("lblSummary");

    auto* const fields = new QHBoxLayout;
    for (const auto& [box, label] : {std::pair(level_, Text::EventLevel), std::pair(seconds_, Text::EventSeconds)}) {
        fields->addWidget(labelOf(session, label, *box));
        fields->addWidget(box);
        connect(box, &QDoubleSpinBox::valueChanged, this, &frmEvents::find);
    }
    fields->addStretch();
    auto* const buttons = new QDialogButtonBox;
    QPushButton* const copy =
        pushButton(session, Text::CommandCopy, "cmdCopy", loadPlainText(session, Text::CommandCopy));
    QPushButton* const close = pushButton(session, Text::CloseButton, "cmdClose", loadText(session, Text::CloseButton));
    buttons->addButton(copy, QDialogButtonBox::ActionRole);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, [this] { owner_.copy(copiedCells(events_->Table())); });
    auto* const column = new QVBoxLayout(this);
    column->addLayout(fields);
    column->addWidget(table_, 1);
    column->addWidget(summary_);
    column->addWidget(buttons);
    find();
    connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this](const QModelIndex& event) {
        if (event.isValid()) owner_.mark(events_->RowsOf(static_cast<std::size_t>(event.row())));
    });
    resize(kSize);
    table_->setFocus();
}

QDoubleSpinBox* frmEvents::numberBox(const char* name, Text::Id label, double most) {
    auto* const box = new QDoubleSpinBox;
    nameControl(*box, name, loadPlainText(log_.session(), label));
    box->setRange(0, most);
    return box;
}

void frmEvents::find() {
    events_ = std::make_unique<EventTable>(log_, rows_, EventRule{level_->value(), seconds_->value()});
    model_->ShowTable(events_->Table());
    table_->resizeColumnsToContents();
    summary_->setText(shown(events_->Summary()));
}

} // namespace kestrane
