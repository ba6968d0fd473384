// The range of rows that is marked on a chart: a tint over its rows and a line at either end, the one that moves with a
// handle. It is on the layer of the read-out, so that moving an end redraws nothing else.
#pragma once

#include "charts/ChartLooks.h"

#include <qcustomplot.h>

#include <optional>
#include <utility>

namespace kestrane {

class RangeBand : public QCPLayerable {
public:
    RangeBand(QCPAxis* rows, const ChartLooks& looks) :
        QCPLayerable(rows->parentPlot(), "overlay"), rows_(rows), looks_(looks) {}

    struct Span {
        std::size_t first, last;
        bool isFirstMoving;

        bool operator==(const Span&) const = default;
    };

    void show(const std::optional<Span>& span); // nothing hides it

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }

    void draw(QCPPainter* painter) override;

private:
    QCPAxis* rows_;
    const ChartLooks& looks_;
    std::optional<Span> span_;
};

} // namespace kestrane
