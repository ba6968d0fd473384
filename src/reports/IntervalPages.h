// The pages of a report that list the rows of a log, one line for each row and one channel after the other.
// Two blocks stand side by side where the page is wide enough. A row of another day than the row before it has its
// date. Nothing of a page is kept: its lines are made when it is drawn, so that a log of any length is laid out at
// once. Shares the log's columns.
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

    double bottom() const; // of what is on the last page, in centimetres from the top of the paper

private:
    struct FigureColumn {
        std::string Caption;
        Quantity Source = Quantity::End; // Quantity::End when the log has no such figures
        double Right = 0;                // from the left edge of the block
    };

    struct Channel {
        std::string Name; // empty when there is only one channel
        std::vector<FigureColumn> Columns;
    };

    // A line of a block: a row, or the date in front of the first row of another day.
    struct Line {
        std::size_t Row;
        bool IsDate;
    };

    std::size_t lineCount() const { return rows_.count() + dateLines_.size(); }

    Line lineAt(std::size_t number) const;
    void addChannel(const clsLog& log, LogChannel channel, const PageMetrics& metrics);
    void drawBlock(PageDevice& device, const Channel& channel, double left, std::size_t first, std::size_t end) const;
    void drawRow(PageDevice& device, const Channel& channel, double left, double top, std::size_t row) const;
    std::size_t linesOfLastBlock() const; // the highest block of the last page
    double topOfRows() const;

    PageArea area_;
    double line_, star_;
    const Session& session_;
    std::string heading_, removed_;
    Locale locale_;
    RowTimes times_;
    IntervalColumns rows_;
    std::vector<std::size_t> dateLines_; // the numbers of the lines with a date
    std::vector<Channel> channels_;
    bool hasExcluded_;
    double blockWidth_ = 0; // of the widest channel
    std::size_t blocks_;    // side by side on a page
    std::size_t linesOfBlock_, pagesOfChannel_;
};

} // namespace kestrane
