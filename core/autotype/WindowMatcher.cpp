// SPDX-License-Identifier: MIT
#include "core/autotype/WindowMatcher.h"

#include "core/autotype/UrlHost.h"
#include "core/model/GroupWalk.h"
#include "core/text/Text.h"
#include "core/text/TextICU.h"

#include <algorithm>

namespace {

// Lower-cased and composed, so that two spellings of one text are the same bytes.
std::string comparable(std::string_view text) {
    std::string lowercased = Text::lowercased(text);
    const bool isASCII =
        std::ranges::all_of(lowercased, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    return isASCII ? lowercased : TextICU::composed(lowercased);
}

std::string withoutAsterisks(std::string text) {
    std::erase(text, '*');
    return text;
}

}  // namespace

WindowMatcher::WindowMatcher(std::string_view windowTitle) : m_title(comparable(windowTitle)) {}

bool WindowMatcher::matches(const KdbxEntry& entry) const {
    if (m_title.empty())
        return false;
    return titleHolds(entry.title) || titleHolds(urlHost(entry.url).value_or(entry.url)) ||
           std::ranges::any_of(entry.autoTypeWindowAssociations, [&](const auto& association) {
               return titleHolds(withoutAsterisks(association.window));
           });
}

const KdbxEntry* WindowMatcher::firstMatch(const KdbxGroup& root) const {
    for (const auto& group : GroupWalk(root))
        for (const auto& entry : group.entries)
            if (entry.autoTypeEnabled && matches(entry))
                return &entry;
    return nullptr;
}

bool WindowMatcher::titleHolds(std::string_view text) const {
    return !text.empty() && m_title.find(comparable(text)) != std::string::npos;
}
