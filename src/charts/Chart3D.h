// A chart in 3D: lines are ribbons and bars are blocks, with one lane of depth for each series (one lane for all series
// that are arranged like rows). What is farther away is drawn first, so that hidden parts do not show.
#pragma once

#include "charts/AxisTickers.h"
#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"
#include "charts/Room3D.h"

#include <qcustomplot.h>

namespace kestrane {

class Chart3D : public QCPLayoutElement {
public:
    Chart3D(QCustomPlot* plot, const ChartContent& content, const ChartLooks& looks, const Locale& locale);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }

    void draw(QCPPainter* painter) override;

private:
    struct Point {
        double x, y; // in the coordinates of the room
        bool isGap;
    };

    // The marks of one axis, at positions in the room.
    struct Marks {
        std::vector<double> positions;
        QStringList labels;
    };

    void fitRoom();
    Marks valueMarks(ChartAxis axis) const;
    Marks rowMarks();
    double rowPosition(double row) const;
    double heightOf(ChartAxis axis, double value) const;
    double laneFront(std::size_t lane) const;
    double laneBack(std::size_t lane) const;

    void drawWalls(QCPPainter& painter);
    void drawExcluded(QCPPainter& painter) const;
    void drawGrid(QCPPainter& painter);
    void drawLabels(QCPPainter& painter);
    void drawRowLabel(QCPPainter& painter, const QPointF& point, const QString& label) const;
    void drawLaneLabels(QCPPainter& painter) const;
    void drawTitles(QCPPainter& painter) const;

    std::vector<Point> pointsOf(std::size_t drawn) const;
    void drawRibbon(QCPPainter& painter, std::size_t lane) const;
    void drawShapes(QCPPainter& painter, std::size_t drawn, double z) const;
    void drawLine(QCPPainter& painter, std::size_t drawn, double z, double width) const;
    void drawReferences(QCPPainter& painter) const;
    void drawBlocks(QCPPainter& painter, std::size_t lane) const;
    void drawBlock(QCPPainter& painter, std::size_t drawn, const QPointF& low, const QPointF& high, double z0,
                   double z1) const;
    void drawFigure(QCPPainter& painter, double x, double y, double z, float value) const;

    const ChartContent& content_;
    const ChartLooks& looks_;
    const Locale locale_;
    const QFont font_;
    const QFontMetrics metrics_;
    const ChartRange primary_, secondary_;
    const std::size_t references_; // curves to compare with, which have no lane
    const std::size_t lanes_;
    const std::vector<std::size_t> order_; // the index of the series in each lane
    CategoryTicker categories_;
    Room3D room_;
    double rotation_ = 0; // of the labels of rows, degrees
    int valueLabelWidth_ = 0;
};

} // namespace kestrane
