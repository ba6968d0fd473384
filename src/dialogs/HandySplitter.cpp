#include "dialogs/HandySplitter.h"

#include "dialogs/Palettes.h"

#include <algorithm>

namespace kestrane {

namespace {

// A splitter leaves room for what is within a bar's margins, so the rest of the bar lies over the part behind it. The
// part in front often ends with a scroll bar, which must not lose any of its width.
class HandyBar : public QSplitterHandle {
public:
    HandyBar(Qt::Orientation orientation, QSplitter* splitter) : QSplitterHandle(orientation, splitter) {
        const int beyond = std::max(0, kLeastHit - splitter->handleWidth());
        const bool isUpright = orientation == Qt::Horizontal;
        setContentsMargins(0, 0, isUpright ? beyond : 0, isUpright ? 0 : beyond);
        setAttribute(Qt::WA_MouseNoMask);
    }

protected:
    // In place of that of the toolkit, which would take the margins away.
    void resizeEvent(QResizeEvent*) override { setMask(contentsRect()); } // the rest is not drawn
};

} // namespace

QSplitterHandle* HandySplitter::createHandle() {
    return new HandyBar(orientation(), this);
}

} // namespace kestrane
