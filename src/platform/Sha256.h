// The SHA-256 of a file, which tells whether its contents are still the same.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace kestrane {

// Takes the bytes piece by piece.
class Sha256 {
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void add(std::string_view bytes);
    std::string text(); // of all that was added, as sha256Of gives it; to be called once

private:
    struct Context;

    std::array<std::uint8_t, 32> digest();

    std::unique_ptr<Context> context_;
};

// 64 lower-case hexadecimal digits.
std::string sha256Of(std::string_view bytes);
std::string sha256OfFile(const std::string& path); // raises errno and its text when it cannot be read

} // namespace kestrane
