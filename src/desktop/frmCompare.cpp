#include "desktop/frmCompare.h"

#include "charts/chaTab.h"
#include "desktop/ChartDrag.h"
#include "dialogs/CellTableModel.h"
#include "dialogs/Words.h"
#include "model/Captions.h"
#include "model/clsFile.h"
#include "views/ChartSummary.h"
#include "views/CopyData.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr QSize kSize(980, 600);
constexpr int kWidestList = 360; // pixels
constexpr int kTableLines = 7;

} // namespace

frmCompare::frmCompare(const Session& session, const clsLog* first, Owner owner, QWidget* parent) :
    QDialog(parent), session_(session), owner_(std::move(owner)) {
    setObjectName("frmCompare");
    setWindowTitle(loadText(session, Text::CompareTitle));
    chart_ = new chaTab(session.locale, [&session](const ChartData& chart) { return chartSummary(session, chart); });
    chart_->setObjectName("chaCompare");
    allowDragging(*chart_);
    model_ = new CellTableModel({}, this);
    table_ = readTable(*model_, "tblCompare", windowTitle());
    table_->setMaximumHeight(fontMetrics().lineSpacing() * 2 * kTableLines);
    list_ = new QListWidget;
    nameControl(*list_, "lstLogs", loadPlainText(session, Text::CompareChoose));
    fillList(first);
    const int room = 2 * list_->frameWidth() + list_->verticalScrollBar()->sizeHint().width();
    list_->setFixedWidth(std::min(list_->sizeHintForColumn(0) + room, kWidestList));

    auto* const buttons = new QDialogButtonBox;
    const auto add = [&](Text::Id text, const char* name, QDialogButtonBox::ButtonRole role, auto act) {
        QPushButton* const button = pushButton(session, text, name, loadPlainText(session, text));
        buttons->addButton(button, role);
        connect(button, &QPushButton::clicked, this, act);
    };
    add(Text::CommandCopy, "cmdCopy", QDialogButtonBox::ActionRole,
        [this] { owner_.copy(copiedCells(comparedTable(session_, compared_))); });
    add(Text::CommandPrint, "cmdPrint", QDialogButtonBox::ActionRole, [this] { owner_.print(printed(), this); });
    add(Text::CloseButton, "cmdClose", QDialogButtonBox::RejectRole, [this] { reject(); });
    auto* const left = new QVBoxLayout;
    left->addWidget(labelOf(session, Text::CompareChoose, *list_));
    left->addWidget(list_, 1);
    auto* const right = new QVBoxLayout;
    right->addWidget(axes());
    right->addWidget(chart_, 1);
    right->addWidget(table_);
    auto* const row = new QHBoxLayout;
    row->addLayout(left);
    row->addLayout(right, 1);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(row, 1);
    column->addWidget(buttons);
    connect(list_, &QListWidget::itemChanged, this, &frmCompare::choose);
    choose();
    resize(kSize);
    list_->setFocus();
}

void frmCompare::fillList(const clsLog* first) {
    for (const auto& file : session_.OpenFiles) {
        const QString name = QFileInfo(shown(file->FileName)).completeBaseName();
        for (const auto& collection : file->InstrumentDatas) {
            forEachLog(*collection, [&](const clsLog& log) {
                if (log.IsBusy() || log.LogIntervals.Count() == 0) return;
                auto* const item = new QListWidgetItem(shown(captioned(session_, name.toStdString(), log.Name)), list_);
                item->setCheckState(&log == first ? Qt::Checked : Qt::Unchecked);
                offered_.push_back({&log, file.get()});
            });
        }
    }
    list_->setCurrentRow(0);
}

QWidget* frmCompare::axes() {
    auto* const box = new QWidget;
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    auto* const group = new QButtonGroup(box);
    for (const auto& [by, text, name] : {std::tuple(CompareBy::TimeOfDay, Text::CompareByClock, "optClock"),
                                         std::tuple(CompareBy::Start, Text::CompareFromStart, "optStart"),
                                         std::tuple(CompareBy::Band, Text::CompareByBand, "optBand")}) {
        group->addButton(radioButton(session_, text, name, by == by_), static_cast<int>(by));
        row->addWidget(group->button(static_cast<int>(by)));
    }
    row->addStretch();
    onChosen(*group, [this](int by) {
        by_ = static_cast<CompareBy>(by);
        showChosen();
    });
    return box;
}

// Takes the logs that are ticked. When they are as many as can be compared, no other can be ticked.
void frmCompare::choose() {
    std::vector<ComparedLog> compared;
    for (int i = 0; i < list_->count(); ++i) {
        const clsLog* const log = offered_[static_cast<std::size_t>(i)].Log;
        if (list_->item(i)->checkState() != Qt::Checked || compared.size() == kMostCompared) continue;
        const auto known =
            std::ranges::find_if(compared_, [log](const ComparedLog& before) { return before.Log == log; });
        compared.push_back({log, list_->item(i)->text().toStdString(),
                            known != compared_.end() ? std::move(known->Rows) : analysedRows(*log)});
    }
    compared_ = std::move(compared);
    const QSignalBlocker blocker(list_);
    const bool isFull = compared_.size() == kMostCompared;
    for (int i = 0; i < list_->count(); ++i) {
        QListWidgetItem* const item = list_->item(i);
        const bool isOffered = !isFull || item->checkState() == Qt::Checked;
        item->setFlags(isOffered ? item->flags() | Qt::ItemIsEnabled : item->flags() & ~Qt::ItemIsEnabled);
    }
    showChosen();
}

PrintedChart frmCompare::printed() const {
    std::string names;
    int files = 0;
    const clsFile* last = nullptr;
    for (const Offered& offered : offered_) {
        if (offered.File == last || std::ranges::find(compared_, offered.Log, &ComparedLog::Log) == compared_.end())
            continue;
        last = offered.File;
        ++files;
        names += (names.empty() ? "" : ", ") + last->ShortenedFileName();
    }
    // The foot of a page has no room for many names, so they stand below the chart, too.
    return {chart_->onPage(), comparedTable(session_, compared_), files > 1 ? names : std::string(), names};
}

void frmCompare::showChosen() {
    chart_->setChart(comparisonChart(session_, compared_, by_));
    model_->ShowTable(comparedTable(session_, compared_));
    table_->resizeColumnsToContents();
}

} // namespace kestrane
