// SPDX-License-Identifier: MIT
#include "core/primitives/Argon2.h"

#include <argon2.h>
#include <benchmark/benchmark.h>
#include <sodium.h>

#include <array>

namespace {

constexpr Argon2::Cost oneLane{.memoryKiB = 256 * 1024, .iterations = 16, .parallelism = 1};
constexpr Argon2::Cost fourLanes{.memoryKiB = 256 * 1024, .iterations = 16, .parallelism = 4};

constexpr std::array<std::uint8_t, 32> password{1, 2, 3};
constexpr std::array<std::uint8_t, crypto_pwhash_SALTBYTES> salt{4, 5, 6};
constexpr std::size_t outputLength = 32;

/// Runs `hash`, once before the clock starts: where the machine is a virtual one, memory that nobody has touched for a
/// while costs its host as much as some passes cost us.
template <class Hash>
void measure(benchmark::State& state, const Hash& hash) {
    hash();
    for ([[maybe_unused]] auto _ : state)
        hash();
}

void hashOurs(benchmark::State& state, Argon2::Cost cost) {
    measure(state, [&] {
        benchmark::DoNotOptimize(
            Argon2::hash({.password = password, .salt = salt}, cost, outputLength, Argon2::Variant::id));
    });
}

void hashLibargon2(benchmark::State& state, Argon2::Cost cost) {
    Bytes output(outputLength);
    measure(state, [&] {
        if (argon2id_hash_raw(cost.iterations, cost.memoryKiB, cost.parallelism, password.data(), password.size(),
                              salt.data(), salt.size(), output.data(), output.size()) != ARGON2_OK)
            state.SkipWithError("the peer failed");
    });
}

void hashSodium(benchmark::State& state, Argon2::Cost cost) {
    if (sodium_init() < 0)
        state.SkipWithError("the peer has no random source");
    Bytes output(outputLength);
    measure(state, [&] {
        if (crypto_pwhash(output.data(), output.size(), reinterpret_cast<const char*>(password.data()), password.size(),
                          salt.data(), cost.iterations, std::size_t{cost.memoryKiB} * 1024,
                          crypto_pwhash_ALG_ARGON2ID13) != 0)
            state.SkipWithError("the peer failed");
    });
}

template <class... Arguments>
void add(const char* name, const Arguments&... arguments) {
    benchmark::RegisterBenchmark(name, arguments...)->Unit(benchmark::kMillisecond);
}

const int registered = [] {
    add("Argon2id_256MiB_t16_p4/ours", hashOurs, fourLanes);
    add("Argon2id_256MiB_t16_p4/libargon2", hashLibargon2, fourLanes);
    add("Argon2id_256MiB_t16_p1/ours", hashOurs, oneLane);
    add("Argon2id_256MiB_t16_p1/libargon2", hashLibargon2, oneLane);
    add("Argon2id_256MiB_t16_p1/libsodium", hashSodium, oneLane);
    return 0;
}();

}  // namespace
