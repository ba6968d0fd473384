#include "platform/RunningProgram.h"

#include "platform/windows/Wide.h"

#include <csignal>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace kestrane {

std::string folderOfProgram() {
    std::wstring name(32'768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    const std::string path = portablePath(name);
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string("/") : path.substr(0, slash + 1);
}

std::vector<std::string> programArguments(int, char**) {
    int count = 0;
    LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; words != nullptr && i < count; ++i)
        arguments.push_back(narrow(words[i]));
    LocalFree(words);
    return arguments;
}

void* functionOfLibrary(const std::string& path, const char* function) {
    const HMODULE library = LoadLibraryW(widePath(path).c_str());
    return library == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(library, function));
}

void prepareStandardStreams() {
    for (int stream = 0; stream <= 2; ++stream) {
        if (_get_osfhandle(stream) < 0) _open("NUL", stream == 0 ? _O_WRONLY : _O_RDONLY);
        _setmode(stream, _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
    SetConsoleCP(CP_UTF8);
}

bool hasDisplay() {
    return true;
}

} // namespace kestrane
