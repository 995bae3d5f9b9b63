// SPDX-License-Identifier: MIT
#include "app/ui/components/EntryIcon.h"

#include "app/ui/theme/Theme.h"

#include <algorithm>
#include <array>

namespace EntryIcon {
namespace {

struct Icon {
    std::int64_t number;
    const char* symbol;
    const char* name;
};

constexpr Icon key{0, "key.fill", "Anahtar"};

constexpr std::array<Icon, 36> icons{{
    {1, "globe", "Dünya"},
    {2, "exclamationmark.triangle.fill", "Uyarı"},
    {3, "server.rack", "Sunucu"},
    {4, "wrench.and.screwdriver.fill", "Araçlar"},
    {5, "envelope.fill", "Posta"},
    {6, "gearshape.fill", "Ayarlar"},
    {7, "note.text", "Not"},
    {9, "person.crop.circle.fill", "Kişi"},
    {10, "display", "Ekran"},
    {11, "camera.fill", "Kamera"},
    {12, "antenna.radiowaves.left.and.right", "Anten"},
    {13, "lock.fill", "Kilit"},
    {15, "checkmark.seal.fill", "Onay mührü"},
    {16, "creditcard.fill", "Kredi kartı"},
    {17, "printer.fill", "Yazıcı"},
    {19, "envelope.badge.fill", "Yeni posta"},
    {20, "terminal.fill", "Uçbirim"},
    {21, "doc.text.fill", "Belge"},
    {22, "list.bullet.clipboard.fill", "Pano listesi"},
    {24, "network", "Ağ"},
    {25, "archivebox.fill", "Arşiv"},
    {27, "iphone", "Telefon"},
    {29, "banknote.fill", "Para"},
    {30, "shippingbox.fill", "Paket"},
    {34, "desktopcomputer", "Bilgisayar"},
    {36, "wifi", "Kablosuz ağ"},
    {37, "clock.fill", "Saat"},
    {43, "star.fill", "Yıldız"},
    {47, "externaldrive.fill", "Disk"},
    {48, "folder.fill", "Klasör"},
    {49, "folder.fill.badge.plus", "Yeni klasör"},
    {50, "chart.bar.fill", "Grafik"},
    {53, "checkmark.circle.fill", "Onay"},
    {60, "shield.lefthalf.filled", "Kalkan"},
    {62, "person.2.fill", "Kişiler"},
    {68, "car.fill", "Araba"},
}};

constexpr std::array tints{Palette::accent, Palette::info, Palette::warn, Palette::success, Palette::textSoft};

const Icon& iconOf(std::int64_t iconID) {
    const auto* const found =
        std::find_if(icons.begin(), icons.end(), [&](const Icon& icon) { return icon.number == iconID; });
    return found == icons.end() ? key : *found;
}

}  // namespace

QString symbol(std::int64_t iconID) {
    return QString::fromLatin1(iconOf(iconID).symbol);
}

QString name(std::int64_t iconID) {
    return QString::fromUtf8(iconOf(iconID).name);
}

QColor tint(std::int64_t iconID) {
    // A file may hold any number, and the smallest has no absolute value.
    const auto distance = iconID < 0 ? 0 - static_cast<std::uint64_t>(iconID) : static_cast<std::uint64_t>(iconID);
    return tints[distance % tints.size()];
}

QList<std::int64_t> choices() {
    QList<std::int64_t> numbers{key.number};
    for (const auto& icon : icons)
        numbers.append(icon.number);
    return numbers;
}

}  // namespace EntryIcon
