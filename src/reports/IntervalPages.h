// The pages of a report that list the rows of a log, one line for each row and one channel after the other. Nothing of
// a page is kept: its lines are made when it is drawn, so that a log of any length is laid out at once. Shares the
// log's columns.
#pragma once

#include "model/IntervalColumns.h"
#include "model/clsLog.h"
#include "reports/PageDevice.h"
#include "reports/PageFrame.h"
#include "views/RowTimes.h"

#include <string>
#include <vector>

namespace kestrane {

class IntervalPages {
public:
    IntervalPages(const clsLog& log, const PageArea& area, const PageMetrics& metrics);

    std::size_t count() const { return channels_.size() * pagesOfChannel_; }

    void draw(PageDevice& device, std::size_t page) const; // counted from 0

private:
    struct FigureColumn {
        std::string Caption;
        Quantity Source = Quantity::End; // Quantity::End when the log has no such figures
        double Right = 0;
    };

    struct Channel {
        std::string Name; // empty when there is only one channel
        std::vector<FigureColumn> Columns;
    };

    void addChannel(const clsLog& log, LogChannel channel, const PageMetrics& metrics);
    void drawRow(PageDevice& device, const Channel& channel, std::size_t row, double top) const;

    PageArea area_;
    double line_, star_;
    std::string heading_, removed_;
    Locale locale_;
    RowTimes times_;
    IntervalColumns rows_;
    std::vector<Channel> channels_;
    bool hasExcluded_;
    std::size_t rowsOfPage_, pagesOfChannel_;
};

} // namespace kestrane
