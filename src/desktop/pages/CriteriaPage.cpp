#include "desktop/pages/CriteriaPage.h"

#include "dialogs/Words.h"
#include "platform/desktop/DragOut.h"
#include "views/CopyData.h"

#include <QHeaderView>
#include <QTableWidget>

namespace kestrane {

CriteriaPage::CriteriaPage(Session& session, ExplorerState& state) : LogPage(session, state, eTabCriteria) {
    grid_ = new QTableWidget;
    nameControl(*grid_, "grdCriteria", loadText(session, Text::TabCriteria));
    grid_->setEditTriggers(QTableWidget::NoEditTriggers);
    grid_->setTabKeyNavigation(false);
    grid_->setAlternatingRowColors(true);
    grid_->verticalHeader()->hide();
    grid_->horizontalHeader()->setStretchLastSection(true);
    fillWith(*grid_);
    allowDragging(*grid_->viewport(), onSelection(*grid_));
}

void CriteriaPage::Draw(clsLog& inView) {
    table_ = criteriaTable(inView);
    QStringList captions;
    for (const std::string& caption : table_.Captions)
        captions.push_back(shown(caption));
    grid_->clear();
    grid_->setColumnCount(static_cast<int>(captions.size()));
    grid_->setRowCount(static_cast<int>(table_.Rows.size()));
    grid_->setHorizontalHeaderLabels(captions);
    for (int row = 0; row < grid_->rowCount(); ++row) {
        const std::vector<std::string>& cells = table_.Rows[static_cast<std::size_t>(row)];
        for (int column = 0; column < grid_->columnCount(); ++column) {
            auto* const item = new QTableWidgetItem(shown(cells[static_cast<std::size_t>(column)]));
            item->setToolTip(item->text());
            grid_->setItem(row, column, item);
        }
    }
    grid_->resizeColumnsToContents();
    grid_->resizeRowsToContents();
}

ClipboardForms CriteriaPage::Copy(const clsLog&, bool) const {
    return copiedLines(criteriaText(table_), true);
}

std::unique_ptr<PagedDocument> CriteriaPage::Pages(const PrintedView& printed) const {
    return criteriaPages(printed);
}

} // namespace kestrane
