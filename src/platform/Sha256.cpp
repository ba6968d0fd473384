#include "platform/Sha256.h"

#include "platform/Files.h"

#include <nettle/sha2.h>

#include <array>

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

struct Sha256::Context {
    sha256_ctx state;
};

Sha256::Sha256() : context_(std::make_unique<Context>()) {
    sha256_init(&context_->state);
}

Sha256::~Sha256() = default;

void Sha256::add(std::string_view bytes) {
    sha256_update(&context_->state, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::text() {
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context_->state, digest.size(), digest.data());
    std::string text;
    for (const std::uint8_t byte : digest) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        text += {kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return text;
}

} // namespace kestrane
