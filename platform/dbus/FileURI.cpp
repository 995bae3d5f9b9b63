// SPDX-License-Identifier: MIT
#include "platform/dbus/FileURI.h"

#include <QByteArray>

namespace {

constexpr std::string_view scheme = "file:";
constexpr std::string_view thisMachine = "localhost";

QByteArray bytes(std::string_view text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

bool startsWithScheme(std::string_view uri) {
    return bytes(uri.substr(0, scheme.size())).toLower() == bytes(scheme);
}

}  // namespace

std::string FileURI::of(const std::filesystem::path& absolute) {
    return "file://" + bytes(absolute.native()).toPercentEncoding("/").toStdString();
}

std::optional<std::filesystem::path> FileURI::path(std::string_view uri) {
    if (!startsWithScheme(uri))
        return uri.starts_with('/') ? std::optional<std::filesystem::path>(uri) : std::nullopt;
    auto rest = uri.substr(scheme.size());
    if (rest.starts_with("//")) {
        rest.remove_prefix(2);
        if (rest.starts_with(thisMachine))
            rest.remove_prefix(thisMachine.size());
    }
    const auto decoded = QByteArray::fromPercentEncoding(bytes(rest));
    if (!decoded.startsWith('/') || decoded.contains('\0'))
        return std::nullopt;
    return decoded.toStdString();
}
