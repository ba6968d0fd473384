#include "platform/FileLock.h"

#include "platform/RuntimeError.h"
#include "platform/windows/Wide.h"

#include <cerrno>

#include <fcntl.h>
#include <io.h>

namespace kestrane {

// The file is open to nobody else and goes with its handle, which the system closes however the program ends.
std::shared_ptr<FileLock> FileLock::take(const std::string& path) {
    const HANDLE file = CreateFileW(widePath(path).c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = GetLastError();
        const bool isHeld =
            error == ERROR_SHARING_VIOLATION || error == ERROR_DELETE_PENDING ||
            (error == ERROR_ACCESS_DENIED && GetFileAttributesW(widePath(path).c_str()) != INVALID_FILE_ATTRIBUTES);
        if (isHeld) return nullptr;
        raiseLastError(error);
    }
    const int number = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_RDWR | _O_NOINHERIT);
    if (number < 0) {
        CloseHandle(file);
        raiseSystemError(EMFILE);
    }
    return std::shared_ptr<FileLock>(new FileLock(path, number));
}

FileLock::~FileLock() {
    _close(handle_);
}

} // namespace kestrane
