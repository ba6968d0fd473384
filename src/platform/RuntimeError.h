// The one exception of the program: a run-time error with a number and a text, raised where a value does not fit its
// type, an index is out of range, or the operating system refuses. Nothing else is thrown across a folder's border.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace kestrane {

class RuntimeError : public std::runtime_error {
public:
    RuntimeError(std::int64_t number, const std::string& description) :
        std::runtime_error(description), Number(number) {}

    std::int64_t Number;
};

constexpr std::int64_t kErrorOverflow = 6;
constexpr std::int64_t kErrorOutOfMemory = 7;
constexpr std::int64_t kErrorIndexOutOfRange = 9;
constexpr std::int64_t kErrorTypeMismatch = 13;
constexpr std::int64_t kErrorApplication = 0x80040001;

[[noreturn]] void raiseOverflow();             // 6, "Overflow"
[[noreturn]] void raiseIndexOutOfRange();      // 9, "Subscript out of range"
[[noreturn]] void raiseTypeMismatch();         // 13, "Type mismatch"
[[noreturn]] void raiseSystemError(int error); // the errno and its text

} // namespace kestrane
