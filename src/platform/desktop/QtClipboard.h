// The clipboard of the desktop.
#pragma once

#include "platform/Clipboard.h"

class QMimeData;

namespace kestrane {

class QtClipboard : public Clipboard {
public:
    std::vector<std::string> GetClipboardFiles() const override;
    void Set(const ClipboardForms& forms) override;
};

// Sets the forms that are there as data that is copied or dragged.
void fillForms(QMimeData& data, const ClipboardForms& forms);

// The paths of the local files among data that is pasted or dropped, in their order.
std::vector<std::string> localFiles(const QMimeData& data);

} // namespace kestrane
