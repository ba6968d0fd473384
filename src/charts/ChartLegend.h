// The legend of a chart: a sample and the label of each series, in as many columns as fit its place, in an unobtrusive
// frame. Curves to compare with are left out.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"
#include "charts/SeriesMarks.h"

#include <qcustomplot.h>

namespace kestrane {

class ChartLegend : public QCPLayoutElement {
public:
    ChartLegend(QCustomPlot* plot, const ChartContent& content, const ChartLooks& looks);

    bool isEmpty() const { return entries_.empty(); }

    // The number of rows it would have below a chart of this width, and its width beside a chart of this height.
    int rowsBelow(int width) const;
    int widthBeside(int height) const;

    // Take the size for the place. When entries do not fit, the last entry shows their number ("+ 12").
    void fitBelow(int width, int mostHeight);
    void fitBeside(int height);

protected:
    void draw(QCPPainter* painter) override;

private:
    struct Entry {
        QString label;
        QPen pen;
        std::optional<SeriesMarks> marks;
    };

    int rowsIn(int height) const;
    int heightOf(int rows) const;
    int widthOf(int columns) const;
    int columnsIn(int width) const;
    void drawEntry(QCPPainter* painter, const QRect& cell, const Entry& entry) const;

    std::vector<Entry> entries_;
    bool isLine_;
    QFont font_;
    QColor text_, frame_, background_;
    int entryWidth_ = 0;
    int entryHeight_ = 0;
    int rows_ = 1;
    int columns_ = 1;
    bool isFilledByColumn_ = false;
};

} // namespace kestrane
