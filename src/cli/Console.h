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

// The result cannot be written: the reader has gone, the disk is full. Nothing that follows makes sense.
class ResultError : public RuntimeError {
public:
    using RuntimeError::RuntimeError;
};

// The call's words are wrong, which turned out only behind parsing.
class WrongWords : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// While it lives, std::cout goes to standard output through this buffer, and raises ResultError on what cannot be
// written. What is still in it at the end is lost: flush before.
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

    // One message on standard error: the text, or {"error": {"number", "text", "file"}} on one line.
    void tell(std::string_view text, std::optional<std::int64_t> number = std::nullopt) const;

    bool areErrorsJson() const { return areErrorsJson_; }

    std::string File; // that the messages are about, as the call names it; empty: none

private:
    bool areErrorsJson_;
};

} // namespace kestrane
