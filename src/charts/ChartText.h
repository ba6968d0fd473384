// A title or footnote of a chart: plain text, wrapped to the available width and cut between lines. What is cut off
// leaves an ellipsis.
#pragma once

#include <qcustomplot.h>

#include <string>
#include <vector>

namespace kestrane {

// A text on one line, in the painter's font and pen, with its top at that of the place. Left is right for a text that
// is read from the right, unless the alignment is absolute. Into a picture that is played later, such a
// text goes as outlines, because a picture lays its letters out anew, without what stands around them.
void drawTextLine(QCPPainter& painter, const QRectF& place, const QString& text, Qt::LayoutDirection direction,
                  Qt::Alignment alignment);

class ChartText : public QCPLayoutElement {
public:
    ChartText(QCustomPlot* plot, const std::string& text, const QFont& font, const QColor& color,
              Qt::Alignment alignment);

    bool isEmpty() const { return text_.isEmpty(); }

    // Takes the height that its text needs at this width, but at most mostHeight.
    void fit(int width, int mostHeight);

    bool isCut() const { return isCut_; } // whether the text was too long for that

protected:
    void draw(QCPPainter* painter) override;

private:
    struct Line {
        QString Text;
        Qt::LayoutDirection Direction; // that of its paragraph
    };

    QString text_;
    QFont font_;
    QColor color_;
    Qt::Alignment alignment_;
    std::vector<Line> lines_;
    double lineHeight_ = 0;
    bool isCut_ = false;
};

} // namespace kestrane
