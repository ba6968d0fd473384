// A title or footnote of a chart: plain text, wrapped to the available width and cut between lines.
#pragma once

#include <qcustomplot.h>

namespace kestrane {

class ChartText : public QCPLayoutElement {
public:
    ChartText(QCustomPlot* plot, const std::string& text, const QFont& font, const QColor& color, int alignment);

    bool isEmpty() const { return text_.isEmpty(); }

    // Takes the height that its text needs at this width, but at most mostHeight.
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
