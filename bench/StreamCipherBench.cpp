// SPDX-License-Identifier: MIT
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Random.h"
#include "core/primitives/Salsa20Stream.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <sodium.h>

#include <array>
#include <memory>

namespace {

constexpr std::size_t textSize = std::size_t{64} << 20;
constexpr std::size_t pieceSize = std::size_t{1} << 30;  // the library counts in `int`
static_assert(textSize <= pieceSize);

const Bytes key(32, 0x42);
const Bytes nonce(8, 0x24);

/// Enciphers the same 64 MiB in place, over and over, so that no road pays for fresh memory.
void encipherInPlace(benchmark::State& state, const auto& encipher) {
    static Bytes text = randomBytes(textSize);
    for (auto _ : state) {
        encipher(text);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(textSize));
}

void chaCha20Ours(benchmark::State& state) {
    ChaCha20Stream stream({.key = key, .nonce = Bytes(12, 0x24)}, 0);
    encipherInPlace(state, [&](Bytes& text) { stream.processInPlace(text); });
}

void chaCha20OpenSSL(benchmark::State& state) {
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    EVP_EncryptInit_ex(context.get(), EVP_chacha20(), nullptr, key.data(), Bytes(16, 0x24).data());
    encipherInPlace(state, [&](Bytes& text) {
        int count = 0;
        EVP_EncryptUpdate(context.get(), text.data(), &count, text.data(), static_cast<int>(text.size()));
    });
}

void chaCha20Libsodium(benchmark::State& state) {
    encipherInPlace(state, [](Bytes& text) {
        crypto_stream_chacha20_xor(text.data(), text.data(), text.size(), nonce.data(), key.data());
    });
}

void salsa20Ours(benchmark::State& state) {
    Salsa20Stream stream({.key = key, .nonce = nonce});
    encipherInPlace(state, [&](Bytes& text) { stream.processInPlace(text); });
}

void salsa20Libsodium(benchmark::State& state) {
    encipherInPlace(state, [](Bytes& text) {
        crypto_stream_salsa20_xor(text.data(), text.data(), text.size(), nonce.data(), key.data());
    });
}

// libsodium looks at the processor here, and takes its plain road where it was not asked to.
const int sodiumReady = sodium_init();

BENCHMARK(chaCha20Ours)->Name("ChaCha20_64MiB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(chaCha20OpenSSL)->Name("ChaCha20_64MiB/openssl")->Unit(benchmark::kMillisecond);
BENCHMARK(chaCha20Libsodium)->Name("ChaCha20_64MiB/libsodium")->Unit(benchmark::kMillisecond);
BENCHMARK(salsa20Ours)->Name("Salsa20_64MiB/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(salsa20Libsodium)->Name("Salsa20_64MiB/libsodium")->Unit(benchmark::kMillisecond);

}  // namespace
