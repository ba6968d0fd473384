// A line as wide as a chart draws it.
#pragma once

#include <QWidget>

namespace kestrane {

class LinePreview : public QWidget {
public:
    explicit LinePreview(int twentieths) : twentieths_(twentieths) {}

    void SetLineWidth(int twentieths); // of a point

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int twentieths_;
};

} // namespace kestrane
