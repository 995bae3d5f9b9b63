// SPDX-License-Identifier: MIT
#include "app/state/SubstringSearch.h"

#include <cstdint>
#include <cstring>

namespace {

constexpr auto none = std::string_view::npos;
constexpr std::size_t blockSize = 64;

// Written so that the compiler makes vector instructions of it, on every processor: a fixed length, and no way out.
bool mayBegin(const char* first, const char* last, char firstByte, char lastByte) {
    std::uint8_t any = 0;
    for (std::size_t i = 0; i < blockSize; ++i)
        any |= static_cast<std::uint8_t>((first[i] == firstByte) & (last[i] == lastByte));
    return any != 0;
}

std::size_t findFrom(std::string_view text, std::string_view part, std::size_t from, std::size_t end) {
    for (; from < end; ++from)
        if (text[from] == part.front() && std::memcmp(text.data() + from, part.data(), part.size()) == 0)
            return from;
    return none;
}

}  // namespace

std::size_t SubstringSearch::find(std::string_view text, std::string_view part, std::size_t from) {
    if (part.size() < 2 || part.size() > text.size())
        return text.find(part, from);
    const auto end = text.size() - part.size() + 1;  // of the positions where it may begin
    for (; from + blockSize <= end; from += blockSize) {
        const auto* block = text.data() + from;
        if (!mayBegin(block, block + part.size() - 1, part.front(), part.back()))
            continue;
        if (const auto found = findFrom(text, part, from, from + blockSize); found != none)
            return found;
    }
    return findFrom(text, part, from, end);
}
