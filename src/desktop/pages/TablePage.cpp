#include "desktop/pages/TablePage.h"

#include "desktop/grdTable.h"
#include "platform/desktop/DragOut.h"
#include "views/CopyData.h"

namespace kestrane {

TablePage::TablePage(Session& session, ExplorerState& state) : LogPage(session, state, eTabIntervalsTable) {
    table_ = new grdTable(session);
    fillWith(*table_);
    allowDragging(*table_->viewport(), onSelection(*table_));
}

void TablePage::Draw(clsLog& inView) {
    table_->SetTable(IntervalTable(inView, state_.View.Channel(), state_.View.Choice()));
}

bool TablePage::HasContent() const {
    return table_->model()->rowCount() > 0;
}

ClipboardForms TablePage::Copy(const clsLog& inView, bool) const {
    const bool isPart = table_->HasSelection();
    const CopiedRows rows = isPart ? table_->SelectedRows() : table_->Table().copiedRows();
    session_.frame->SetPanel(Frame::Panel::Status, rows.LeftOut == 0
                                                       ? std::string()
                                                       : ReplaceText(session_.LoadText(Text::OverloadedRowsLeftOut),
                                                                     "^", std::to_string(rows.LeftOut)));
    return copiedTable(inView, rows, !isPart);
}

std::unique_ptr<PagedDocument> TablePage::Pages(const PrintedView& printed) const {
    return tablePages(printed, state_.View.Channel(), state_.View.Choice());
}

} // namespace kestrane
