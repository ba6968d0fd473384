#include "platform/Sha256.h"

#include "platform/Files.h"

namespace kestrane {

std::string sha256OfFile(const std::string& path) {
    Sha256 hash;
    readPieces(path, [&](std::string_view piece) { hash.add(piece); });
    return hash.text();
}

std::string sha256Of(std::string_view bytes) {
    Sha256 hash;
    hash.add(bytes);
    return hash.text();
}

std::string Sha256::text() {
    std::string text;
    for (const std::uint8_t byte : digest()) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

} // namespace kestrane
