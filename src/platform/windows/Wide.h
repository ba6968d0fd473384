// The border to the system, which wants UTF-16: paths on the way out, names on the way in, and its errors as errno.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

namespace kestrane {

std::wstring wide(std::string_view utf8); // what is no UTF-8 becomes U+FFFD
std::string narrow(std::wstring_view text);

// A path as the calls of the system want it. One that is too long for the older calls is made absolute and marked, so
// that its length does not matter.
std::wstring widePath(const std::string& path);

// A path that the system gives, with "/" between its folders.
std::string portablePath(std::wstring_view path);

int errnoOf(DWORD error); // of an error of the system; EIO for one that errno does not know
[[noreturn]] void raiseLastError(DWORD error = GetLastError());

// A handle of the system, closed at the end.
class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}

    ~Handle() { close(); }

    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    HANDLE get() const { return handle_; }

    bool isOpen() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }

    // Returns false with the error at GetLastError when the system says that something went wrong.
    bool close() {
        const HANDLE handle = handle_;
        handle_ = INVALID_HANDLE_VALUE;
        return handle == nullptr || handle == INVALID_HANDLE_VALUE || CloseHandle(handle) != 0;
    }

private:
    HANDLE handle_;
};

// Opens a file that is there for reading. Others may write, rename and delete it meanwhile. It is not open when that
// failed; GetLastError says why.
Handle openToRead(const std::string& path);

// Writes all of the bytes. Raises errno with its text.
void writeAll(HANDLE file, std::string_view bytes);

// Whether an error means that another program has the file open in a way that forbids what was tried.
bool isHeldByOther(DWORD error);

// The same for giving a file the name of another, where the system only says that it is denied.
bool isNameHeldByOther(DWORD error);

// Does something again, for 2 s at most, as long as another program has the file open in a way that forbids it: what
// looks for viruses opens each new file for a moment. Returns 0, or the error of the last time.
template <class Work> // returns whether it was done, with the error at GetLastError
DWORD withPatience(Work work, bool (*isHeld)(DWORD error) = isHeldByOther) {
    constexpr int kTries = 40;
    constexpr DWORD kPause = 50; // ms
    for (int i = 0;; ++i) {
        if (work()) return 0;
        const DWORD error = GetLastError();
        if (!isHeld(error) || i == kTries) return error;
        Sleep(kPause);
    }
}

} // namespace kestrane
