// The list of the open windows in a menu.
#pragma once

#include <functional>

class QMdiArea;
class QMenu;

namespace kestrane {

// From now on the menu ends with the title of each window of the area, in the order in which they were opened, and a
// mark at the one in front; choosing one brings it to the front, through begin. Both must live as long as the frame.
void listWindows(QMenu& menu, QMdiArea& area, const std::function<void(const std::function<void()>&)>& begin);

} // namespace kestrane
