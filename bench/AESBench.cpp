// SPDX-License-Identifier: MIT
#include "core/primitives/AESCipher.h"
#include "core/primitives/Random.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>

#include <memory>

namespace {

constexpr std::uint64_t rounds = 6'000'000;

void aesKdfOurs(benchmark::State& state) {
    const auto key = randomBytes(32);
    auto block = randomBytes(32);
    for (auto _ : state)
        block = AESCipher::ecbEncryptRepeatedly(block, {.key = key}, rounds);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rounds));
}

/// The fastest that the library gives: one call of 32 bytes a round, on one context.
void aesKdfOpenSSL(benchmark::State& state) {
    const auto key = randomBytes(32);
    auto block = randomBytes(32);
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  &EVP_CIPHER_CTX_free);
    EVP_EncryptInit_ex(context.get(), EVP_aes_256_ecb(), nullptr, key.data(), nullptr);
    for (auto _ : state)
        for (std::uint64_t round = 0; round < rounds; ++round) {
            int count = 0;
            EVP_EncryptUpdate(context.get(), block.data(), &count, block.data(), static_cast<int>(block.size()));
        }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rounds));
}

BENCHMARK(aesKdfOurs)->Name("AesKdf_6M_rounds/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(aesKdfOpenSSL)->Name("AesKdf_6M_rounds/openssl")->Unit(benchmark::kMillisecond);

}  // namespace
