// Widgets side by side, continued on further lines when the width is not enough. Each has the width of its size hint,
// or that of the whole line when that is narrower.
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
    QSize sizeHint() const override; // of all widgets on one line
    QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    int arrange(const QRect& rect, bool isPlaced) const; // returns the height needed

    int gap_, lineGap_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace kestrane
