// A grid on paper: columns as wide as their longest cell and two characters, left-aligned, under captions that each
// page repeats. Of a very long grid every so many rows are measured, and a cell that is longer still is cut. A grid
// wider than the page goes on on further pages, behind its first column; one long text column among others is broken
// into lines instead.
#pragma once

#include "reports/PageFrame.h"
#include "reports/PagedDocument.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

struct PageGrid {
    std::vector<std::string> Captions; // one for each column; all empty: the grid has none
    std::size_t Rows = 0;
    std::function<std::string(std::size_t row, std::size_t column)> Cell; // from 0
    std::size_t TotalRows = 0;                                            // so many at the end stand below a line
    std::string Note{};                                                   // on top of each page; may be empty
};

class GridPages : public PagedDocument {
public:
    // metrics must outlive the pages, and be those of the device that they are drawn on.
    GridPages(const Session& session, const PageHeading& heading, PageGrid grid, const PageMetrics& metrics);

    const std::string& Title() const override { return title_; }

    std::size_t pageCount() const override { return pages_.size(); }

    void drawPage(PageDevice& device, std::size_t page) override;

private:
    struct Column {
        double Width = 0;
        bool IsBroken = false; // into lines, where a cell is longer
    };

    // A part of the rows, in a part of the columns behind the first.
    struct Part {
        std::size_t FirstColumn, EndColumn, FirstRow, EndRow;
    };

    void measureColumns();
    void fitColumns();
    std::vector<Part> columnGroups() const;
    void planPages();
    std::vector<std::string> cellLines(std::size_t row, std::size_t column) const;
    std::size_t linesOf(std::size_t row) const;
    double drawRow(PageDevice& device, const Part& part, std::size_t row, double top) const; // its height

    const std::string title_;
    const PageGrid grid_;
    const PageMetrics& metrics_;
    PageFrame frame_;
    const double line_;
    bool hasCaptions_ = false;
    std::vector<Column> columns_;
    std::vector<Part> pages_;
};

} // namespace kestrane
