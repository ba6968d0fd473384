// A title or footnote of a chart: plain text that wraps to the width it is given, cut at whole lines.
#pragma once

#include <qcustomplot.h>

namespace kestrane {

class ChartText : public QCPLayoutElement {
public:
    ChartText(QCustomPlot* plot, const std::string& text, const QFont& font, const QColor& color, int alignment);

    bool isEmpty() const { return text_.isEmpty(); }

    // Takes the height that its text needs at this width, but at most so much.
    void fit(int width, int mostHeight);

protected:
    void draw(QCPPainter* painter) override;

private:
    QString text_;
    QFont font_;
    QColor color_;
    int flags_;
};

} // namespace kestrane
