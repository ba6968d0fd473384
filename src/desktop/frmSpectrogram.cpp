#include "desktop/frmSpectrogram.h"

#include "charts/chaTab.h"
#include "dialogs/CellTableModel.h"
#include "dialogs/HandySplitter.h"
#include "dialogs/Words.h"
#include "dialogs/frmChartTable.h"
#include "dialogs/frmPicture.h"
#include "model/Session.h"
#include "views/ChartSummary.h"
#include "views/CopyData.h"
#include "views/Spectrogram.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

#include <utility>

namespace kestrane {

namespace {

constexpr QSize kSize(1000, 600);
constexpr int kSpectrum = 400; // pixels of the width

chaTab* newChart(const Session& session, const char* name) {
    auto* const chart =
        new chaTab(session.locale, [&session](const ChartData& data) { return chartSummary(session, data); });
    chart->setObjectName(name);
    return chart;
}

} // namespace

frmSpectrogram::frmSpectrogram(const clsLog& log, Owner owner, QWidget* parent) :
    QDialog(parent), log_(log), owner_(std::move(owner)) {
    Session& session = log.session();
    setObjectName("frmSpectrogram");
    setWindowTitle(shown(ReplaceText(session.LoadText(Text::SpectrogramTitle), "^", log.Name)).simplified());
    chart_ = newChart(session, "chaSpectrogram");
    auto* const splitter = new HandySplitter;
    splitter->addWidget(chart_);
    splitter->addWidget(spectrumColumn());
    splitter->setStretchFactor(0, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({kSize.width() - kSpectrum, kSpectrum});

    auto* const buttons = new QDialogButtonBox;
    const auto add = [&](Text::Id text, const char* name, QDialogButtonBox::ButtonRole role, auto act) {
        QPushButton* const button = pushButton(session, text, name, loadPlainText(session, text));
        buttons->addButton(button, role);
        connect(button, &QPushButton::clicked, this, act);
    };
    add(Text::CommandCopy, "cmdCopy", QDialogButtonBox::ActionRole, [this] { copy(); });
    add(Text::CommandExportPicture, "cmdPicture", QDialogButtonBox::ActionRole,
        [this, &session] { frmPicture::Export(session, log_.Name, chart_->pictureWriter(), this); });
    add(Text::CommandPrint, "cmdPrint", QDialogButtonBox::ActionRole, [this] {
        owner_.print({chart_->onPage(), {}}, this);
    });
    add(Text::CloseButton, "cmdClose", QDialogButtonBox::RejectRole, [this] { reject(); });
    makeWeights();
    auto* const fields = new QHBoxLayout;
    fields->addWidget(labelOf(session, Text::FrequencyWeighting, *weights_));
    fields->addWidget(weights_);
    fields->addStretch();
    auto* const column = new QVBoxLayout(this);
    column->addLayout(fields);
    column->addWidget(splitter, 1);
    column->addWidget(buttons);
    connect(chart_, &chaTab::RowRead, this, [this] {
        if (const auto row = chart_->readRow()) row_ = *row;
        showSpectrum();
    });
    showWeighted();
    resize(kSize);
    chart_->setFocus();
}

QWidget* frmSpectrogram::spectrumColumn() {
    spectrum_ = newChart(log_.session(), "chaSpectrum");
    figures_ = new CellTableModel({}, this);
    QTableView* const table = readTable(*figures_, "tblSpectrum", windowTitle());
    auto* const column = new HandySplitter(Qt::Vertical);
    column->addWidget(spectrum_);
    column->addWidget(table);
    column->setStretchFactor(0, 2);
    column->setStretchFactor(1, 1);
    column->setChildrenCollapsible(false);
    return column;
}

// At first the levels are shown as they were measured.
void frmSpectrogram::makeWeights() {
    weights_ = new QComboBox;
    nameControl(*weights_, "cboWeight", loadPlainText(log_.session(), Text::FrequencyWeighting));
    weights_->addItems({"Z", "A", "C"});
    weights_->setCurrentText(log_.FreqWeightA().empty() ? "Z" : shown(log_.FreqWeightA()));
    connect(weights_, &QComboBox::currentIndexChanged, this, &frmSpectrogram::showWeighted);
}

std::string frmSpectrogram::weight() const {
    return weights_->currentText().toStdString();
}

void frmSpectrogram::showWeighted() {
    chart_->setChart(spectrogramChart(log_, weight()));
    showSpectrum();
}

void frmSpectrogram::showSpectrum() {
    spectrum_->setChart(spectrumChart(log_, row_, weight()));
    figures_->ShowTable(chartCells(spectrum_->onPage().Data, log_.session().locale));
}

// The spectrogram as a picture, the spectrum as text.
void frmSpectrogram::copy() const {
    ClipboardForms forms = copiedValues(spectrum_->chart(), log_.session().locale);
    forms.Png = chart_->pictureBytes(".png", chart_->size()).toStdString();
    forms.Svg = chart_->pictureBytes(".svg", chart_->size()).toStdString();
    owner_.copy(forms);
}

} // namespace kestrane
