// SPDX-License-Identifier: MIT
#include "app/state/GroupTree.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <deque>
#include <random>

namespace {

constexpr int entryCount = 100'000;
constexpr std::size_t undoLimit = 50;

KdbxEntry entryNumber(int number) {
    const auto text = std::to_string(number);
    return {.title = "Hesap " + text,
            .username = "kullanici" + text + "@example.org",
            .password = SecureString("gizli-parola-" + text),
            .url = "https://hizmet" + text + ".example.org/giris",
            .notes = "Kurtarma kodları kasada. Son değişiklik " + text + ". gün.",
            .customFields = {{"Müşteri no", "TR" + text}, {"PIN", text}},
            .protectedCustomFields = {"PIN"}};
}

/// The vault's entries in `groupCount` groups below the root, or all in the root.
KdbxDatabase vault(int groupCount) {
    KdbxGroup root{.name = "Kasa"};
    for (int group = 0; group < groupCount; ++group)
        root.groups.append({.name = "Grup " + std::to_string(group)});
    for (int number = 0; number < entryCount; ++number) {
        auto& group = groupCount == 0 ? root : root.groups.mutableAt(static_cast<std::size_t>(number % groupCount));
        group.entries.append(entryNumber(number));
    }
    return {.meta = {},
            .root = std::move(root),
            .cipher = KdbxCipher::aes256,
            .kdf = KdfSettings::recommended(),
            .compressed = true,
            .formatVersion = {4, 1}};
}

std::vector<UUID> idsOf(const std::vector<KdbxEntry>& entries) {
    std::vector<UUID> ids;
    for (const auto& entry : entries)
        ids.push_back(entry.id);
    return ids;
}

void change(KdbxEntry& entry) {
    entry.username = "yeni.kullanici@example.org";
    entry.modified = Timestamp::now();
}

/// A random entry is changed again and again, each time behind a snapshot, of which the last fifty are kept.
void editWithSnapshots(benchmark::State& state, KdbxDatabase database) {
    const auto ids = idsOf(database.root.allEntries());
    std::mt19937 random(1);
    std::deque<KdbxDatabase> snapshots;
    for (auto _ : state) {
        snapshots.push_back(database);
        if (snapshots.size() > undoLimit)
            snapshots.pop_front();
        GroupTree::mutateEntry(database.root, ids[random() % ids.size()], change);
    }
}

void editOurs(benchmark::State& state) {
    editWithSnapshots(state, vault(0));
}

void editOursInGroups(benchmark::State& state) {
    editWithSnapshots(state, vault(static_cast<int>(state.range(0))));
}

/// The same where a snapshot is a copy of every entry.
void editDeepCopy(benchmark::State& state) {
    auto entries = vault(0).root.allEntries();
    const auto ids = idsOf(entries);
    std::mt19937 random(1);
    for (auto _ : state) {
        const auto snapshot = entries;
        const auto id = ids[random() % ids.size()];
        change(*std::ranges::find(entries, id, &KdbxEntry::id));
        benchmark::DoNotOptimize(snapshot.data());
    }
}

double allocatedBytes() {
    const auto info = ::mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// Fifty snapshots with an entry changed behind each: what they add to the memory of the one vault.
void snapshotsOurs(benchmark::State& state) {
    const auto before = allocatedBytes();
    const auto original = vault(0);
    const auto vaultBytes = allocatedBytes() - before;
    const auto ids = idsOf(original.root.allEntries());
    std::mt19937 random(1);
    double snapshotsBytes = 0;
    for (auto _ : state) {
        const auto beforeSnapshots = allocatedBytes();
        auto database = original;
        std::vector<KdbxDatabase> snapshots;
        for (std::size_t i = 0; i < undoLimit; ++i) {
            snapshots.push_back(database);
            GroupTree::mutateEntry(database.root, ids[random() % ids.size()], change);
        }
        snapshotsBytes = allocatedBytes() - beforeSnapshots;
    }
    state.counters["vault_bytes"] = vaultBytes;
    state.counters["snapshots_bytes"] = snapshotsBytes;
    state.counters["relative"] = (vaultBytes + snapshotsBytes) / vaultBytes;
}

BENCHMARK(editOurs)->Name("Edit_100k_entries/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(editDeepCopy)->Name("Edit_100k_entries/deep_copy")->Unit(benchmark::kMicrosecond);
BENCHMARK(editOursInGroups)
    ->Name("Edit_100k_entries_in_groups/ours")
    ->Arg(100)
    ->Arg(2'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(snapshotsOurs)->Name("Snapshots_50_of_100k")->Unit(benchmark::kMillisecond);

}  // namespace
