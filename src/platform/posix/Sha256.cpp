#include "platform/Sha256.h"

#include <nettle/sha2.h>

#include <array>

namespace kestrane {

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

std::array<std::uint8_t, 32> Sha256::digest() {
    static_assert(SHA256_DIGEST_SIZE == 32);
    std::array<std::uint8_t, 32> digest{};
    sha256_digest(&context_->state, digest.size(), digest.data());
    return digest;
}

} // namespace kestrane
