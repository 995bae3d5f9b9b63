// SPDX-License-Identifier: MIT
#include "core/primitives/Sha2.h"

#include "core/primitives/Precondition.h"

#include <openssl/evp.h>

#include <array>
#include <memory>

namespace Sha2 {
namespace {

constexpr std::size_t hmacBlockSize = 64;  // SHA-256's input block (RFC 2104, section 2)

/// A digest context that is set up once a thread; fetching the algorithm costs more than hashing a key.
class Digest {
public:
    explicit Digest(const char* algorithm)
        : m_algorithm(EVP_MD_fetch(nullptr, algorithm, nullptr)), m_context(EVP_MD_CTX_new()) {
        // Both are in every build of the library; without them there is no program.
        precondition(m_algorithm && m_context);
    }

    Bytes operator()(std::initializer_list<ByteView> pieces) {
        Bytes digest(static_cast<std::size_t>(EVP_MD_get_size(m_algorithm.get())));
        start();
        for (const auto piece : pieces)
            update(piece);
        finish(digest);
        return digest;
    }

    void start() { precondition(EVP_DigestInit_ex2(m_context.get(), m_algorithm.get(), nullptr) == 1); }
    void update(ByteView piece) { precondition(EVP_DigestUpdate(m_context.get(), piece.data(), piece.size()) == 1); }
    void finish(Bytes& digest) {
        precondition(EVP_DigestFinal_ex(m_context.get(), digest.data(), nullptr) == 1);
        // What was hashed may be a key, and the context outlives the call.
        EVP_MD_CTX_reset(m_context.get());
    }

private:
    struct Free {
        void operator()(EVP_MD* algorithm) const noexcept { EVP_MD_free(algorithm); }
        void operator()(EVP_MD_CTX* context) const noexcept { EVP_MD_CTX_free(context); }
    };
    std::unique_ptr<EVP_MD, Free> m_algorithm;
    std::unique_ptr<EVP_MD_CTX, Free> m_context;
};

Digest& sha256Digest() {
    thread_local Digest digest("SHA256");
    return digest;
}

Digest& sha512Digest() {
    thread_local Digest digest("SHA512");
    return digest;
}

Bytes paddedKey(ByteView key, std::uint8_t pad) {
    Bytes block(hmacBlockSize, pad);
    for (std::size_t i = 0; i < key.size(); ++i)
        block[i] ^= key[i];
    return block;
}

}  // namespace

Bytes sha256(std::initializer_list<ByteView> pieces) {
    return sha256Digest()(pieces);
}

Bytes sha512(std::initializer_list<ByteView> pieces) {
    return sha512Digest()(pieces);
}

Bytes hmacSha256(const HmacKey& under, std::initializer_list<ByteView> pieces) {
    const auto key = under.key;
    const Bytes shortKey = key.size() > hmacBlockSize ? sha256(key) : copyOf(key);
    auto& digest = sha256Digest();
    Bytes inner(sha256Size);
    digest.start();
    digest.update(paddedKey(shortKey, 0x36));
    for (const auto piece : pieces)
        digest.update(piece);
    digest.finish(inner);
    return sha256({paddedKey(shortKey, 0x5C), inner});
}

}  // namespace Sha2
