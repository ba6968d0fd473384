// The values under the pointer: a line at a row, a dot on each series, and a box with the row's name and the values. It
// is on a layer of its own, so that moving it redraws nothing else.
#pragma once

#include "charts/ChartContent.h"
#include "charts/ChartLooks.h"
#include "platform/Locale.h"

#include <qcustomplot.h>

#include <optional>

namespace kestrane {

class ReadOut : public QCPLayerable {
public:
    // values are the primary and the secondary value axis.
    ReadOut(QCPAxis* rows, std::pair<QCPAxis*, QCPAxis*> values, const ChartContent& content, const ChartLooks& looks,
            const Locale& locale);

    std::optional<std::size_t> row() const { return row_; }

    // Nothing hides the read-out. The band is that of a map of levels.
    void show(std::optional<std::size_t> row, std::size_t band = 0);

    std::size_t band() const { return band_; }

    // The lines of the box: the row's name, then the label and the value of each series that has a value in the row; of
    // a map of levels those of the band.
    QStringList lines() const;

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }

    void draw(QCPPainter* painter) override;

private:
    struct Line {
        QColor color;
        QString label, value;
        QPointF point;
    };

    std::vector<Line> valueLines() const;
    std::vector<Line> lineOfBand() const;
    void drawBox(QCPPainter* painter, double x, const std::vector<Line>& lines) const;

    QCPAxis* rows_;
    QCPAxis* primary_;
    QCPAxis* secondary_;
    const ChartContent& content_;
    const ChartLooks& looks_;
    Locale locale_;
    std::optional<std::size_t> row_;
    std::size_t band_ = 0;
};

} // namespace kestrane
