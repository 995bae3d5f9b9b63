// SPDX-License-Identifier: MIT
#include "core/autotype/UrlHost.h"

#include <algorithm>

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isOneOf(std::string_view characters, char c) {
    return characters.find(c) != std::string_view::npos;
}

// RFC 3986, section 3.1.
bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) &&
           std::ranges::all_of(text, [](char c) { return isLetter(c) || isDigit(c) || isOneOf("+-.", c); });
}

// Unreserved characters and sub-delimiters (RFC 3986, section 2), and those of other scripts (RFC 3987, section 2.2).
bool isNameCharacter(char c) {
    return isLetter(c) || isDigit(c) || isOneOf("-._~!$&'()*+,;=", c) || static_cast<unsigned char>(c) > 0x7F;
}

bool isPercentEncoding(std::string_view text) {
    return text.size() >= 3 && text[0] == '%' && isHexDigit(text[1]) && isHexDigit(text[2]);
}

// A name, whose characters may be percent-encoded.
bool isEncodedName(std::string_view text, std::string_view alsoAllowed) {
    while (!text.empty()) {
        if (isPercentEncoding(text))
            text.remove_prefix(3);
        else if (isNameCharacter(text.front()) || isOneOf(alsoAllowed, text.front()))
            text.remove_prefix(1);
        else
            return false;
    }
    return true;
}

// What is between the brackets: an address of version 6, or one of a later version.
bool isBracketedAddress(std::string_view text) {
    if (text.empty())
        return false;
    if (text.front() == 'v' || text.front() == 'V')
        return std::ranges::all_of(text, [](char c) { return isNameCharacter(c) || c == ':'; });
    return std::ranges::all_of(text, [](char c) { return isHexDigit(c) || c == ':' || c == '.'; });
}

bool isPort(std::string_view text) {
    return text.empty() || (text.front() == ':' && std::ranges::all_of(text.substr(1), isDigit));
}

std::optional<std::string_view> bracketedHost(std::string_view hostAndPort) {
    const auto close = hostAndPort.find(']');
    if (close == std::string_view::npos || !isBracketedAddress(hostAndPort.substr(1, close - 1)) ||
        !isPort(hostAndPort.substr(close + 1)))
        return std::nullopt;
    return hostAndPort.substr(0, close + 1);
}

std::optional<std::string_view> namedHost(std::string_view hostAndPort) {
    const auto host = hostAndPort.substr(0, hostAndPort.find(':'));
    if (!isEncodedName(host, "") || !isPort(hostAndPort.substr(host.size())))
        return std::nullopt;
    return host;
}

std::optional<std::string_view> hostOfAuthority(std::string_view authority) {
    if (const auto at = authority.find('@'); at != std::string_view::npos) {
        if (!isEncodedName(authority.substr(0, at), ":"))
            return std::nullopt;
        authority.remove_prefix(at + 1);
    }
    return authority.starts_with('[') ? bracketedHost(authority) : namedHost(authority);
}

}  // namespace

// The parts are taken as RFC 3986, appendix B, takes them. What follows the host is not looked at, so that a blank
// in a path hides no host.
std::optional<std::string_view> urlHost(std::string_view url) {
    if (!url.starts_with("//")) {
        const auto colon = url.find(':');
        if (colon == std::string_view::npos || !isScheme(url.substr(0, colon)))
            return std::nullopt;
        url.remove_prefix(colon + 1);
    }
    if (!url.starts_with("//"))
        return std::nullopt;
    url.remove_prefix(2);
    return hostOfAuthority(url.substr(0, url.find_first_of("/?#")));
}
