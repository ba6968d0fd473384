#include "dialogs/frmExport.h"

#include "dialogs/HandySplitter.h"
#include "dialogs/Palettes.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QTableWidget>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(860, 560);
constexpr int kColumnsWidth = 240;
constexpr std::int64_t kPreviewLines = 25;
constexpr int kPatience = 400; // milliseconds before the progress is shown

constexpr Text::Id kContentTexts[] = {Text::ExportAllRows, Text::ExportFileRows, Text::ExportLogRows,
                                      Text::ExportRowsInView, Text::ExportSummary};
constexpr Text::Id kFormatTexts[] = {Text::ExportCsv, Text::ExportXlsx, Text::ExportNdjson};

QString cellText(const ExportCell& cell) {
    if (const auto* text = std::get_if<std::string>(&cell)) return shown(*text);
    if (const auto* number = std::get_if<double>(&cell)) return QString::fromStdString(numberText(*number));
    return {};
}

QVBoxLayout* columnLayout(QWidget& widget) {
    auto* const layout = new QVBoxLayout(&widget);
    layout->setContentsMargins({});
    return layout;
}

} // namespace

frmExport::frmExport(Session& session, ExportSubject subject, QWidget* parent) :
    QDialog(parent), session_(session), dialog_(session, std::move(subject)) {
    setObjectName("frmExport");
    setWindowTitle(loadText(session, Text::ExportTitle));
    auto* const parts = new HandySplitter;
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(choices());
    layout->addWidget(parts, 1);
    parts->addWidget(columns());
    parts->addWidget(preview());
    parts->setChildrenCollapsible(false);
    parts->setStretchFactor(1, 1);
    parts->setSizes({kColumnsWidth, kFirstSize.width() - kColumnsWidth});
    layout->addWidget(target());
    QDialogButtonBox* const buttons = okAndCancel(session);
    cmdOK_ = buttons->button(QDialogButtonBox::Ok);
    cmdOK_->setText(loadText(session, Text::ExportButton));
    cmdOK_->setAccessibleName(loadPlainText(session, Text::ExportButton));
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmExport::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(kFirstSize.boundedTo(screen()->availableSize() * 9 / 10));
    showTable();
}

QWidget* frmExport::choices() {
    cboContent_ = new QComboBox;
    nameControl(*cboContent_, "cboContent", loadPlainText(session_, Text::ExportContentLabel));
    for (const ExportContent content : dialog_.Contents()) {
        cboContent_->addItem(loadText(session_, kContentTexts[static_cast<std::size_t>(content)]),
                             static_cast<int>(content));
        if (content == dialog_.Content()) cboContent_->setCurrentIndex(cboContent_->count() - 1);
    }
    cboFormat_ = new QComboBox;
    nameControl(*cboFormat_, "cboFormat", loadPlainText(session_, Text::ExportFormatLabel));
    for (const Text::Id text : kFormatTexts)
        cboFormat_->addItem(loadText(session_, text));
    cboFormat_->setCurrentIndex(static_cast<int>(dialog_.Format()));
    connect(cboContent_, &QComboBox::currentIndexChanged, this, [this] {
        dialog_.ChooseContent(static_cast<ExportContent>(cboContent_->currentData().toInt()));
        showTable();
    });
    connect(cboFormat_, &QComboBox::currentIndexChanged, this, [this](int format) {
        dialog_.ChooseFormat(kExportFormats[format]);
        showName();
    });
    auto* const bar = new QWidget;
    auto* const form = new QFormLayout(bar);
    form->setContentsMargins({});
    form->addRow(labelOf(session_, Text::ExportContentLabel, *cboContent_), cboContent_);
    form->addRow(labelOf(session_, Text::ExportFormatLabel, *cboFormat_), cboFormat_);
    return bar;
}

QWidget* frmExport::columns() {
    lstColumns_ = new QListWidget;
    nameControl(*lstColumns_, "lstColumns", loadPlainText(session_, Text::ExportColumnsLabel));
    connect(lstColumns_, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) { tick(*item); });
    auto* const buttons = new QHBoxLayout;
    for (const bool isAll : {true, false}) {
        const Text::Id text = isAll ? Text::ExportTickAll : Text::ExportTickNone;
        QPushButton* const button =
            pushButton(session_, text, isAll ? "cmdAll" : "cmdNone", loadPlainText(session_, text));
        connect(button, &QPushButton::clicked, this, [this, isAll] { tickAll(isAll); });
        buttons->addWidget(button);
    }
    auto* const part = new QWidget;
    QVBoxLayout* const layout = columnLayout(*part);
    layout->addWidget(labelOf(session_, Text::ExportColumnsLabel, *lstColumns_));
    layout->addWidget(lstColumns_, 1);
    layout->addLayout(buttons);
    return part;
}

QWidget* frmExport::preview() {
    grdPreview_ = new QTableWidget;
    nameControl(*grdPreview_, "grdPreview", loadPlainText(session_, Text::ExportPreviewLabel));
    grdPreview_->setEditTriggers(QTableWidget::NoEditTriggers);
    grdPreview_->setTabKeyNavigation(false);
    grdPreview_->setWordWrap(false);
    grdPreview_->verticalHeader()->hide();
    grdPreview_->verticalHeader()->setDefaultSectionSize(tableRowHeight(fontMetrics()));
    grdPreview_->horizontalHeader()->setHighlightSections(false);
    lblCounts_ = new QLabel;
    lblCounts_->setObjectName("lblCounts");
    auto* const part = new QWidget;
    QVBoxLayout* const layout = columnLayout(*part);
    layout->addWidget(labelOf(session_, Text::ExportPreviewLabel, *grdPreview_));
    layout->addWidget(grdPreview_, 1);
    layout->addWidget(lblCounts_);
    return part;
}

QWidget* frmExport::target() {
    txtName_ = new QLineEdit;
    nameControl(*txtName_, "txtName", loadPlainText(session_, Text::ExportNameLabel));
    connect(txtName_, &QLineEdit::textEdited, this, [this](const QString& name) {
        dialog_.ChooseName(name.toStdString());
        cmdOK_->setEnabled(dialog_.CanExport());
    });
    QPushButton* const cmdBrowse =
        pushButton(session_, Text::ExportBrowse, "cmdBrowse", loadPlainText(session_, Text::ExportBrowse));
    connect(cmdBrowse, &QPushButton::clicked, this, &frmExport::browse);
    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins({});
    row->addWidget(labelOf(session_, Text::ExportNameLabel, *txtName_));
    row->addWidget(txtName_, 1);
    row->addWidget(cmdBrowse);
    return bar;
}

// The columns and the first lines of another table.
void frmExport::showTable() {
    const ExportTable& table = dialog_.Table();
    QStringList names;
    for (const std::string& name : table.columns())
        names.push_back(QString::fromStdString(name));
    {
        const QSignalBlocker quiet(lstColumns_);
        lstColumns_->clear();
        for (const QString& name : names)
            (new QListWidgetItem(name, lstColumns_))
                ->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        lstColumns_->setCurrentRow(0);
    }
    grdPreview_->clear();
    grdPreview_->setRowCount(0);
    grdPreview_->setColumnCount(static_cast<int>(names.size()));
    grdPreview_->setHorizontalHeaderLabels(names);
    table.forEachLine(
        [this](std::span<const ExportCell> cells) {
            const int row = grdPreview_->rowCount();
            grdPreview_->insertRow(row);
            for (std::size_t i = 0; i < cells.size(); ++i)
                grdPreview_->setItem(row, static_cast<int>(i), new QTableWidgetItem(cellText(cells[i])));
        },
        [](std::int64_t done) { return done < kPreviewLines; });
    grdPreview_->resizeColumnsToContents();
    showTicks();
    showName();
}

void frmExport::showTicks() {
    const QSignalBlocker quiet(lstColumns_);
    int ticked = 0;
    for (int i = 0; i < lstColumns_->count(); ++i) {
        const bool isTicked = dialog_.IsTicked(dialog_.Table().columns()[static_cast<std::size_t>(i)]);
        lstColumns_->item(i)->setCheckState(isTicked ? Qt::Checked : Qt::Unchecked);
        grdPreview_->setColumnHidden(i, !isTicked);
        ticked += isTicked ? 1 : 0;
    }
    const std::string lines = std::to_string(dialog_.Table().lines());
    const std::string counts = ReplaceText(session_.LoadText(Text::ExportCounts), "^", lines);
    lblCounts_->setText(shown(ReplaceText(counts, "*", std::to_string(ticked))));
    cmdOK_->setEnabled(dialog_.CanExport());
}

void frmExport::showName() {
    txtName_->setText(QString::fromStdString(dialog_.Name()));
    cmdOK_->setEnabled(dialog_.CanExport());
}

void frmExport::tick(const QListWidgetItem& item) {
    dialog_.Tick(item.text().toStdString(), item.checkState() == Qt::Checked);
    showTicks();
}

void frmExport::tickAll(bool areTicked) {
    for (const std::string& column : dialog_.Table().columns())
        dialog_.Tick(column, areTicked);
    showTicks();
}

void frmExport::browse() {
    const QStringList filters = fileFilter(session_.LoadText(Text::ExportFilter)).split(";;");
    const QString name = QFileDialog::getSaveFileName(this, loadText(session_, Text::ExportTitle), txtName_->text(),
                                                      filters.value(static_cast<int>(dialog_.Format())), nullptr,
                                                      QFileDialog::DontConfirmOverwrite); // exporting asks
    if (name.isEmpty()) return;
    dialog_.ChooseName(name.toStdString());
    showName();
}

void frmExport::accept() {
    QProgressDialog progress(QString(), loadPlainText(session_, Text::Cancel), 0, 0, this);
    progress.reset(); // otherwise it would appear by itself after a while
    progress.setWindowTitle(loadText(session_, Text::ExportTitle));
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(kPatience);
    progress.setMaximum(static_cast<int>(dialog_.Table().lines()));
    const std::string words =
        ReplaceText(session_.LoadText(Text::Exporting), "*", std::to_string(dialog_.Table().lines()));
    const bool isWritten = dialog_.Export([&](std::int64_t done) {
        progress.setLabelText(shown(ReplaceText(words, "^", std::to_string(done))));
        progress.setValue(static_cast<int>(done));
        return !progress.wasCanceled();
    });
    progress.reset();
    if (isWritten) QDialog::accept();
}

} // namespace kestrane
