// SPDX-License-Identifier: MIT
#include "core/document/Nesting.h"

#include "core/document/KdbxPreserve.h"
#include "core/model/GroupWalk.h"
#include "core/model/KdbxError.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Nesting {
namespace {

// "<a></a>" is what each further level of an element takes at the least.
constexpr std::size_t shortestLevel = 7;

/// The end of the tag that begins here; a `>` within a quoted value does not end it.
std::size_t endOfTag(std::string_view xml, std::size_t start) {
    char quote = 0;
    for (std::size_t i = start; i < xml.size(); ++i) {
        if (quote != 0)
            quote = xml[i] == quote ? '\0' : quote;
        else if (xml[i] == '"' || xml[i] == '\'')
            quote = xml[i];
        else if (xml[i] == '>')
            return i;
    }
    return xml.size();
}

/// What is no element has an end of its own, whatever is in it.
std::string_view terminatorOf(std::string_view xml) {
    if (xml.starts_with("<!--"))
        return "-->";
    if (xml.starts_with("<![CDATA["))
        return "]]>";
    if (xml.starts_with("<?"))
        return "?>";
    return {};
}

/// How many elements are open at once in a well-formed text.
std::size_t levelsOf(std::string_view xml) {
    std::size_t open = 0;
    std::size_t most = 0;
    for (auto start = xml.find('<'); start < xml.size();) {
        auto end = xml.size();
        if (const auto terminator = terminatorOf(xml.substr(start)); !terminator.empty()) {
            end = xml.find(terminator, start);
        } else {
            end = endOfTag(xml, start);
            if (xml.substr(start).starts_with("</"))
                open -= std::min<std::size_t>(open, 1);
            else
                most = std::max(most, open + 1);
            const bool isClosed = end > 0 && end < xml.size() && xml[end - 1] == '/';
            if (!xml.substr(start).starts_with("</") && !isClosed)
                ++open;
        }
        start = end < xml.size() ? xml.find('<', end) : xml.size();
    }
    return most;
}

bool isWrapper(std::string_view xml) {
    return std::ranges::any_of(KdbxPreserve::all,
                               [&](std::string_view name) { return xml.starts_with("<" + std::string(name) + ">"); });
}

/// Whether foreign elements fit in at this depth. What no parser would read even alone is left out by the writer, and
/// the content of the wrappers goes back to where it was read.
bool fit(const std::vector<std::string>& foreign, std::size_t depth) {
    return std::ranges::all_of(foreign, [&](const std::string& xml) {
        if (depth + xml.size() / shortestLevel <= deepestElement || isWrapper(xml))
            return true;
        const auto levels = levelsOf(xml);
        return depth + levels - 1 <= deepestElement || levels > deepestElement;
    });
}

bool fitsAlone(const KdbxEntry& entry, std::size_t depth) {
    return depth + depthWrittenBelow <= deepestElement && fit(entry.unknownXML, depth + 1);
}

// `Entry`, `History`, `Entry`; an item's own history is not written.
bool fits(const KdbxEntry& entry, std::size_t depth) {
    return fitsAlone(entry, depth) &&
           std::ranges::all_of(entry.historyItems, [&](const KdbxEntry& item) { return fitsAlone(item, depth + 2); });
}

std::size_t depthOf(std::size_t level) {
    return depthOfRootGroup + level - 1;
}

bool fitsWithItsEntries(const KdbxGroup& group, std::size_t level) {
    const auto depth = depthOf(level);
    return depth + depthWrittenBelow <= deepestElement && fit(group.unknownXML, depth + 1) &&
           std::ranges::all_of(group.entries, [&](const KdbxEntry& entry) { return fits(entry, depth + 1); });
}

}  // namespace

bool fits(const KdbxGroup& group, std::size_t level) {
    GroupWalk walk(group);
    for (const auto& each : walk)
        if (!fitsWithItsEntries(each, level + walk.level() - 1))
            return false;
    return true;
}

// What fits at a level fits at each above it.
std::size_t deepestLevelFor(const KdbxGroup& group) {
    std::size_t fitting = 0;
    std::size_t tooDeep = deepestElement;
    while (tooDeep - fitting > 1) {
        const auto middle = fitting + (tooDeep - fitting) / 2;
        (fits(group, middle) ? fitting : tooDeep) = middle;
    }
    return fitting;
}

void require(const KdbxGroup& group, std::size_t level) {
    if (!fits(group, level))
        throw KdbxError::nestedTooDeep();
}

void require(const KdbxEntry& entry, std::size_t level) {
    if (!fits(entry, depthOf(level) + 1))
        throw KdbxError::nestedTooDeep();
}

}  // namespace Nesting
