#include "desktop/frmRank.h"

#include "charts/chaTab.h"
#include "desktop/ChartDrag.h"
#include "desktop/frmPreview.h"
#include "dialogs/DragOffers.h"
#include "dialogs/HandySplitter.h"
#include "dialogs/Palettes.h"
#include "dialogs/SignalColours.h"
#include "dialogs/Words.h"
#include "dialogs/frmPicture.h"
#include "platform/Format.h"
#include "platform/desktop/QtClipboard.h"
#include "reports/ViewPages.h"
#include "views/ChartSummary.h"
#include "views/CopyData.h"
#include "views/HPDChart.h"
#include "views/LogTabs.h"

#include <QBoxLayout>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>

#include <algorithm>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(1180, 720); // as far as the screen is larger
constexpr QSize kPicture(1200, 700);
constexpr double kPercent = 100;

} // namespace

std::optional<ProtectorChoice> frmRank::Choose(Session& session, const clsFile& file, const clsLog& log,
                                               CorrectionKind iCorrectionFactor, QWidget* parent) {
    frmRank dialog(session, file, log, iCorrectionFactor, parent);
    if (dialog.exec() != Accepted) return std::nullopt;
    const std::vector<std::size_t> rows = dialog.selected();
    if (rows.size() != 1) return std::nullopt;
    return ProtectorChoice{*dialog.ranks_.Rows[rows.front()].Protector, iCorrectionFactor};
}

frmRank::frmRank(Session& session, const clsFile& file, const clsLog& log, CorrectionKind iCorrectionFactor,
                 QWidget* parent) :
    QDialog(parent), session_(session), file_(file), log_(log), correction_(iCorrectionFactor) {
    setObjectName("frmRank");
    setWindowTitle(loadText(session, Text::RankTitle));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    grdRanks_ = new QTableWidget;
    nameControl(*grdRanks_, "grdRanks", loadText(session, Text::RankTitle));
    grdRanks_->setEditTriggers(QTableWidget::NoEditTriggers);
    grdRanks_->setSelectionBehavior(QTableWidget::SelectRows);
    grdRanks_->setTabKeyNavigation(false);
    grdRanks_->setWordWrap(false);
    grdRanks_->setAlternatingRowColors(true);
    grdRanks_->verticalHeader()->setDefaultSectionSize(tableRowHeight(fontMetrics()));
    allowDragging(
        *grdRanks_, [this] { return copiedLines(rankText(ranks_), true); }, session.LoadText(Text::RankTitle));
    chart_ = new chaTab(session.locale, [this](const ChartData& chart) { return chartSummary(session_, chart); });
    chart_->setObjectName("chart");
    allowDragging(*chart_);
    auto* const parts = new HandySplitter(Qt::Vertical);
    parts->addWidget(grdRanks_);
    parts->addWidget(chart_);
    parts->setChildrenCollapsible(false);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(topBar());
    layout->addWidget(parts, 1);
    layout->addWidget(bottomBar());
    resize(kFirstSize.boundedTo(screen()->availableSize() * 9 / 10));
    connect(grdRanks_, &QTableWidget::itemSelectionChanged, this, &frmRank::showSelected);
    connect(grdRanks_, &QTableWidget::itemDoubleClicked, this, &QDialog::accept);
    showRanks();
}

QWidget* frmRank::topBar() {
    spnWorn_ = new QDoubleSpinBox;
    nameControl(*spnWorn_, "spnWorn", loadPlainText(session_, Text::WornLabel));
    spnWorn_->setRange(0, kPercent);
    spnWorn_->setDecimals(0);
    spnWorn_->setValue(kPercent);
    spnWorn_->setKeyboardTracking(false);
    connect(spnWorn_, &QDoubleSpinBox::valueChanged, this, &frmRank::showRanks);
    lblBoth_ = new QLabel;
    lblBoth_->setObjectName("lblBoth");
    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins({});
    row->addWidget(labelOf(session_, Text::WornLabel, *spnWorn_));
    row->addWidget(spnWorn_);
    row->addSpacing(row->spacing() * 2);
    row->addWidget(lblBoth_, 1);
    return bar;
}

QWidget* frmRank::bottomBar() {
    const auto button = [this](Text::Id text, const char* name) {
        return pushButton(session_, text, name, loadPlainText(session_, text));
    };
    QPushButton* const cmdCopy = button(Text::CommandCopy, "cmdCopy");
    QPushButton* const cmdPicture = button(Text::CommandExportPicture, "cmdPicture");
    QPushButton* const cmdPrint = button(Text::CommandPrintPreview, "cmdPrint");
    cmdOK_ = button(Text::Ok, "cmdOK");
    QPushButton* const cmdCancel = button(Text::Cancel, "cmdCancel");
    connect(cmdCopy, &QPushButton::clicked, this, &frmRank::copy);
    connect(cmdPicture, &QPushButton::clicked, this,
            [this] { frmPicture::Export(session_, log_.Name, chart_->pictureWriter(), this); });
    connect(cmdPrint, &QPushButton::clicked, this, &frmRank::print);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins({});
    row->addWidget(cmdCopy);
    row->addWidget(cmdPicture);
    row->addWidget(cmdPrint);
    row->addStretch(1);
    row->addWidget(cmdOK_);
    row->addWidget(cmdCancel);
    return bar;
}

void frmRank::showRanks() {
    std::vector<const clsHP*> chosen;
    for (const std::size_t row : selected())
        chosen.push_back(ranks_.Rows[row].Protector);
    ranks_ =
        rankTable(log_, session_.protectors->Protectors, session_.Options, correction_, spnWorn_->value() / kPercent);
    grdRanks_->clear();
    grdRanks_->setColumnCount(static_cast<int>(ranks_.Captions.size()));
    grdRanks_->setRowCount(static_cast<int>(ranks_.Rows.size()));
    QStringList captions;
    for (const std::string& caption : ranks_.Captions)
        captions.push_back(shown(caption));
    grdRanks_->setHorizontalHeaderLabels(captions);
    for (std::size_t row = 0; row < ranks_.Rows.size(); ++row) {
        for (std::size_t column = 0; column < ranks_.Captions.size(); ++column) {
            auto* const item = new QTableWidgetItem(shown(ranks_.Rows[row].Cells[column]));
            if (column == ranks_.VerdictColumn)
                item->setForeground(signalColour(signalOf(ranks_.Rows[row].Verdict), palette()));
            grdRanks_->setItem(static_cast<int>(row), static_cast<int>(column), item);
        }
    }
    grdRanks_->resizeColumnsToContents();
    chart_->setChart(rankChart(log_, ranks_));
    select(chosen);
    showSelected();
}

// Selects the rows of these protectors; without any, the first row.
void frmRank::select(const std::vector<const clsHP*>& chosen) {
    QItemSelection rows;
    for (std::size_t row = 0; row < ranks_.Rows.size(); ++row) {
        const QModelIndex index = grdRanks_->model()->index(static_cast<int>(row), 0);
        const bool isChosen = chosen.empty() ? row == 0 : std::ranges::count(chosen, ranks_.Rows[row].Protector) > 0;
        if (isChosen) rows.select(index, index);
    }
    grdRanks_->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    if (!rows.isEmpty())
        grdRanks_->setCurrentItem(grdRanks_->item(rows.indexes().front().row(), 0), QItemSelectionModel::NoUpdate);
}

std::vector<std::size_t> frmRank::selected() const {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : grdRanks_->selectionModel()->selectedRows())
        rows.push_back(static_cast<std::size_t>(index.row()));
    std::ranges::sort(rows);
    return rows;
}

void frmRank::showSelected() {
    const std::vector<std::size_t> rows = selected();
    cmdOK_->setEnabled(rows.size() == 1);
    if (rows.size() != 2) return lblBoth_->setText(loadText(session_, Text::RankChoose));
    const auto both = levelUnderBoth(ranks_, ranks_.Rows[rows[0]], ranks_.Rows[rows[1]]);
    if (!both) return lblBoth_->setText(loadText(session_, Text::RankNotTogether));
    lblBoth_->setText(
        shown(ReplaceText(session_.LoadText(Text::RankBoth), "^", formatNumber(*both, "##0.0", session_.locale))) +
        " - " + shown(verdictText(session_, verdictOf(*both, session_.Options.ActionLevel))));
}

// The list as text and table, and the chart as a picture.
void frmRank::copy() const {
    ClipboardForms forms = copiedLines(rankText(ranks_), true);
    const QByteArray picture = chart_->pictureBytes(".png", kPicture);
    forms.Png.assign(picture.begin(), picture.end());
    QtClipboard().Set(forms);
}

void frmRank::print() {
    Printers printers;
    const auto view = [this](const PageMetrics& paper) {
        return PrintedView{file_, log_, eTabCompareHPD, false, paper};
    };
    frmPreview(session_,
               {{Text::RankTitle, [&](const PageMetrics& paper) { return rankPages(view(paper), ranks_); }},
                {Text::RankChartTitle,
                 [&](const PageMetrics& paper) { return chartPages(view(paper), chart_->onPage(), ranks_.Note); }}},
               printers, this)
        .exec();
}

} // namespace kestrane
