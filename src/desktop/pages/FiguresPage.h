// The "Cumultv (Data)" tab: the figures of the log in view, and the fields that recalculate it.
#pragma once

#include "desktop/pages/LogPage.h"

namespace kestrane {

class CumulativePanelView;

class FiguresPage : public LogPage {
    Q_OBJECT

public:
    FiguresPage(Session& session, ExplorerState& state);

    void Follow(const clsLog* inView) override;
    void Draw(clsLog& inView) override;

    bool HasContent() const override { return true; }

    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

private:
    void drawAnew(); // with the fields as the log has them
    void applyChanges();

    CumulativePanelView* panels_;
};

} // namespace kestrane
