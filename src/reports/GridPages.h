// A grid on paper, with left-aligned columns under captions that are repeated on each page. A column is as wide as its
// longest cell plus two characters. Of a very long grid only a part of the rows is measured, and a cell that is even
// longer is cut. A grid that is wider than the page continues on further pages, where its first column is repeated; a
// single long text column is broken into lines instead.
#pragma once

#include "reports/PageFrame.h"
#include "reports/PagedDocument.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

struct PageGrid {
    std::vector<std::string> Captions; // one for each column; when all are empty, the grid has no captions
    std::size_t Rows = 0;
    std::function<std::string(std::size_t row, std::size_t column)> Cell; // both counted from 0
    std::size_t TotalRows = 0; // the number of rows at the end that are below a line
    std::string Note{};        // at the top of each page; may be empty
};

class GridPages : public PagedDocument {
public:
    // metrics must outlive the pages and must be those of the device on which they are drawn.
    GridPages(const Session& session, const PageHeading& heading, PageGrid grid, const PageMetrics& metrics);

    const std::string& Title() const override { return title_; }

    std::size_t pageCount() const override { return pages_.size(); }

    void drawPage(PageDevice& device, std::size_t page) override;

private:
    struct Column {
        double Width = 0;
        bool IsBroken = false; // a longer cell is broken into lines
    };

    // The part of the grid on one page. The ends are not included; the first column is always repeated.
    struct Part {
        std::size_t FirstColumn, EndColumn, FirstRow, EndRow;
    };

    void measureColumns();
    void fitColumns();
    std::vector<Part> columnGroups() const;
    void planPages();
    std::vector<std::string> cellLines(std::size_t row, std::size_t column) const;
    std::size_t linesOf(std::size_t row) const;
    double drawRow(PageDevice& device, const Part& part, std::size_t row, double top) const; // returns its height

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
