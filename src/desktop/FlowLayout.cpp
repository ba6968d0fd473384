#include "desktop/FlowLayout.h"

#include <algorithm>
#include <utility>

namespace kestrane {

QLayoutItem* FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
    if (itemAt(index) == nullptr) return nullptr;
    QLayoutItem* const item = items_[static_cast<std::size_t>(index)].release();
    items_.erase(items_.begin() + index);
    return item;
}

QSize FlowLayout::sizeHint() const {
    QSize size(0, 0);
    for (const auto& item : items_) {
        if (item->isEmpty()) continue;
        const QSize hint = item->sizeHint();
        size =
            QSize(size.width() + (size.width() > 0 ? gap_ : 0) + hint.width(), std::max(size.height(), hint.height()));
    }
    return size.grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const {
    QSize size(0, 0);
    for (const auto& item : items_)
        if (!item->isEmpty()) size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

int FlowLayout::heightForWidth(int width) const {
    return arrange(QRect(0, 0, width, 0), false);
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

int FlowLayout::arrange(const QRect& rect, bool isPlaced) const {
    const QRect room = rect.marginsRemoved(contentsMargins());
    std::vector<std::pair<QLayoutItem*, QRect>> line;
    int x = room.left();
    int y = room.top();
    int height = 0;
    const auto endLine = [&] {
        for (auto& [item, place] : line)
            if (isPlaced) item->setGeometry(place.translated(0, (height - place.height()) / 2));
        line.clear();
    };
    for (const auto& item : items_) {
        if (item->isEmpty()) continue;
        const int width = std::min(item->sizeHint().width(), room.width());
        if (!line.empty() && x + width > room.left() + room.width()) {
            endLine();
            x = room.left();
            y += height + lineGap_;
            height = 0;
        }
        const int own = item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height();
        line.emplace_back(item.get(), QRect(x, y, width, own));
        x += width + gap_;
        height = std::max(height, own);
    }
    endLine();
    return y + height - rect.y() + contentsMargins().bottom();
}

} // namespace kestrane
