#include "platform/AppendedFile.h"

#include "platform/RuntimeError.h"
#include "platform/windows/Wide.h"

#include <cerrno>

namespace kestrane {

namespace {

bool isEnded(HANDLE file, LARGE_INTEGER size) {
    if (size.QuadPart == 0) return true;
    LARGE_INTEGER at{};
    at.QuadPart = size.QuadPart - 1;
    char last = '\n';
    DWORD count = 0;
    return SetFilePointerEx(file, at, nullptr, FILE_BEGIN) == 0 || ReadFile(file, &last, 1, &count, nullptr) == 0 ||
           count == 0 || last == '\n';
}

} // namespace

void appendLines(const std::string& path, std::string_view lines) {
    HANDLE opened = INVALID_HANDLE_VALUE;
    bool isNew = false;
    const DWORD error = withPatience([&] {
        opened = CreateFileW(widePath(path).c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                             nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        isNew = GetLastError() != ERROR_ALREADY_EXISTS;
        return opened != INVALID_HANDLE_VALUE;
    });
    if (error != 0) raiseLastError(error);
    const Handle file(opened);
    if (GetFileType(file.get()) != FILE_TYPE_DISK) raiseSystemError(EINVAL);
    LARGE_INTEGER size{};
    if (GetFileSizeEx(file.get(), &size) == 0) raiseLastError();
    const std::string text = (isEnded(file.get(), size) ? "" : "\n") + std::string(lines);
    try {
        if (SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN) == 0) raiseLastError();
        writeAll(file.get(), text);
        if (FlushFileBuffers(file.get()) == 0) raiseLastError();
    } catch (const RuntimeError&) {
        SetFilePointerEx(file.get(), size, nullptr, FILE_BEGIN);
        const bool isUndone = SetEndOfFile(file.get()) != 0;
        if (isNew && isUndone) DeleteFileW(widePath(path).c_str());
        throw;
    }
}

} // namespace kestrane
