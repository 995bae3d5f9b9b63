// SPDX-License-Identifier: MIT
#include "core/generator/PasswordGenerator.h"

#include <limits>
#include <new>
#include <utility>

namespace PasswordGenerator {

namespace {

std::string withoutAmbiguous(std::string_view characters) {
    std::string kept;
    for (const char character : characters)
        if (ambiguousChars.find(character) == std::string_view::npos)
            kept += character;
    return kept;
}

char drawFrom(std::string_view characters, const RandomSource& random) {
    return characters[uniformIndex(static_cast<std::uint32_t>(characters.size()), random)];
}

// Fisher-Yates, from the end.
void shuffle(std::string& characters, const RandomSource& random) {
    for (std::size_t i = characters.size(); i-- > 1;) {
        const std::size_t j = uniformIndex(static_cast<std::uint32_t>(i + 1), random);
        if (i != j)
            std::swap(characters[i], characters[j]);
    }
}

}  // namespace

std::vector<std::string> Options::characterClasses() const {
    std::vector<std::string> classes;
    const auto add = [&](bool chosen, std::string_view characters) {
        if (chosen)
            classes.push_back(excludeAmbiguous ? withoutAmbiguous(characters) : std::string(characters));
    };
    add(upper, upperChars);
    add(lower, lowerChars);
    add(digits, digitChars);
    add(symbols, symbolChars);
    return classes;
}

std::string generate(const Options& options, const RandomSource& random) {
    const auto classes = options.characterClasses();
    if (classes.empty() || options.length < 1)
        return {};
    if (options.length > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc();  // an index of 32 bits reaches no further

    std::string pool;
    for (const auto& characters : classes)
        pool += characters;

    const auto length = static_cast<std::size_t>(options.length);
    std::string password;
    password.reserve(length);  // growing would leave pieces of the password behind
    for (const auto& characters : classes)
        if (password.size() < length)
            password += drawFrom(characters, random);
    while (password.size() < length)
        password += drawFrom(pool, random);
    shuffle(password, random);
    return password;
}

}  // namespace PasswordGenerator
