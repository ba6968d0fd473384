#include "platform/Sha256.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>

#include <windows.h>

#include <bcrypt.h>

namespace kestrane {

struct Sha256::Context {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE hash = nullptr;
};

namespace {

// The system has SHA-256 since long before the oldest one that the program runs on.
void check(NTSTATUS status) {
    if (status < 0) raiseSystemError(EIO);
}

} // namespace

Sha256::Sha256() : context_(std::make_unique<Context>()) {
    check(BCryptOpenAlgorithmProvider(&context_->algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0));
    check(BCryptCreateHash(context_->algorithm, &context_->hash, nullptr, 0, nullptr, 0, 0));
}

Sha256::~Sha256() {
    BCryptDestroyHash(context_->hash);
    BCryptCloseAlgorithmProvider(context_->algorithm, 0);
}

void Sha256::add(std::string_view bytes) {
    constexpr std::size_t kAtOnce = std::size_t{64} << 20; // the system counts in 32 bits
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, kAtOnce);
        auto* const data = reinterpret_cast<PUCHAR>(const_cast<char*>(piece.data()));
        check(BCryptHashData(context_->hash, data, static_cast<ULONG>(piece.size()), 0));
        bytes.remove_prefix(piece.size());
    }
}

std::array<std::uint8_t, 32> Sha256::digest() {
    std::array<std::uint8_t, 32> digest{};
    check(BCryptFinishHash(context_->hash, digest.data(), static_cast<ULONG>(digest.size()), 0));
    return digest;
}

} // namespace kestrane
