// The "Intervals (Table)" tab: the rows of the log in view.
#pragma once

#include "desktop/pages/LogPage.h"

namespace kestrane {

class grdTable;

class TablePage : public LogPage {
    Q_OBJECT

public:
    TablePage(Session& session, ExplorerState& state);

    void Draw(clsLog& inView) override;
    bool HasContent() const override;
    // The status bar says how many rows are left out.
    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

private:
    grdTable* table_;
};

} // namespace kestrane
