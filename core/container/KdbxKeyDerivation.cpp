// SPDX-License-Identifier: MIT
#include "core/container/KdbxKeyDerivation.h"

#include "core/container/KdbxGate.h"
#include "core/container/KdbxUUIDs.h"
#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/Argon2.h"
#include "core/primitives/Overloaded.h"
#include "core/primitives/Precondition.h"
#include "core/primitives/Sha2.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <string_view>

namespace KdbxKeyDerivation {
namespace {

using Variant = KdfSettings::Variant;

constexpr std::size_t keySize = 32;

// The keys of the parameters, as the format publishes them. Most of Argon2's are the letters of its inputs (RFC 9106,
// section 3.1); iterations and associated data have letters of the format's own.
namespace Key {
constexpr std::string_view identifier = "$UUID";  // 16 bytes
constexpr std::string_view salt = "S";            // bytes; the seed of the AES derivation
constexpr std::string_view rounds = "R";          // 64 bits
constexpr std::string_view parallelism = "P";     // 32 bits
constexpr std::string_view memory = "M";          // 64 bits, in bytes
constexpr std::string_view iterations = "I";      // 64 bits
constexpr std::string_view version = "V";         // 32 bits
constexpr std::string_view secret = "K";          // bytes
constexpr std::string_view associatedData = "A";  // bytes
}  // namespace Key

// What a file that names no cost of Argon2 is taken to mean.
constexpr std::uint64_t defaultMemory = std::uint64_t{64} * 1024 * 1024;  // bytes
constexpr std::uint64_t defaultIterations = 2;
constexpr std::uint32_t defaultParallelism = 2;

// Two floors: Argon2 takes no less than 8 blocks (RFC 9106, section 3.1), so the model holds no less; a run refuses
// what is not even one block, and leaves what lies between to Argon2 itself.
constexpr std::uint64_t leastMemoryKept = 8192;  // bytes
constexpr std::uint64_t leastMemoryRun = 1024;   // bytes
constexpr unsigned memoryBits = 42;              // of bytes: what is left is KiB in 32 bits

/// Values by their keys. What is missing, or of a kind that does not convert to the one asked for, is its fallback.
class Reader {
public:
    explicit Reader(const VariantDictionary& parameters) : m_parameters(parameters) {}

    [[nodiscard]] Bytes bytes(std::string_view key) const {
        const auto* value = m_parameters[key];
        return value ? value->asData().value_or(Bytes()) : Bytes();
    }
    [[nodiscard]] std::uint64_t number64(std::string_view key, std::uint64_t fallback) const {
        const auto* value = m_parameters[key];
        return value ? value->asUInt64().value_or(fallback) : fallback;
    }
    [[nodiscard]] std::uint32_t number32(std::string_view key, std::uint32_t fallback) const {
        const auto* value = m_parameters[key];
        return value ? value->asUInt32().value_or(fallback) : fallback;
    }

    [[nodiscard]] std::uint64_t rounds() const { return number64(Key::rounds, defaultRounds); }
    [[nodiscard]] std::uint64_t memory() const { return number64(Key::memory, defaultMemory); }
    [[nodiscard]] std::uint64_t iterations() const { return number64(Key::iterations, defaultIterations); }
    [[nodiscard]] std::uint32_t parallelism() const { return number32(Key::parallelism, defaultParallelism); }

private:
    const VariantDictionary& m_parameters;
};

Argon2::Cost checkedCost(const Reader& parameters) {
    const auto memory = parameters.memory();
    const auto iterations = parameters.iterations();
    const auto parallelism = parameters.parallelism();
    if (memory < leastMemoryRun || iterations == 0 || parallelism == 0)
        throw KdbxError::unsupportedKdf("geçersiz Argon2 parametreleri");
    if (memory >> memoryBits != 0 || iterations > std::numeric_limits<std::uint32_t>::max())
        throw KdbxError::unsupportedKdf("Argon2 parametreleri aralık dışı");
    return {.memoryKiB = static_cast<std::uint32_t>(memory / 1024),
            .iterations = static_cast<std::uint32_t>(iterations),
            .parallelism = parallelism};
}

template <Variant variant>
KdfSettings argon2Settings(const Reader& parameters) {
    return {KdfSettings::Argon2{.variant = variant,
                                .memoryKiB = std::max(parameters.memory(), leastMemoryKept) / 1024,
                                .iterations = parameters.iterations(),
                                .parallelism = parameters.parallelism()}};
}

template <Variant variant>
Bytes runArgon2(ByteView compositeKey, const Reader& parameters, Derivation* derivation) {
    const auto salt = parameters.bytes(Key::salt);
    const auto secret = parameters.bytes(Key::secret);
    const auto associatedData = parameters.bytes(Key::associatedData);
    return Argon2::hash({.password = compositeKey, .salt = salt, .secret = secret, .associatedData = associatedData},
                        KdbxGate::argon2Cost(checkedCost(parameters)), keySize,
                        variant == Variant::argon2d ? Argon2::Variant::d : Argon2::Variant::id,
                        parameters.number32(Key::version, Argon2::currentVersion), derivation);
}

KdfSettings aesSettings(const Reader& parameters) {
    return {KdfSettings::AesKdf{parameters.rounds()}};
}

Bytes runAes(ByteView compositeKey, const Reader& parameters, Derivation* derivation) {
    return aesKdf(compositeKey, {.seed = parameters.bytes(Key::salt), .rounds = parameters.rounds()}, derivation);
}

/// A derivation that a header can name: what its parameters mean to the model, and its run.
struct Row {
    UUID identifier;
    KdfSettings (*settings)(const Reader& parameters);
    Bytes (*run)(ByteView compositeKey, const Reader& parameters, Derivation* derivation);
};

std::span<const Row> derivations() {
    static const std::array rows{
        Row{KdbxUUIDs::kdfAes(), aesSettings, runAes},
        Row{KdbxUUIDs::kdfArgon2d(), argon2Settings<Variant::argon2d>, runArgon2<Variant::argon2d>},
        Row{KdbxUUIDs::kdfArgon2id(), argon2Settings<Variant::argon2id>, runArgon2<Variant::argon2id>},
    };
    return rows;
}

const Row& rowFor(const VariantDictionary& parameters) {
    const auto id = identifier(parameters);
    const auto found = std::ranges::find(derivations(), id, &Row::identifier);
    if (found == derivations().end())
        throw KdbxError::unsupportedKdf(id.text());
    return *found;
}

VariantDictionary parametersNaming(const UUID& id) {
    VariantDictionary parameters;
    parameters.set(Key::identifier, VariantValue{copyOf(id.kdbxBytes())});
    return parameters;
}

VariantDictionary argon2Parameters(const KdfSettings::Argon2& settings, ByteView salt) {
    // The model's memory comes from a file's bytes divided by 1024, or from our own constants.
    precondition(settings.memoryKiB <= std::numeric_limits<std::uint64_t>::max() / 1024);
    auto parameters =
        parametersNaming(settings.variant == Variant::argon2d ? KdbxUUIDs::kdfArgon2d() : KdbxUUIDs::kdfArgon2id());
    parameters.set(Key::salt, VariantValue{copyOf(salt)});
    parameters.set(Key::parallelism, VariantValue{settings.parallelism});
    parameters.set(Key::memory, VariantValue{settings.memoryKiB * 1024});
    parameters.set(Key::iterations, VariantValue{settings.iterations});
    parameters.set(Key::version, VariantValue{Argon2::currentVersion});
    return parameters;
}

VariantDictionary aesParameters(const KdfSettings::AesKdf& settings, ByteView seed) {
    auto parameters = parametersNaming(KdbxUUIDs::kdfAes());
    parameters.set(Key::rounds, VariantValue{settings.rounds});
    parameters.set(Key::salt, VariantValue{copyOf(seed)});
    return parameters;
}

}  // namespace

UUID identifier(const VariantDictionary& parameters) {
    const auto id = UUID::fromKdbxBytes(Reader(parameters).bytes(Key::identifier));
    if (!id)
        throw KdbxError::unsupportedKdf("KdfParameters içinde $UUID yok");
    return *id;
}

KdfSettings settings(const VariantDictionary& parameters) {
    return rowFor(parameters).settings(Reader(parameters));
}

VariantDictionary parameters(const KdfSettings& settings, ByteView salt) {
    return std::visit(Overloaded{
                          [&](const KdfSettings::Argon2& argon2) { return argon2Parameters(argon2, salt); },
                          [&](const KdfSettings::AesKdf& aes) { return aesParameters(aes, salt); },
                      },
                      settings.settings);
}

Bytes run(const VariantDictionary& parameters, ByteView compositeKey, Derivation* derivation) {
    return rowFor(parameters).run(compositeKey, Reader(parameters), derivation);
}

Bytes aesKdf(ByteView input, const AesKdfParameters& parameters, Derivation* derivation) {
    if (input.size() != keySize)
        throw KdbxError::cryptoFailure("AES-KDF girdisi 32 bayt olmalı");
    if (parameters.seed.size() != keySize)
        throw KdbxError::cryptoFailure("AES-KDF tohumu 32 bayt olmalı");
    return Sha2::sha256(AESCipher::ecbEncryptRepeatedly(input, {.key = parameters.seed},
                                                        KdbxGate::aesRounds(parameters.rounds), derivation));
}

}  // namespace KdbxKeyDerivation
