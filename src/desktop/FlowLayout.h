// Widgets side by side that go on in a further line where the width does not hold them. Each keeps its size hint's
// width, or the whole line's when that is narrower.
#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace kestrane {

class FlowLayout : public QLayout {
public:
    FlowLayout(int gap, int lineGap) : gap_(gap), lineGap_(lineGap) {}

    void addItem(QLayoutItem* item) override { items_.emplace_back(item); }

    int count() const override { return static_cast<int>(items_.size()); }

    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }

    bool hasHeightForWidth() const override { return true; }

    int heightForWidth(int width) const override;
    QSize sizeHint() const override; // in one line
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    int arrange(const QRect& rect, bool isPlaced) const; // the height that it takes

    int gap_, lineGap_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace kestrane
