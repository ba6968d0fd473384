// A tab with a chart. Which chart it is, and what may be done with it, stands in the tab's row of the core's table. The
// chart is made when the tab is first drawn.
#pragma once

#include "desktop/pages/LogPage.h"

#include <cstddef>
#include <optional>
#include <utility>

class QVBoxLayout;

namespace kestrane {

class chaTab;

class GraphPage : public LogPage {
    Q_OBJECT

public:
    GraphPage(Session& session, ExplorerState& state, int tab);

    void Draw(clsLog& inView) override;
    bool HasContent() const override;
    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

    void FollowLegend(); // whether it is shown
    void FollowNote();
    void SavePicture(const clsLog& inView); // under a name that the user chooses

    // Counted from 0, first and last; nothing without a chart.
    std::optional<std::pair<std::size_t, std::size_t>> RowsInView() const;

signals:
    void ViewChanged(); // the user looks at other rows or values

protected:
    virtual ChartChoice choice() const;
    const chaTab* shownChart() const; // null: there is none to be seen

    QVBoxLayout* column_;
    chaTab* chart_ = nullptr;

private:
    bool isWanted(const clsLog& inView, const ChartData& drawn);
};

} // namespace kestrane
