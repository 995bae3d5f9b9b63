// SPDX-License-Identifier: MIT
#include "core/document/PrintedForm.h"

#include "core/primitives/Bytes.h"
#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <vector>

namespace PrintedForm {
namespace {

constexpr int deepestElement = 64;

constexpr std::string_view referencesInContent[] = {"&amp;", "&lt;", "&gt;"};
constexpr std::string_view referencesInAttributes[] = {"&amp;", "&lt;", "&gt;", "&quot;", "&#xA;", "&#xD;"};

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isNameCharacter(char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

/// A character that is printed as it is, in element text and in attributes alike.
bool isPlain(char c) {
    return static_cast<unsigned char>(c) >= 0x20 && c != '<' && c != '>' && c != '&';
}

/// Walks a text once, as long as it is what the printer would have printed.
class Scanner {
public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    bool element(int depth) {
        if (depth > deepestElement || !skip("<"))
            return false;
        const auto elementName = name();
        if (elementName.empty() || !attributes())
            return false;
        if (skip("/>"))
            return true;
        return skip(">") && (m_rest.starts_with('<') ? children(depth) : content()) && skip("</") &&
               skip(elementName) && skip(">");
    }

    std::string_view name() {
        if (m_rest.empty() || !isLetter(m_rest.front()))
            return {};
        const auto end = std::ranges::find_if_not(m_rest, isNameCharacter);
        return take(static_cast<std::size_t>(end - m_rest.begin()));
    }

    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

private:
    /// In the order of the keys, each once. A protected element is another matter.
    bool attributes() {
        std::string_view last;
        while (skip(" ")) {
            const auto key = name();
            if (key.empty() || key <= last || key == "Protected" || !skip("=\"") || !attributeValue())
                return false;
            last = key;
        }
        return true;
    }

    bool attributeValue() {
        while (!skip("\"")) {
            const bool isCharacter = !m_rest.empty() && isPlain(m_rest.front());
            if (isCharacter)
                take(1);
            else if (!reference(referencesInAttributes))
                return false;
        }
        return true;
    }

    /// At least one character: an element without any closes itself.
    bool content() {
        const auto before = m_rest.size();
        while (!m_rest.starts_with('<')) {
            const bool isCharacter =
                !m_rest.empty() && (isPlain(m_rest.front()) || m_rest.front() == '\t' || m_rest.front() == '\n');
            if (isCharacter)
                take(1);
            else if (!reference(referencesInContent))
                return false;
        }
        return m_rest.size() < before;
    }

    /// At least one, with nothing between them.
    bool children(int depth) {
        if (m_rest.starts_with("</"))
            return false;
        while (!m_rest.starts_with("</"))
            if (!element(depth + 1))
                return false;
        return true;
    }

    bool reference(std::span<const std::string_view> references) {
        return std::ranges::any_of(references, [this](auto reference) { return skip(reference); });
    }

    bool skip(std::string_view expected) {
        if (!m_rest.starts_with(expected))
            return false;
        take(expected.size());
        return true;
    }

    std::string_view take(std::size_t count) {
        const auto taken = m_rest.substr(0, count);
        m_rest.remove_prefix(count);
        return taken;
    }

    std::string_view m_rest;
};

/// Outside ASCII a parser refuses ill-formed text and two noncharacters, and takes all else as it is.
bool isCarriedByXML(std::string_view text) {
    return Text::isValidUTF8(bytesOf(text)) && text.find("\xEF\xBF\xBE") == std::string_view::npos &&
           text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

}  // namespace

std::optional<std::string_view> nameOf(std::string_view text) {
    Scanner scanner(text);
    if (!scanner.element(1) || !scanner.isAtEnd() || !isCarriedByXML(text))
        return std::nullopt;
    return Scanner(text.substr(1)).name();
}

}  // namespace PrintedForm
