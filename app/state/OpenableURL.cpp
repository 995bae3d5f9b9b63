// SPDX-License-Identifier: MIT
#include "app/state/OpenableURL.h"

#include "core/autotype/UrlHost.h"

#include <algorithm>

namespace {

constexpr std::string_view schemeSeparator = "://";

bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool isHexDigit(char c) {
    return std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos;
}

// All that RFC 3986 allows outside of an address in brackets (section 2), and what is not ASCII.
bool isURLCharacter(char c) {
    return isLetterOrDigit(c) || static_cast<unsigned char>(c) > 0x7F ||
           std::string_view("-._~:/?#@!$&'()*+,;=").find(c) != std::string_view::npos;
}

bool isWellEncoded(std::string_view text) {
    while (!text.empty()) {
        const bool isEncoded = text.size() >= 3 && text[0] == '%' && isHexDigit(text[1]) && isHexDigit(text[2]);
        if (!isEncoded && !isURLCharacter(text.front()))
            return false;
        text.remove_prefix(isEncoded ? 3 : 1);
    }
    return true;
}

/// The text behind the host. Only the host may have brackets.
std::string_view behindHost(std::string_view url, std::string_view host) {
    return url.substr(static_cast<std::size_t>(host.data() + host.size() - url.data()));
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetterOrDigit(text.front()) && !(text.front() >= '0' && text.front() <= '9') &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return isLetterOrDigit(c) || c == '+' || c == '-' || c == '.'; });
}

/// A URL or a reference relative to one (RFC 3986, section 4.1).
bool isURL(std::string_view text) {
    const auto fragment = text.find('#');
    if (fragment != std::string_view::npos && text.find('#', fragment + 1) != std::string_view::npos)
        return false;
    auto rest = text;
    if (const auto end = text.find_first_of(":/?#"); end != std::string_view::npos && text[end] == ':') {
        if (!isScheme(text.substr(0, end)))
            return false;
        rest.remove_prefix(end + 1);
    }
    if (!rest.starts_with("//"))
        return isWellEncoded(rest);
    const auto host = urlHost(text);
    return host && isWellEncoded(behindHost(text, *host));
}

}  // namespace

std::optional<std::string> openableURL(std::string_view address) {
    std::string url(address);
    if (address.find(schemeSeparator) == std::string_view::npos)
        url.insert(0, "https://");
    return isURL(url) ? std::optional(std::move(url)) : std::nullopt;
}
