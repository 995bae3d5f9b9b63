// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"
#include "app/state/EntrySort.h"
#include "bench/MadeVault.h"
#include "core/text/Collation.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>

namespace {

// What a user types, letter by letter: a name, two words, a number, and something that is not there.
constexpr std::array<std::string_view, 22> keystrokes{
    "i",    "in",    "inc",    "inci", "inci ", "inci p", "inci po", "inci pos", "m",  "me",  "meh",
    "mehm", "mehme", "mehmet", "4",    "42",    "421",    "4217",    "x",        "xq", "xqz", "şubesi sun"};

void searchRemembered(benchmark::State& state, std::size_t entryCount) {
    const auto vault = makeVault(entryCount);
    EntrySearch search;
    benchmark::DoNotOptimize(search.matching(vault, ""));
    std::size_t stroke = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(search.matching(vault, keystrokes[stroke++ % keystrokes.size()]));
}

void searchNaive(benchmark::State& state, std::size_t entryCount) {
    const auto vault = makeVault(entryCount);
    std::size_t stroke = 0;
    for (auto _ : state) {
        EntryReferences found;
        for (const auto& group : vault.groups)
            for (const auto& entry : group.entries)
                if (matches(entry, keystrokes[stroke % keystrokes.size()]))
                    found.push_back(&entry);
        benchmark::DoNotOptimize(found);
        ++stroke;
    }
}

/// The first letter after the vault was opened, when nothing is remembered.
void searchFirst(benchmark::State& state, std::size_t entryCount) {
    const auto vault = makeVault(entryCount);
    EntrySearch search;
    for (auto _ : state) {
        benchmark::DoNotOptimize(search.matching(vault, "i"));
        state.PauseTiming();
        search.forget();
        state.ResumeTiming();
    }
}

/// A letter after one entry was changed.
void searchAfterEdit(benchmark::State& state, std::size_t entryCount) {
    auto vault = makeVault(entryCount);
    EntrySearch search;
    benchmark::DoNotOptimize(search.matching(vault, ""));
    for (auto _ : state) {
        vault.groups.mutableAt(vault.groups.size() / 2).entries.mutableAt(7).title += '.';
        benchmark::DoNotOptimize(search.matching(vault, "mehmet"));
    }
}

EntryReferences allEntriesOf(const KdbxGroup& vault) {
    return EntrySearch().matching(vault, "");
}

void sortBy(benchmark::State& state, EntrySort::Column column) {
    const auto vault = makeVault(100'000);
    const auto entries = allEntriesOf(vault);
    const EntrySort sort{.column = column, .ascending = true};
    benchmark::DoNotOptimize(sort.apply(entries));
    for (auto _ : state)
        benchmark::DoNotOptimize(sort.apply(entries));
}

void sortByTitleNaively(benchmark::State& state) {
    const auto vault = makeVault(100'000);
    const auto entries = allEntriesOf(vault);
    for (auto _ : state) {
        auto sorted = entries;
        std::ranges::stable_sort(sorted, [](const KdbxEntry* a, const KdbxEntry* b) {
            return Collation::ofUser().compare(a->title, b->title) < 0;
        });
        benchmark::DoNotOptimize(sorted);
    }
}

BENCHMARK_CAPTURE(searchRemembered, 10k, 10'000)->Name("Search_10k/remembered")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchNaive, 10k, 10'000)->Name("Search_10k/naive")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchRemembered, 100k, 100'000)->Name("Search_100k/remembered")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchAfterEdit, 100k, 100'000)->Name("Search_100k/after_edit")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchFirst, 100k, 100'000)->Name("Search_100k/first")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchNaive, 100k, 100'000)->Name("Search_100k/naive")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sortBy, title, EntrySort::Column::title)
    ->Name("Sort_100k_by_title/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sortBy, url, EntrySort::Column::url)->Name("Sort_100k_by_url/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(sortByTitleNaively)->Name("Sort_100k_by_title/naive")->Unit(benchmark::kMillisecond);

}  // namespace
