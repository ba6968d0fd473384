#include "dialogs/frmChartTable.h"

#include "dialogs/CellTableModel.h"
#include "dialogs/Words.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <utility>

namespace kestrane {

namespace {

constexpr QSize kSize(720, 480);

} // namespace

CellTable chartCells(std::shared_ptr<const ChartData> chart, const Locale& locale) {
    const auto values = std::make_shared<ChartTable>(*chart, locale);
    CellTable table;
    table.RowCount = chart->RowCount;
    table.Captions.push_back(chart->CategoryTitle);
    for (std::size_t column = 1; column < values->ColumnCount(); ++column)
        table.Captions.push_back(values->Caption(column));
    table.Cell = [chart = std::move(chart), values](std::size_t row, std::size_t column) {
        return values->Cell(row, column);
    };
    return table;
}

void ShowChartTable(const Session& session, std::shared_ptr<const ChartData> chart, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName("frmChartTable");
    dialog.setWindowTitle(shown(ReplaceText(session.LoadText(Text::ChartTableTitle), "^", chart->Title)).simplified());
    auto* const model = new CellTableModel(chartCells(std::move(chart), session.locale), &dialog);
    QTableView* const table = readTable(*model, "tblValues", dialog.windowTitle());
    auto* const buttons = new QDialogButtonBox;
    QPushButton* const close = pushButton(session, Text::CloseButton, "cmdClose", loadText(session, Text::CloseButton));
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* const layout = new QVBoxLayout(&dialog);
    layout->addWidget(table);
    layout->addWidget(buttons);
    dialog.resize(kSize);
    table->setFocus();
    dialog.exec();
}

} // namespace kestrane
