#include "platform/Faults.h"

#include <array>
#include <csignal>
#include <cstdint>

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace kestrane {

namespace {

constexpr ULONG kFrames = 62; // the most that the system gives

void (*toReport)(std::string_view kind) = nullptr;

// A number as 16 hexadecimal digits.
std::array<char, 16> digitsOf(std::uint64_t number) {
    std::array<char, 16> digits{};
    for (std::size_t i = digits.size(); i > 0; --i, number >>= 4U)
        digits[i - 1] = "0123456789abcdef"[number & 15U];
    return digits;
}

LONG WINAPI onException(EXCEPTION_POINTERS* exception) {
    std::array<char, 26> kind{};
    constexpr std::string_view kBegin = "exception ";
    kBegin.copy(kind.data(), kBegin.size());
    const auto digits = digitsOf(exception->ExceptionRecord->ExceptionCode);
    std::string_view(digits.data(), digits.size()).copy(kind.data() + kBegin.size(), digits.size());
    toReport({kind.data(), kind.size()});
    return EXCEPTION_CONTINUE_SEARCH; // and then it ends the program as it would have
}

void onAbort(int) {
    toReport("abort");
}

} // namespace

ReportFile::ReportFile(const char* path) : file_(-1) {
    wchar_t name[4096];
    if (MultiByteToWideChar(CP_UTF8, 0, path, -1, name, static_cast<int>(std::size(name))) == 0) return;
    const HANDLE file = CreateFileW(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) file_ = _open_osfhandle(reinterpret_cast<intptr_t>(file), _O_WRONLY);
}

ReportFile::~ReportFile() {
    if (file_ < 0) return;
    _commit(file_);
    _close(file_);
}

void ReportFile::put(std::string_view text) {
    if (file_ >= 0) _write(file_, text.data(), static_cast<unsigned>(text.size()));
}

// The places of the functions, counted from where the program stands in memory. The system moves it with each start.
void ReportFile::putStack() {
    void* frames[kFrames];
    const USHORT count = CaptureStackBackTrace(0, kFrames, frames, nullptr);
    const auto begin = reinterpret_cast<std::uintptr_t>(GetModuleHandleW(nullptr));
    for (USHORT i = 0; i < count; ++i) {
        const auto digits = digitsOf(reinterpret_cast<std::uintptr_t>(frames[i]) - begin);
        put({digits.data(), digits.size()});
        put("\n");
    }
}

void catchFaults(void (*report)(std::string_view kind)) {
    toReport = report;
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    SetUnhandledExceptionFilter(onException);
    std::signal(SIGABRT, onAbort);
    ULONG room = 65'536; // for the handler, since a fault may be of the stack
    SetThreadStackGuarantee(&room);
}

std::string processNumber() {
    return std::to_string(GetCurrentProcessId());
}

} // namespace kestrane
