#include "app/Menus.h"

#include "explorer/NodeKeys.h"

namespace kestrane {

bool IsMenuEnabled(const Session& session, MenuItem item, const std::string& selectedKey) {
    switch (item) {
    case MenuItem::FileClose:
        return !selectedKey.empty();
    case MenuItem::FileCloseAll:
        return !session.OpenFiles.empty();
    case MenuItem::FileSave:
    case MenuItem::FileSaveAs:
        return resolve(session, selectedKey).file != nullptr && session.IsIdle();
    case MenuItem::FileOpen:
        break;
    }
    return true;
}

} // namespace kestrane
