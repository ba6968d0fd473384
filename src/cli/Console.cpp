#include "cli/Console.h"

#include "cli/Json.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <unistd.h>

namespace kestrane {

ResultBuffer::ResultBuffer() : before_(std::cout.rdbuf(this)) {
    setp(buffer_.data(), buffer_.data() + buffer_.size());
    std::cout.exceptions(std::ios::badbit); // so that what write() raises passes through
    std::cerr.tie(nullptr);                 // otherwise a message about a failed write would try to write again
}

ResultBuffer::~ResultBuffer() {
    std::cout.exceptions(std::ios::goodbit);
    std::cout.rdbuf(before_);
}

ResultBuffer::int_type ResultBuffer::overflow(int_type c) {
    write();
    return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c) : sputc(static_cast<char>(c));
}

int ResultBuffer::sync() {
    write();
    return 0;
}

void ResultBuffer::write() {
    const char* from = pbase();
    while (from < pptr()) {
        const ssize_t count = ::write(STDOUT_FILENO, from, static_cast<std::size_t>(pptr() - from));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) {
            const int error = errno;
            setp(buffer_.data(), buffer_.data() + buffer_.size()); // drops what could not be written
            throw ResultError(error, std::string("The result could not be written: ") + std::strerror(error));
        }
        from += count;
    }
    setp(buffer_.data(), buffer_.data() + buffer_.size());
}

void Console::tell(std::string_view text, std::optional<std::int64_t> number) const {
    if (!areErrorsJson_) {
        std::cerr << text << '\n';
        if (NamesFile && text.find(File) == std::string_view::npos) std::cerr << File << '\n'; // an empty one is found
        std::cerr << std::flush;
        return;
    }
    const Json error = {{"number", number ? Json(*number) : Json(nullptr)},
                        {"text", std::string(text)},
                        {"file", File.empty() ? Json(nullptr) : Json(File)}};
    std::cerr << jsonText({{"error", error}}) << '\n' << std::flush;
}

} // namespace kestrane
