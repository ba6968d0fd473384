// A chart tab: draws a chart's data, lets the user look closer and read values off, and gives the chart as a picture or
// to a printer. The owner has its menu; what it shows was decided by the core.
//
// Wheel: zoom at the pointer; with Ctrl over the values, with Shift move sideways. Drag: zoom into the rectangle. Drag
// with Shift or the middle button: move. Double click: the whole again. Keys: Left and Right move the read-out, Home
// and End take it to the ends, Escape hides it; + and - zoom, 0 shows the whole.
//
// A screen reader hears the title as its name and, as its description, the read-out while there is one, else its series
// and its note.
#pragma once

#include "charts/ChartPlot.h"
#include "views/ChartOnPage.h"

#include <QImage>
#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace kestrane {

class chaTab : public QWidget {
    Q_OBJECT

public:
    explicit chaTab(Locale locale, QWidget* parent = nullptr);
    ~chaTab() override;

    // Shows the whole of a chart. Its legend shows as the chart says, its footnote as before.
    void setChart(ChartData chart);

    const ChartData& chart() const;

    bool isLegendShown() const { return isLegendShown_; }

    bool isFootnoteShown() const { return isFootnoteShown_; }

    void showLegend(bool isShown);
    void showFootnote(bool isShown);

    // The lines of the read-out: the row's name, then a series and its value a line; empty when it is hidden.
    QStringList readOut() const;

    QString spokenDescription() const;

    // The rows in view, counted from 0, first and last; nothing without axes.
    std::optional<std::pair<std::size_t, std::size_t>> rowsInView() const;

    // The part in view, in the colours of paper, size in pixels of which a ratio of 2 gives twice as many.
    QImage picture(const QSize& size, double ratio = 1) const;

    // The bytes of the picture in the format of a name's ending; none when it cannot be drawn.
    QByteArray pictureBytes(const std::string& path, const QSize& size) const;

    // Writes the picture in the format of the name's ending: .png, .svg or .pdf, in any case. There is a whole file or
    // the old one. Raises an error when the file cannot be written.
    void savePicture(const std::string& path, const QSize& size) const;
    static bool isPictureName(const std::string& path);

    // The same for a page.
    ChartOnPage onPage() const;

signals:
    void ViewChanged(); // the user looks at other rows or values

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void drawAnew();
    void readAt(std::optional<std::size_t> row); // nothing hides the read-out

    void press(const QMouseEvent& event);
    void point(const QMouseEvent& event);
    void turnWheel(const QWheelEvent& event);
    void zoomInto(const QRect& rect);
    void zoomRows(double factor, double center);
    void look(ChartView view);
    void stepReadOut(int rows);
    void goToRow(double row);

    const Locale locale_;
    std::shared_ptr<const ChartContent> content_;
    ChartPlot* plot_;
    bool isLegendShown_ = true;
    bool isFootnoteShown_ = true;
};

} // namespace kestrane
