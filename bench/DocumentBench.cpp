// SPDX-License-Identifier: MIT
#include "core/document/KdbxXML.h"
#include "core/primitives/ChaCha20Stream.h"

#include <benchmark/benchmark.h>

#include <array>

namespace {

constexpr int groupCount = 100;
constexpr int entriesPerGroup = 100;

KdbxEntry makeEntry(int number) {
    const auto n = std::to_string(number);
    KdbxEntry entry;
    entry.title = "Hesap numarası " + n;
    entry.username = "kullanici" + n + "@example.com";
    entry.password = SecureString("p4rola-" + n + "-çok-gizli");
    entry.url = "https://www.example.com/giris/" + n;
    if (number % 4 == 0)
        entry.customFields["Müşteri no"] = "100200" + n;
    entry.unknownXML = {"<ForegroundColor/>", "<BackgroundColor/>", "<OverrideURL/>"};
    if (number % 10 == 0)
        entry.unknownXML.push_back("<CustomData><Item><Key>eklenti</Key><Value>a &amp; b</Value></Item></CustomData>");
    return entry;
}

/// A vault of 10,000 entries, each with an earlier version, whose document has about ten megabytes.
KdbxDatabase makeDatabase() {
    KdbxDatabase database{.meta = {},
                          .root = {},
                          .cipher = KdbxCipher::chacha20,
                          .kdf = KdfSettings::recommended(),
                          .compressed = true,
                          .formatVersion = {4, 1}};
    for (int group = 0; group < groupCount; ++group) {
        KdbxGroup made;
        made.name = "Grup " + std::to_string(group);
        for (int i = 0; i < entriesPerGroup; ++i) {
            auto entry = makeEntry(group * entriesPerGroup + i);
            if (i % 5 == 0)
                entry.historyItems.append(entry);
            made.entries.append(std::move(entry));
        }
        database.root.groups.append(std::move(made));
    }
    return database;
}

/// The same keystream for writing and for reading.
ChaCha20Stream newStream() {
    return ChaCha20Stream({.key = Bytes(32, 7), .nonce = Bytes(12, 9)}, 0);
}

void parseDocument(benchmark::State& state) {
    auto writing = newStream();
    const auto document = KdbxXML::serialize(makeDatabase(), writing, std::nullopt);
    for (auto _ : state) {
        auto stream = newStream();
        benchmark::DoNotOptimize(KdbxXML::parse(document, stream, {4, 1}, {}));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
}

void writeDocument(benchmark::State& state) {
    const auto database = makeDatabase();
    std::int64_t size = 0;
    for (auto _ : state) {
        auto stream = newStream();
        const auto document = KdbxXML::serialize(database, stream, std::nullopt);
        size = static_cast<std::int64_t>(document.size());
    }
    state.SetBytesProcessed(state.iterations() * size);
}

BENCHMARK(parseDocument)->Name("Document_10k_entries_parse")->Unit(benchmark::kMillisecond);
BENCHMARK(writeDocument)->Name("Document_10k_entries_write")->Unit(benchmark::kMillisecond);

}  // namespace
