// The two streams of a call. Results go to standard output through std::cout, messages to standard error through tell.
#pragma once

#include "platform/RuntimeError.h"

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace kestrane {

// The result cannot be written, because its reader has gone or the disk is full. The call ends with this error.
class ResultError : public RuntimeError {
public:
    using RuntimeError::RuntimeError;
};

// The words of the call are wrong in a way that was found only after parsing.
class WrongWords : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// While this object lives, std::cout goes to standard output through its buffer, and raises ResultError when something
// cannot be written. Flush before the object ends: what is still in the buffer then is lost.
class ResultBuffer : public std::streambuf {
public:
    ResultBuffer();
    ~ResultBuffer() override;
    ResultBuffer(const ResultBuffer&) = delete;
    ResultBuffer& operator=(const ResultBuffer&) = delete;

protected:
    int_type overflow(int_type c) override;
    int sync() override;

private:
    void write();

    std::streambuf* before_;
    std::array<char, 1 << 16> buffer_;
};

class Console {
public:
    explicit Console(bool areErrorsJson) : areErrorsJson_(areErrorsJson) {}

    // Writes one message to standard error: the text, with the file on a line behind it when NamesFile says so and the
    // text does not name it; or {"error": {"number", "text", "file"}} on one line.
    void tell(std::string_view text, std::optional<std::int64_t> number = std::nullopt) const;

    bool areErrorsJson() const { return areErrorsJson_; }

    std::string File;       // the file that messages are about, as the call names it; empty for none
    bool NamesFile = false; // the call has several files

private:
    bool areErrorsJson_;
};

} // namespace kestrane
