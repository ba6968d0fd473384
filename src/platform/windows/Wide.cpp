#include "platform/windows/Wide.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace kestrane {

namespace {

constexpr std::size_t kLongPath = 240; // of the 260 that the older calls take, less a short name in the folder

} // namespace

std::wstring wide(std::string_view utf8) {
    const int size = static_cast<int>(utf8.size());
    std::wstring text(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, text.data(), static_cast<int>(text.size()));
    return text;
}

std::string narrow(std::wstring_view text) {
    const int size = static_cast<int>(text.size());
    const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(needed), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), size, utf8.data(), needed, nullptr, nullptr);
    return utf8;
}

std::wstring widePath(const std::string& path) {
    std::wstring name = wide(path);
    if (name.size() < kLongPath || name.starts_with(L"\\\\?\\") || name.starts_with(L"\\\\.\\")) return name;
    const DWORD size = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(GetFullPathNameW(name.c_str(), size, full.data(), nullptr));
    if (full.empty()) return name;
    std::ranges::replace(full, L'/', L'\\'); // a marked path is taken as it is
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

std::string portablePath(std::wstring_view path) {
    std::string name = narrow(path);
    std::ranges::replace(name, '\\', '/');
    return name;
}

int errnoOf(DWORD error) {
    const std::error_condition condition = std::system_category().default_error_condition(static_cast<int>(error));
    return condition.category() == std::generic_category() ? condition.value() : EIO;
}

void raiseLastError(DWORD error) {
    raiseSystemError(errnoOf(error));
}

bool isHeldByOther(DWORD error) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION || error == ERROR_USER_MAPPED_FILE ||
           error == ERROR_DELETE_PENDING || error == ERROR_UNABLE_TO_REMOVE_REPLACED;
}

bool isNameHeldByOther(DWORD error) {
    return isHeldByOther(error) || error == ERROR_ACCESS_DENIED;
}

Handle openToRead(const std::string& path) {
    constexpr DWORD kAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return Handle(CreateFileW(widePath(path).c_str(), GENERIC_READ, kAll, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                              nullptr));
}

void writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t kMost = std::size_t{64} << 20; // a call takes
    while (!bytes.empty()) {
        DWORD count = 0;
        if (WriteFile(file, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMost)), &count, nullptr) == 0)
            raiseLastError();
        if (count == 0) raiseSystemError(EIO);
        bytes.remove_prefix(count);
    }
}

} // namespace kestrane
