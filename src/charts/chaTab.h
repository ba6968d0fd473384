// A chart tab: draws a chart's data, lets the user zoom and read values, and provides the chart as a picture or for a
// printer. Its menu belongs to the owner; what it shows is decided by the core.
//
// Wheel: zooms at the pointer; with Ctrl it zooms the values, with Shift it moves sideways. Drag: zooms into the
// rectangle. Drag with the middle button: moves. Double click: shows everything. Keys: Left and Right move the
// read-out, Home and End take it to the ends, Escape hides it; + and - zoom, 0 shows everything. On a map of levels, Up
// and Down move it to the next band.
//
// A finger moves along the rows, two zoom them, one that rests opens the menu.
//
// Drag with Shift: marks a range of rows, or moves an end of the one that is marked, where the owner allows that; else
// it moves the chart. Shift with the keys of the read-out moves one end, Space takes hold of the other, Escape clears
// the range when there is no read-out.
//
// A screen reader gets the title as the chart's name and, as its description, what the owner says of the range that was
// just marked or of the part just zoomed to, the read-out while there is one, else the summary of the chart.
#pragma once

#include "charts/ChartPlot.h"
#include "views/ChartOnPage.h"
#include "views/MarkedRange.h"
#include "views/Picture.h"

#include <QImage>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace kestrane {

class chaTab : public QWidget {
    Q_OBJECT

public:
    using Summary = std::function<std::string(const ChartData& chart)>; // the chart in words

    explicit chaTab(Locale locale, Summary summary = {}, QWidget* parent = nullptr);
    ~chaTab() override;

    // Shows the whole of a chart. The legend is shown as the chart says; whether the footnote is shown does not change.
    void setChart(ChartData chart);

    const ChartData& chart() const;

    bool isLegendShown() const { return isLegendShown_; }

    bool isFootnoteShown() const { return isFootnoteShown_; }

    void showLegend(bool isShown);
    void showFootnote(bool isShown);

    // The lines of the read-out: the row's name, then one line for each series with its value; empty when it is hidden.
    QStringList readOut() const;

    std::optional<std::size_t> readRow() const; // the row of the read-out; nothing while it is hidden

    QString spokenDescription() const;

    // The first and the last visible row, counted from 0; nothing without axes.
    std::optional<std::pair<std::size_t, std::size_t>> rowsInView() const;

    // A range of rows can be marked from now on. Setting a chart clears it.
    void allowMarking() { isMarkable_ = true; }

    // The first and the last row that are marked, counted from 0.
    std::optional<std::pair<std::size_t, std::size_t>> markedRows() const { return marked_.rows(); }

    void markRows(std::size_t first, std::size_t last); // and scrolls to the first; tells RangeMarked
    void clearMarked();                                 // tells RangeMarked

    void tellFirst(const QString& spoken); // what is said, of a range or of the view, until the user reads a row

    // The visible part in colours for paper. size is in pixels; with a ratio of 2 there are twice as many each way.
    QImage picture(const QSizeF& size, double ratio = 1) const;

    // The bytes of the picture in the format of the name's ending; empty when it cannot be drawn.
    QByteArray pictureBytes(const std::string& path, const QSizeF& size, double ratio = 1) const;

    // Writes the picture in the format of the name's ending: .png, .svg or .pdf, in any case. The file is replaced as a
    // whole or not at all. Raises an error when it cannot be written.
    void savePicture(const std::string& path, const PictureSize& size) const;

    // savePicture as a function, for as long as the chart exists.
    std::function<void(const std::string& path, const PictureSize& size)> pictureWriter() const;

    // Where the pointer is over the chart, and whether a place there is outside the axes, where a drag zooms nothing.
    QWidget& Canvas() const { return *plot_; }

    bool isMargin(const QPoint& at) const;

    // The visible part for a page.
    ChartOnPage onPage() const;

signals:
    void ViewChanged(); // the user has chosen to see other rows or values
    void RangeMarked(); // another range, or none
    void RowRead();     // the read-out is on another place, or hidden

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void drawAnew();
    void readAt(std::optional<std::size_t> row); // in the same band; nothing hides the read-out
    void readAt(std::optional<std::size_t> row, std::size_t band);
    std::size_t bandAt(double place) const;
    void stepBand(int bands);

    void press(const QMouseEvent& event);
    void point(const QMouseEvent& event);
    void endDrag();
    void turnWheel(const QWheelEvent& event);
    void zoomInto(const QRect& rect);
    void moveBy(double pixels);
    void pinch(double factor, const QPointF& at);
    void zoomRows(double factor, double center);
    void look(ChartView view);
    void stepReadOut(int rows);
    void goToRow(double row);
    void bringIntoView(double row);
    bool markByKey(const QKeyEvent& event, int wide);
    void showMarked();

    const Locale locale_;
    const Summary summary_;
    std::shared_ptr<const ChartContent> content_;
    ChartPlot* plot_;
    bool isLegendShown_ = true;
    bool isFootnoteShown_ = true;
    bool isMarkable_ = false;
    bool isMarking_ = false; // an end of the range follows the pointer
    MarkedRange marked_;
    QString spokenFirst_; // empty when something else is to be said
};

} // namespace kestrane
