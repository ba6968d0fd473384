// The page that shows the log in view under every exposure criterion.
#pragma once

#include "assessment/CriteriaTable.h"
#include "desktop/pages/LogPage.h"

class QTableWidget;

namespace kestrane {

class CriteriaPage : public LogPage {
    Q_OBJECT

public:
    CriteriaPage(Session& session, ExplorerState& state);

    void Draw(clsLog& inView) override;

    bool HasContent() const override { return !table_.Rows.empty(); }

    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

private:
    CriteriaTable table_;
    QTableWidget* grid_;
};

} // namespace kestrane
