#include "dialogs/frmChartTable.h"

#include "dialogs/Words.h"

#include <QAbstractTableModel>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr QSize kSize(720, 480);

// Makes the text of a cell when the cell is drawn.
class ChartTableModel : public QAbstractTableModel {
public:
    ChartTableModel(std::shared_ptr<const ChartData> chart, Locale locale, QObject* parent) :
        QAbstractTableModel(parent), chart_(std::move(chart)), table_(*chart_, std::move(locale)) {}

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(chart_->RowCount);
    }

    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(table_.ColumnCount());
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignCenter);
        if (role != Qt::DisplayRole) return {};
        return QString::fromStdString(
            table_.Cell(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column())));
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return QAbstractTableModel::headerData(section, orientation, role);
        const std::string caption = table_.Caption(static_cast<std::size_t>(section));
        return QString::fromStdString(section == 0 ? chart_->CategoryTitle : caption);
    }

private:
    std::shared_ptr<const ChartData> chart_;
    ChartTable table_;
};

} // namespace

void ShowChartTable(const Session& session, std::shared_ptr<const ChartData> chart, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setWindowTitle(shown(ReplaceText(session.LoadText(Text::ChartTableTitle), "^", chart->Title)).simplified());
    auto* const table = new QTableView;
    nameControl(*table, "tblValues", dialog.windowTitle());
    table->setModel(new ChartTableModel(std::move(chart), session.locale, table));
    table->setTabKeyNavigation(false);
    table->setWordWrap(false);
    table->setAlternatingRowColors(true);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setHighlightSections(false);
    table->resizeColumnsToContents();
    if (table->model()->rowCount() > 0) table->setCurrentIndex(table->model()->index(0, 0));
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
