// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeSequence.h"

#include "core/text/Text.h"

#include <unicode/normlzr.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <utility>

namespace AutoTypeSequence {

namespace {

using Characters = std::vector<std::string_view>;

struct FieldName {
    std::string_view name;
    std::string KdbxEntry::*field;
};

constexpr std::array<FieldName, 4> fieldNames{{{"USERNAME", &KdbxEntry::username},
                                               {"URL", &KdbxEntry::url},
                                               {"TITLE", &KdbxEntry::title},
                                               {"NOTES", &KdbxEntry::notes}}};

struct KeyName {
    std::string_view name;
    AutoTypeKey key;
};

constexpr std::array<KeyName, 12> keyNames{{{"TAB", AutoTypeKey::tab},
                                            {"ENTER", AutoTypeKey::enter},
                                            {"ESC", AutoTypeKey::escape},
                                            {"SPACE", AutoTypeKey::space},
                                            {"BACKSPACE", AutoTypeKey::backspace},
                                            {"DELETE", AutoTypeKey::forwardDelete},
                                            {"HOME", AutoTypeKey::home},
                                            {"END", AutoTypeKey::end},
                                            {"UP", AutoTypeKey::up},
                                            {"DOWN", AutoTypeKey::down},
                                            {"LEFT", AutoTypeKey::left},
                                            {"RIGHT", AutoTypeKey::right}}};

/// The list as it grows: text is gathered until another action comes.
class ActionList {
public:
    void type(std::string_view text) { append(m_gathered, bytesOf(text)); }

    void add(AutoTypeAction&& action) {
        if (const auto* text = std::get_if<AutoTypeAction::Text>(&action.action)) {
            type(text->view());
            return;
        }
        finishText();
        m_actions.push_back(std::move(action));
    }

    [[nodiscard]] std::vector<AutoTypeAction> finished() && {
        finishText();
        return std::move(m_actions);
    }

private:
    void finishText() {
        if (!m_gathered.empty())
            m_actions.push_back({AutoTypeAction::Text(std::exchange(m_gathered, {}))});
    }

    std::vector<AutoTypeAction> m_actions;
    Bytes m_gathered;  // may hold a password
};

AutoTypeAction passwordText(const KdbxEntry& entry) {
    std::string password = entry.password.value();
    auto action = AutoTypeAction::text(password);
    wipe(password);
    return action;
}

bool beginsWith(std::string_view text, std::string_view prefix) {
    const auto characters = Text::characters(text);
    const auto wanted = Text::characters(prefix);
    return characters.size() >= wanted.size() &&
           std::equal(wanted.begin(), wanted.end(), characters.begin(), Text::Equal());
}

std::string_view dropping(std::size_t count, std::string_view text) {
    for (const auto character : Text::characters(text))
        if (count-- > 0)
            text.remove_prefix(character.size());
        else
            break;
    return text;
}

icu::UnicodeString unicodeString(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

// Canonical caseless matching (The Unicode Standard, section 3.13, D145), with no language's exceptions.
bool equalIgnoringCase(std::string_view a, std::string_view b) {
    UErrorCode status = U_ZERO_ERROR;
    const auto order = icu::Normalizer::compare(unicodeString(a), unicodeString(b), U_COMPARE_IGNORE_CASE, status);
    return U_SUCCESS(status) && order == 0;
}

// A field that isn't there types nothing, so that one sequence serves many entries.
std::string_view customField(const KdbxEntry& entry, std::string_view name) {
    const auto& fields = entry.customFields;
    auto field = fields.find(name);
    if (field == fields.end())
        field = std::ranges::find_if(fields, [&](const auto& one) { return equalIgnoringCase(one.first, name); });
    return field == fields.end() ? std::string_view() : field->second;
}

std::optional<std::int64_t> decimalInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    std::int64_t number = 0;
    const auto* end = text.data() + text.size();
    const auto [rest, failure] = std::from_chars(text.data(), end, number);
    if (failure != std::errc() || rest != end)
        return std::nullopt;
    return number;
}

// "500", " 500", "=500" and " = 500" alike.
std::optional<AutoTypeAction> pause(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" ="), text.size()));
    const auto milliseconds = decimalInteger(Text::trimmingWhitespace(text));
    if (!milliseconds || *milliseconds < 0)
        return std::nullopt;
    return AutoTypeAction::delay(*milliseconds);
}

// What the text between two braces stands for, or nothing where it is plain text.
std::optional<AutoTypeAction> resolve(std::string_view body, const KdbxEntry& entry) {
    const std::string name = Text::uppercased(body);
    for (const auto& field : fieldNames)
        if (Text::equal(name, field.name))
            return AutoTypeAction::text(entry.*field.field);
    if (Text::equal(name, "PASSWORD"))
        return passwordText(entry);
    for (const auto& key : keyNames)
        if (Text::equal(name, key.name))
            return AutoTypeAction::key(key.key);
    if (Text::equal(name, "CLEARFIELD"))
        return AutoTypeAction::clearField();
    if (beginsWith(name, "S:"))
        return AutoTypeAction::text(customField(entry, dropping(2, body)));
    if (beginsWith(name, "DELAY"))
        return pause(dropping(5, body));
    return std::nullopt;
}

// The characters from `first` to just before `last`, in one piece.
std::string_view between(const Characters& characters, std::size_t first, std::size_t last) {
    if (first == last)
        return {};
    const auto* begin = characters[first].data();
    const auto* end = characters[last - 1].data() + characters[last - 1].size();
    return {begin, static_cast<std::size_t>(end - begin)};
}

bool isEscapedBrace(const Characters& characters, std::size_t i) {
    return i + 2 < characters.size() && characters[i + 2] == "}" &&
           (characters[i + 1] == "{" || characters[i + 1] == "}");
}

}  // namespace

std::vector<AutoTypeAction> parse(std::string_view sequence, const KdbxEntry& entry) {
    const auto characters = Text::characters(sequence);
    ActionList actions;
    for (std::size_t i = 0; i < characters.size();) {
        if (characters[i] != "{") {
            actions.type(characters[i]);
            ++i;
            continue;
        }
        if (isEscapedBrace(characters, i)) {
            actions.type(characters[i + 1]);
            i += 3;
            continue;
        }
        const auto close = static_cast<std::size_t>(
            std::find(characters.begin() + static_cast<std::ptrdiff_t>(i), characters.end(), "}") - characters.begin());
        if (close == characters.size()) {
            actions.type(between(characters, i, close));
            break;
        }
        if (auto action = resolve(between(characters, i + 1, close), entry))
            actions.add(std::move(*action));
        else
            actions.type(between(characters, i, close + 1));
        i = close + 1;
    }
    return std::move(actions).finished();
}

}  // namespace AutoTypeSequence
