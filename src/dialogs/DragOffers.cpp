#include "dialogs/DragOffers.h"

#include <QTableView>

#include <utility>

namespace kestrane {

std::optional<DragOffer> offerOf(ClipboardForms forms, const std::string& title) {
    std::optional<FileToDrag> file = fileOfCopy(forms, title);
    if (!file) return std::nullopt;
    return DragOffer{std::move(forms), std::move(file->Name), std::move(file->Bytes)};
}

void allowDragging(QTableView& view, std::function<ClipboardForms()> copy, std::string title) {
    const auto offer = [copy = std::move(copy), title = std::move(title)] { return offerOf(copy(), title); };
    new DragOut(*view.viewport(), onSelection(view), offer); // the view owns it
}

} // namespace kestrane
