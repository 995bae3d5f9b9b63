// SPDX-License-Identifier: MIT
#include "core/primitives/AESOperation.h"

#include <openssl/evp.h>

#include <algorithm>
#include <memory>

namespace {

constexpr std::int32_t paddingStatus = -4304;
constexpr std::int32_t otherStatus = -4308;

// The library counts in `int`, so data goes to it in pieces.
constexpr std::size_t pieceSize = std::size_t{1} << 24;

/// The library's cipher context with its algorithms. Fetching them costs more than enciphering a block.
struct Context {
    struct Free {
        void operator()(EVP_CIPHER* algorithm) const noexcept { EVP_CIPHER_free(algorithm); }
        void operator()(EVP_CIPHER_CTX* context) const noexcept { EVP_CIPHER_CTX_free(context); }
    };
    std::unique_ptr<EVP_CIPHER, Free> cbc{EVP_CIPHER_fetch(nullptr, "AES-256-CBC", nullptr)};
    std::unique_ptr<EVP_CIPHER, Free> ecb{EVP_CIPHER_fetch(nullptr, "AES-256-ECB", nullptr)};
    std::unique_ptr<EVP_CIPHER_CTX, Free> context{EVP_CIPHER_CTX_new()};
};

Context& threadContext() {
    thread_local Context context;
    return context;
}

void require(bool succeeded) {
    if (!succeeded)
        throw AESCipher::Error::cryptoFailure(otherStatus);
}

}  // namespace

AESOperation::AESOperation(Direction direction, const AESCipher::KeyMaterial& under) {
    const auto& [key, iv] = under;
    const auto& [cbc, ecb, context] = threadContext();
    const auto* algorithm = iv.empty() ? ecb.get() : cbc.get();
    require(algorithm && EVP_CipherInit_ex2(context.get(), algorithm, key.data(), iv.data(),
                                            direction == Direction::encrypt ? 1 : 0, nullptr) == 1);
    EVP_CIPHER_CTX_set_padding(context.get(), iv.empty() ? 0 : 1);
}

AESOperation::~AESOperation() {
    // Key schedule and buffered block go with the algorithm's own part of the context, which the library wipes.
    EVP_CIPHER_CTX_reset(threadContext().context.get());
}

std::size_t AESOperation::update(std::uint8_t* out, ByteView data) {
    auto* const context = threadContext().context.get();
    std::size_t written = 0;
    while (!data.empty()) {
        const auto piece = data.first(std::min(data.size(), pieceSize));
        int count = 0;
        require(EVP_CipherUpdate(context, out + written, &count, piece.data(), static_cast<int>(piece.size())) == 1);
        written += static_cast<std::size_t>(count);
        data = data.subspan(piece.size());
    }
    return written;
}

std::size_t AESOperation::finish(std::uint8_t* out) {
    int count = 0;
    // With whole blocks behind it, nothing can fail here but the padding.
    if (EVP_CipherFinal_ex(threadContext().context.get(), out, &count) != 1)
        throw AESCipher::Error::cryptoFailure(paddingStatus);
    return static_cast<std::size_t>(count);
}
