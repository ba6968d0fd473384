// A line as thick as a chart would draw it.
#pragma once

#include <QWidget>

namespace kestrane {

class LinePreview : public QWidget {
public:
    explicit LinePreview(int twentieths) : twentieths_(twentieths) {}

    void SetLineWidth(int twentieths); // twentieths of a point

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int twentieths_;
};

} // namespace kestrane
