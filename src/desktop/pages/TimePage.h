// The tab with the chart of all rows, on which a range can be marked and measured. The figures of the range stand in a
// strip under the chart. The range belongs to the log in view: it outlasts a redraw of the same rows and ends with
// them.
#pragma once

#include "desktop/PrintedChart.h"
#include "desktop/pages/GraphPage.h"
#include "views/EventTable.h"
#include "views/RangeTable.h"

#include <optional>
#include <string>
#include <vector>

class QAction;

namespace kestrane {

class RangeStrip;

class TimePage : public GraphPage {
    Q_OBJECT

public:
    TimePage(Session& session, ExplorerState& state);

    void Draw(clsLog& inView) override;

    // The rows of the log in view that are marked, counted from 1.
    std::optional<RowRange> Marked() const;

    void AddButtons(const std::vector<QAction*>& actions); // to the strip

    void FollowStrip();                 // shows or hides it as the view says; hiding it clears the range
    ClipboardForms CopyFigures() const; // of the range
    std::string PlaceOfRange() const;   // "09:10:00 - 09:25:00"; empty without a range

    void MarkLoudest() { markWindow(&WorstStretches::Loudest); }

    void ShowDistribution(); // of the range, or of all rows, in a dialog
    void ShowComparison();   // with other logs of the open files, in a dialog
    void ShowSpectrogram();  // of all rows, in a dialog
    void ShowEvents();       // in a dialog that marks the event chosen in it

    void MarkQuietest() { markWindow(&WorstStretches::Quietest); }

private:
    struct Rows {
        std::string key;
        std::int64_t first, count;

        bool operator==(const Rows&) const = default;
    };

    Rows rowsOf(const clsLog& inView) const;
    void takeRange();
    void showFigures();
    PrintChart printing() const; // for a dialog
    void print(const PrintedChart& printed, QWidget* dialog) const;
    void markWindow(std::optional<Stretch> WorstStretches::*which);
    const AnalysedRows& analysed(const clsLog& inView);

    RangeStrip* strip_;
    std::optional<Rows> drawn_;        // the rows that the chart shows
    AnalysedRows analysed_;            // of the log in view; null until they are asked for
    std::vector<RangeFigure> figures_; // empty when nothing is marked
};

} // namespace kestrane
