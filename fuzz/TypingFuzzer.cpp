// SPDX-License-Identifier: MIT
// What a vault's author can put before auto-type and the strength meter: sequences, titles, URLs, window patterns.
#include "core/autotype/AutoTypeSequence.h"
#include "core/autotype/WindowMatcher.h"
#include "core/generator/PasswordGenerator.h"
#include "core/text/Text.h"
#include "fuzz/Require.h"

#include <string>
#include <vector>

namespace {

void checkActions(const std::vector<AutoTypeAction>& actions) {
    bool afterText = false;
    for (const auto& action : actions) {
        const auto* text = std::get_if<AutoTypeAction::Text>(&action.action);
        require(!text || (!text->view().empty() && !afterText));
        afterText = text != nullptr;
        if (const auto* delay = std::get_if<AutoTypeAction::Delay>(&action.action))
            require(delay->milliseconds >= 0);
    }
}

std::string withEscapedBraces(const std::string& text) {
    std::string escaped;
    for (const auto character : Text::characters(text))
        escaped += character == "{" || character == "}" ? "{" + std::string(character) + "}" : std::string(character);
    return escaped;
}

// A text whose braces are escaped is typed as it stands. Escaping may join characters that stood apart, which is no
// longer that text.
void checkEscapes(const std::string& text, const KdbxEntry& entry) {
    const auto escaped = withEscapedBraces(text);
    if (text.empty() || withEscapedBraces(text + text) != escaped + escaped)
        return;
    const auto actions = AutoTypeSequence::parse(escaped, entry);
    require(actions.size() == 1 && actions.front() == AutoTypeAction::text(text));
}

void checkWindow(const std::string& title, const KdbxEntry& entry) {
    KdbxEntry ofThatTitle;
    ofThatTitle.title = title;
    require(WindowMatcher(title).matches(ofThatTitle) == !title.empty());
    (void)WindowMatcher(title).matches(entry);
}

void checkStrength(const std::string& password) {
    const auto [score, entropyBits] = PasswordGenerator::strength(password);
    require(score >= 0 && score <= 100 && entropyBits >= 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Two texts, one line each and the rest: what the vault says, and the title of a window.
    const std::string input = Text::repairingUTF8({data, size});
    const auto lineEnd = std::min(input.find('\n'), input.size());
    const auto first = input.substr(0, lineEnd);
    const auto second = lineEnd < input.size() ? input.substr(lineEnd + 1) : std::string();

    KdbxEntry entry;
    entry.title = first;
    entry.url = first;
    entry.password = SecureString(first);
    entry.customFields[second] = first;
    entry.autoTypeWindowAssociations.push_back({.window = first, .sequence = {}});

    checkActions(AutoTypeSequence::parse(first, entry));
    checkEscapes(first, entry);
    checkWindow(second, entry);
    checkStrength(first);
    return 0;
}
