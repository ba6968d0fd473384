// A tab with a chart. Which chart it is, and what can be done with it, is in the tab's row of the core's table. The
// chart widget is created when the tab is first drawn.
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
    GraphPage(Session& session, ExplorerState& state, LogTab tab);

    void Draw(clsLog& inView) override;
    bool HasContent() const override;
    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

    void FollowLegend(); // shows or hides it as the view says
    void FollowNote();
    void ExportPicture(const clsLog& inView); // as the user chooses
    void ShowTable() const;                   // the chart's values, in a dialog

    // The first and the last visible row, counted from 0; nothing without a chart.
    std::optional<std::pair<std::size_t, std::size_t>> RowsInView() const;

signals:
    void ViewChanged(); // the user has chosen to see other rows or values

protected:
    virtual ChartChoice choice() const;
    const chaTab* shownChart() const; // null when none is visible

    QVBoxLayout* column_;
    chaTab* chart_ = nullptr;

private:
    bool isWanted(const clsLog& inView, const ChartData& drawn);
};

} // namespace kestrane
