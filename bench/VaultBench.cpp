// SPDX-License-Identifier: MIT
// A vault's whole road from file to model and back, key derivation apart, and each of its stages alone.
#include "core/container/KdbxCrypto.h"
#include "core/container/KdbxFile.h"
#include "core/container/KdbxInnerHeader.h"
#include "core/document/KdbxXML.h"
#include "core/primitives/Gzip.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>

namespace {

constexpr int entriesPerGroup = 100;
const KdbxKey key{"parola", std::nullopt};
const Bytes cipherKey(32, 1);
const Bytes iv(16, 2);
const Bytes hmacKey(64, 3);

/// Vaults as people have them, about a kilobyte of document for each entry; the same ones in every run.
class VaultMaker {
public:
    KdbxDatabase vault(int entryCount) {
        KdbxDatabase database{.meta = {},
                              .root = {},
                              .cipher = KdbxCipher::aes256,
                              .kdf = {KdfSettings::Argon2{KdfSettings::Variant::argon2id, 8, 1, 1}},
                              .compressed = true,
                              .formatVersion = {.major = 4, .minor = 1}};
        while (entryCount > 0) {
            KdbxGroup group;
            group.name = "Grup " + word();
            for (int i = 0; i < entriesPerGroup && entryCount > 0; ++i, --entryCount)
                group.entries.append(entry());
            database.root.groups.append(std::move(group));
        }
        return database;
    }

private:
    KdbxEntry entry() {
        const auto site = word();
        KdbxEntry entry;
        entry.title = "Hesap " + site;
        entry.username = word() + "@example.com";
        entry.password = SecureString(word() + word() + "-ş");
        entry.url = "https://www." + site + ".example.com/giris";
        entry.notes = "Üyelik: " + word() + " " + word();
        if (m_random() % 4 == 0)
            entry.customFields["Müşteri no"] = word();
        return entry;
    }
    std::string word() {
        std::string text;
        for (int i = 0; i < 8; ++i)
            text += static_cast<char>('a' + m_random() % 26);
        return text;
    }

    std::mt19937_64 m_random{20240521};
};

/// What the stages of one vault work on.
struct Stages {
    explicit Stages(int entryCount) : database(VaultMaker().vault(entryCount)) {
        const auto stream = newStream();
        document = KdbxXML::serialize(database, *stream, std::nullopt);
        compressed = Gzip::compress(document);
        ciphertext = KdbxCrypto::encryptPayload(compressed, {.cipher = KdbxCipher::aes256, .key = cipherKey, .iv = iv});
        blocks = KdbxCrypto::writeHMACBlocks(ciphertext, {.key = hmacKey}, KdbxCrypto::defaultBlockSize);
        file = KdbxFile::save(database, key);
    }

    static std::unique_ptr<InnerStreamCipher> newStream() {
        return KdbxCrypto::makeInnerStream(KdbxCrypto::InnerStreamID::chaCha20, Bytes(64, 7));
    }
    /// Made once for each size.
    static const Stages& of(std::int64_t entryCount) {
        static const Stages small(10'000);
        if (entryCount == 10'000)
            return small;
        static const Stages large(100'000);
        return large;
    }

    KdbxDatabase database;
    Bytes document;
    Bytes compressed;
    Bytes ciphertext;
    Bytes blocks;
    Bytes file;
};

template <class Work>
void measure(benchmark::State& state, std::int64_t entryCount, Work work) {
    const auto& stages = Stages::of(entryCount);
    for (auto _ : state)
        benchmark::DoNotOptimize(work(stages));
    state.counters["document_MB"] = static_cast<double>(stages.document.size()) / 1e6;
}

Bytes readBlocks(const Stages& stages) {
    KdbxReader reader(stages.blocks);
    return KdbxCrypto::readHMACBlocks(reader, {.key = hmacKey});
}

Bytes writeBlocks(const Stages& stages) {
    return KdbxCrypto::writeHMACBlocks(stages.ciphertext, {.key = hmacKey}, KdbxCrypto::defaultBlockSize);
}

Bytes decipher(const Stages& stages) {
    return KdbxCrypto::decryptPayload(stages.ciphertext, {.cipher = KdbxCipher::aes256, .key = cipherKey, .iv = iv});
}

Bytes encipher(const Stages& stages) {
    return KdbxCrypto::encryptPayload(stages.compressed, {.cipher = KdbxCipher::aes256, .key = cipherKey, .iv = iv});
}

Bytes inflate(const Stages& stages) {
    return Gzip::decompress(stages.compressed);
}

Bytes deflate(const Stages& stages) {
    return Gzip::compress(stages.document);
}

KdbxXML::Document readDocument(const Stages& stages) {
    const auto stream = Stages::newStream();
    return KdbxXML::parse(stages.document, *stream, {4, 1}, {});
}

Bytes writeDocument(const Stages& stages) {
    const auto stream = Stages::newStream();
    return KdbxXML::serialize(stages.database, *stream, std::nullopt);
}

KdbxDatabase load(const Stages& stages) {
    return KdbxFile::load(stages.file, key);
}

Bytes save(const Stages& stages) {
    return KdbxFile::save(stages.database, key);
}

template <class Work>
void add(const std::string& name, int entryCount, Work work) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        measure(state, entryCount, work);
    })->Unit(benchmark::kMillisecond);
}

[[maybe_unused]] const bool areRegistered = [] {
    for (const int thousands : {10, 100}) {
        const auto count = thousands * 1000;
        const auto size = std::to_string(thousands) + "k_entries";
        add("Load_" + size, count, load);
        add("Load_" + size + "/blocks", count, readBlocks);
        add("Load_" + size + "/decipher", count, decipher);
        add("Load_" + size + "/inflate", count, inflate);
        add("Load_" + size + "/document", count, readDocument);
        add("Save_" + size, count, save);
        add("Save_" + size + "/document", count, writeDocument);
        add("Save_" + size + "/deflate", count, deflate);
        add("Save_" + size + "/encipher", count, encipher);
        add("Save_" + size + "/blocks", count, writeBlocks);
    }
    return true;
}();

}  // namespace
