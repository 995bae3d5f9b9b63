// SPDX-License-Identifier: MIT
#include "app/ui/EntryIcon.h"

#include "app/ui/Theme.h"

#include <algorithm>
#include <array>
#include <utility>

namespace EntryIcon {
namespace {

constexpr std::array<std::pair<std::int64_t, const char*>, 36> symbols{{
    {1, "globe"},
    {2, "exclamationmark.triangle.fill"},
    {3, "server.rack"},
    {4, "wrench.and.screwdriver.fill"},
    {5, "envelope.fill"},
    {6, "gearshape.fill"},
    {7, "note.text"},
    {9, "person.crop.circle.fill"},
    {10, "display"},
    {11, "camera.fill"},
    {12, "antenna.radiowaves.left.and.right"},
    {13, "lock.fill"},
    {15, "checkmark.seal.fill"},
    {16, "creditcard.fill"},
    {17, "printer.fill"},
    {19, "envelope.badge.fill"},
    {20, "terminal.fill"},
    {21, "doc.text.fill"},
    {22, "list.bullet.clipboard.fill"},
    {24, "network"},
    {25, "archivebox.fill"},
    {27, "iphone"},
    {29, "banknote.fill"},
    {30, "shippingbox.fill"},
    {34, "desktopcomputer"},
    {36, "wifi"},
    {37, "clock.fill"},
    {43, "star.fill"},
    {47, "externaldrive.fill"},
    {48, "folder.fill"},
    {49, "folder.fill.badge.plus"},
    {50, "chart.bar.fill"},
    {53, "checkmark.circle.fill"},
    {60, "shield.lefthalf.filled"},
    {62, "person.2.fill"},
    {68, "car.fill"},
}};

constexpr std::array tints{Palette::accent, Palette::info, Palette::warn, Palette::success, Palette::textSoft};

}  // namespace

QString symbol(std::int64_t iconID) {
    const auto* const found =
        std::find_if(symbols.begin(), symbols.end(), [&](const auto& s) { return s.first == iconID; });
    return QString::fromLatin1(found == symbols.end() ? "key.fill" : found->second);
}

QColor tint(std::int64_t iconID) {
    // A file may hold any number, and the smallest has no absolute value.
    const auto distance = iconID < 0 ? 0 - static_cast<std::uint64_t>(iconID) : static_cast<std::uint64_t>(iconID);
    return tints[distance % tints.size()];
}

QList<std::int64_t> choices() {
    QList<std::int64_t> numbers{0};
    for (const auto& [number, symbol] : symbols)
        numbers.append(number);
    return numbers;
}

}  // namespace EntryIcon
