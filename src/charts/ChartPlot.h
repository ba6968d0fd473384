// Draws a chart with title, axes with their series, legend and footnote in one layout, on the screen or on a page. Of
// user input it knows only which part of the rows and values is visible.
#pragma once

#include "charts/AxisTickers.h"
#include "charts/Chart3D.h"
#include "charts/ChartContent.h"
#include "charts/ChartLegend.h"
#include "charts/ChartLooks.h"
#include "charts/ChartText.h"
#include "charts/ReadOut.h"
#include "charts/TimeTicker.h"

#include <qcustomplot.h>

#include <memory>

namespace kestrane {

// The visible part, in coordinates of the axes. Row r is at r and extends from r - 0.5 to r + 0.5.
struct ChartView {
    QCPRange rows, primary, secondary;
};

class RangeBand;

class ChartPlot : public QCustomPlot {
public:
    ChartPlot(Locale locale, QWidget* parent);
    ~ChartPlot() override;

    // Shows the whole of the content. Which parts are shown may be changed afterwards.
    void setContent(std::shared_ptr<const ChartContent> content, const ChartLooks& looks);
    void showParts(bool isLegendShown, bool isFootnoteShown);

    // On paper no entry of the legend is left out, however little height that leaves to the plot.
    void keepLegendWhole() { isLegendWhole_ = true; }

    // Whether the note is shown in part only on a page of this size.
    bool cutsFootnote(const QSize& size);
    double plotHeight(const QSize& size); // pixels, in a chart of this size

    // Whether there are axes to zoom and to read values from: there are none without rows and in 3D.
    bool hasAxes() const { return axisRect_ != nullptr; }

    QCPAxisRect& axisArea() const { return *axisRect_; }

    ReadOut& readOut() const { return *readOut_; }

    RangeBand& rangeBand() const { return *rangeBand_; }

    ChartView wholeView() const;
    ChartView view() const;
    void setView(const ChartView& view); // moved and reduced so that it lies within the whole view

    QSize minimumSizeHint() const override;

protected:
    void updateLayout() override;
    void paintEvent(QPaintEvent* event) override;

private:
    void clearContent();
    void makeAxes();
    void styleAxis(QCPAxis& axis, const std::string& title) const;
    void makeMap();
    void makeSeries();
    void makeOne(std::size_t drawn);

    QCPLayoutElement* body() const;

    std::vector<QCPLayoutElement*> parts() const;
    void placeParts(int spared);
    bool isLegendBeside(const QSize& room) const;
    void fitLabels(const QSize& room);

    const Locale locale_;
    std::shared_ptr<const ChartContent> content_;
    ChartLooks looks_;
    bool isLegendShown_ = true;
    bool isFootnoteShown_ = true;
    bool isLegendWhole_ = false;

    std::unique_ptr<ChartText> title_, footnote_;
    std::unique_ptr<ChartLegend> legend_;
    std::unique_ptr<QCPAxisRect> axisRect_; // in 2D
    std::unique_ptr<QCPColorScale> scale_;  // of a map of levels
    std::unique_ptr<Chart3D> solid_;

    std::unique_ptr<QCPLayerable> shade_, lines_, map_;
    std::unique_ptr<RangeBand> rangeBand_;
    std::unique_ptr<ReadOut> readOut_;
    QSharedPointer<CategoryTicker> categories_; // either this or times_ is in use
    QSharedPointer<TimeTicker> times_;
    QSharedPointer<ValueTicker> primaryValues_, secondaryValues_;
    QSharedPointer<BandTicker> bands_; // in place of primaryValues_, of a map of levels
};

} // namespace kestrane
