// SPDX-License-Identifier: MIT
#include "core/primitives/Blake2b.h"

#include <benchmark/benchmark.h>
#include <sodium.h>

namespace {

constexpr std::size_t messageSize = std::size_t{64} << 20;

const Bytes& message() {
    static const Bytes message(messageSize, 0x5A);
    return message;
}

void countBytes(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(messageSize));
}

void hashOurs(benchmark::State& state) {
    const auto& bytes = message();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(Blake2b::hash(bytes, 64));
    countBytes(state);
}

void hashSodium(benchmark::State& state) {
    if (sodium_init() < 0)
        state.SkipWithError("the peer has no random source");
    const auto& bytes = message();
    Bytes digest(64);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            crypto_generichash(digest.data(), digest.size(), bytes.data(), bytes.size(), nullptr, 0));
    countBytes(state);
}

const int registered = [] {
    const auto set = [](auto* benchmark) { benchmark->Unit(benchmark::kMillisecond); };
    set(benchmark::RegisterBenchmark("Blake2b_64MiB/ours", hashOurs));
    set(benchmark::RegisterBenchmark("Blake2b_64MiB/libsodium", hashSodium));
    return 0;
}();

}  // namespace
