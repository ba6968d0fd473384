#include "desktop/frmDistribution.h"

#include "charts/chaTab.h"
#include "desktop/ChartDrag.h"
#include "dialogs/CellTableModel.h"
#include "dialogs/HandySplitter.h"
#include "dialogs/Words.h"
#include "views/ChartSummary.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>

#include <utility>

namespace kestrane {

namespace {

constexpr QSize kSize(980, 560);
constexpr double kUsualWidth = 1; // dB
constexpr double kMostPercent = 100;
constexpr auto kUsualPercents = "1 10 50 90 99";

} // namespace

frmDistribution::frmDistribution(const clsLog& log, std::vector<AnalysedRow> rows, std::string place, Owner owner,
                                 QWidget* parent) :
    QDialog(parent), log_(log), rows_(std::move(rows)), place_(std::move(place)), owner_(std::move(owner)) {
    const Session& session = log.session();
    setObjectName("frmDistribution");
    setWindowTitle(shown(ReplaceText(session.LoadText(Text::DistributionTitle), "^", log.Name)).simplified());
    chart_ = new chaTab(session.locale, [&session](const ChartData& chart) { return chartSummary(session, chart); });
    chart_->setObjectName("chaDistribution");
    allowDragging(*chart_);
    model_ = new CellTableModel({}, this);
    table_ = readTable(*model_, "tblDistribution", windowTitle());
    auto* const splitter = new HandySplitter;
    splitter->addWidget(chart_);
    splitter->addWidget(table_);
    splitter->setStretchFactor(0, 1);
    splitter->setChildrenCollapsible(false);

    auto* const buttons = new QDialogButtonBox;
    const auto add = [&](Text::Id text, const char* name, QDialogButtonBox::ButtonRole role, auto act) {
        QPushButton* const button = pushButton(session, text, name, loadPlainText(session, text));
        buttons->addButton(button, role);
        connect(button, &QPushButton::clicked, this, act);
    };
    add(Text::CommandCopy, "cmdCopy", QDialogButtonBox::ActionRole,
        [this] { owner_.copy(copiedDistribution(log_, percentiles(), table())); });
    add(Text::CommandPrint, "cmdPrint", QDialogButtonBox::ActionRole, [this] {
        owner_.print({chart_->onPage(), table(), percentiles()}, this);
    });
    add(Text::CloseButton, "cmdClose", QDialogButtonBox::RejectRole, [this] { reject(); });
    auto* const column = new QVBoxLayout(this);
    makeFields();
    column->addWidget(splitter, 1);
    column->addWidget(levels_);
    column->addWidget(buttons);
    showClasses();
    showPercentiles();
    resize(kSize);
    const int wholeTable = table_->horizontalHeader()->length() + table_->verticalScrollBar()->sizeHint().width();
    splitter->setSizes({kSize.width() - wholeTable, wholeTable});
    width_->setFocus();
}

void frmDistribution::makeFields() {
    const Session& session = log_.session();
    width_ = new QDoubleSpinBox;
    nameControl(*width_, "txtWidth", loadPlainText(session, Text::ClassWidth));
    width_->setDecimals(1);
    width_->setRange(kFinestClass, kWidestClass);
    width_->setValue(kUsualWidth);
    percents_ = new QLineEdit(kUsualPercents);
    nameControl(*percents_, "txtPercents", loadText(session, Text::ExceededPercent));
    levels_ = new QLabel;
    levels_->setObjectName("lblPercentiles"); // without an accessible name, so that its text is read out
    levels_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    levels_->setWordWrap(true);
    auto* const fields = new QHBoxLayout;
    fields->addWidget(labelOf(session, Text::ClassWidth, *width_));
    fields->addWidget(width_);
    fields->addWidget(labelOf(session, Text::ExceededPercent, *percents_));
    fields->addWidget(percents_);
    fields->addStretch();
    qobject_cast<QVBoxLayout*>(layout())->insertLayout(0, fields);
    connect(width_, &QDoubleSpinBox::valueChanged, this, &frmDistribution::showClasses);
    connect(percents_, &QLineEdit::textChanged, this, &frmDistribution::showPercentiles);
}

void frmDistribution::showClasses() {
    ChartData chart = distributionChart(log_, rows_, width_->value());
    if (!place_.empty()) chart.Title += " - " + place_;
    chart_->setChart(std::move(chart));
    model_->ShowTable(table());
    table_->resizeColumnsToContents();
}

CellTable frmDistribution::table() const {
    return distributionTable(log_, rows_, width_->value());
}

TypedNumbers frmDistribution::typedPercents() const {
    return typedNumbers(percents_->text().toStdString(), kMostPercent, log_.session().locale);
}

std::string frmDistribution::percentiles() const {
    return percentileText(log_.session(), rows_, typedPercents().Numbers);
}

void frmDistribution::showPercentiles() {
    const std::string others = typedPercents().Others;
    std::string text = percentiles();
    if (!others.empty()) text += "\n" + ReplaceText(log_.session().LoadText(Text::NoPercentages), "^", others);
    levels_->setText(shown(text));
}

} // namespace kestrane
