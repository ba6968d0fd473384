#include "platform/FileState.h"

#include "platform/windows/FileTimes.h"
#include "platform/windows/Wide.h"

#include <algorithm>

namespace kestrane {

std::optional<FileState> stateOfFile(const std::string& path) {
    const Handle file(CreateFileW(widePath(path).c_str(), FILE_READ_ATTRIBUTES,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    FILE_BASIC_INFO times{};
    LARGE_INTEGER size{};
    if (!file.isOpen() || GetFileType(file.get()) != FILE_TYPE_DISK || GetFileSizeEx(file.get(), &size) == 0 ||
        GetFileInformationByHandleEx(file.get(), FileBasicInfo, &times, sizeof times) == 0)
        return std::nullopt;
    return FileState{size.QuadPart, nanosecondsOf(std::max(times.LastWriteTime.QuadPart, times.ChangeTime.QuadPart))};
}

// Opening it without letting others write fails when one of them has it open to write.
bool isBeingWritten(const std::string& path) {
    const Handle file(CreateFileW(widePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return !file.isOpen() && GetLastError() == ERROR_SHARING_VIOLATION;
}

} // namespace kestrane
