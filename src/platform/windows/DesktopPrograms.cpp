#include "platform/desktop/DesktopPrograms.h"

#include <QMimeDatabase>

#include <windows.h>

#include <shlwapi.h>

namespace kestrane {

// Windows knows programs by the ending of a file's name.
bool hasProgramFor(const QString& mimeType) {
    const QString ending = '.' + QMimeDatabase().mimeTypeForName(mimeType).preferredSuffix();
    DWORD size = 0; // of the program's path, which is not fetched
    return AssocQueryStringW(ASSOCF_INIT_IGNOREUNKNOWN, ASSOCSTR_EXECUTABLE,
                             reinterpret_cast<const wchar_t*>(ending.utf16()), L"open", nullptr, &size) == S_FALSE;
}

} // namespace kestrane
