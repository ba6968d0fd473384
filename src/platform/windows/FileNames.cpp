#include "platform/FileNames.h"

#include "platform/RuntimeError.h"
#include "platform/windows/Wide.h"

#include <cerrno>
#include <cstdio>
#include <functional>
#include <random>

namespace kestrane {

namespace {

// Tries names until one is free. create returns whether it made something of that name.
std::string makeUnique(const std::string& begin, const std::function<bool(const wchar_t* name)>& create) {
    std::random_device random;
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%06x", random() & 0xFFFFFFU);
        const std::string name = begin + digits;
        if (create(widePath(name).c_str())) return name;
        const DWORD error = GetLastError();
        if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) raiseLastError(error);
    }
    raiseSystemError(EEXIST);
}

} // namespace

int renameFile(const std::string& from, const std::string& to) {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const DWORD error = withPatience(
        [&] { return MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), kHow) != 0; }, isNameHeldByOther);
    return error == 0 ? 0 : errnoOf(error);
}

bool giveSecondName(const std::string& path, const std::string& name) {
    return CreateHardLinkW(widePath(name).c_str(), widePath(path).c_str(), nullptr) != 0;
}

std::string makeUniqueFile(const std::string& begin) {
    return makeUnique(begin, [](const wchar_t* name) {
        return Handle(CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr))
            .isOpen();
    });
}

std::string makeUniqueFolder(const std::string& begin) {
    return makeUnique(begin, [](const wchar_t* name) { return CreateDirectoryW(name, nullptr) != 0; });
}

} // namespace kestrane
