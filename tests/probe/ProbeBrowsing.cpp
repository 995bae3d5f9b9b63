// SPDX-License-Identifier: MIT
#include "app/state/EntrySearch.h"
#include "app/state/EntrySort.h"
#include "tests/probe/Probe.h"
#include "tests/probe/ProbeEntry.h"

namespace Probe {
namespace {

Json searchMatch(const Json& request) {
    return matches(entry(request, "entry"), text(request, "query"));
}

Json sort(const Json& request) {
    const auto column = EntrySort::columnFromText(text(request, "column"));
    require(column.has_value(), "column: unknown");
    const auto& ascending = argument(request, "ascending");
    require(ascending.is_boolean(), "ascending: not a boolean");
    const auto& list = argument(request, "entries");
    require(list.is_array(), "entries: not an array");

    KdbxGroup group;
    for (const auto& fields : list) {
        require(fields.is_object() && fields.contains("id"), "entries: without id");
        group.entries.append(entryOf(fields));
    }
    auto ids = Json::array();
    const EntrySort sort{.column = *column, .ascending = ascending.get<bool>()};
    for (const auto* sorted : sort.apply(entriesOf(group)))
        ids.push_back(sorted->id.text());
    return ids;
}

}  // namespace

void addBrowsing(Operations& operations) {
    operations["searchMatch"] = searchMatch;
    operations["sort"] = sort;
}

}  // namespace Probe
