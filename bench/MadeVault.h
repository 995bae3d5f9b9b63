// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <string_view>

/// Entries as people have them: names of companies and things, half of them with Turkish letters, some with a note.
class EntryMaker {
public:
    KdbxEntry entry() {
        const auto company = std::string(any(companies));
        const auto number = std::to_string(m_random() % 10'000);
        KdbxEntry entry;
        entry.title = company + ' ' + std::string(any(things)) + (m_random() % 3 == 0 ? " " + number : "");
        entry.username = std::string(any(people)) + number + "@ornek" + std::to_string(m_random() % 40) + ".com";
        entry.url = "https://giris.ornek" + number + ".com/hesap/oturum";
        for (auto words = m_random() % 3 == 0 ? m_random() % 30 : 0; words > 0; --words)
            entry.notes += std::string(any(things)) + (words % 9 == 0 ? '\n' : ' ');
        if (m_random() % 2 == 0)
            entry.tags = {std::string(any(things)), "kişisel"};
        if (m_random() % 4 == 0)
            entry.customFields["Müşteri numarası"] = "100" + number;
        return entry;
    }

private:
    template <std::size_t size>
    std::string_view any(const std::array<std::string_view, size>& choices) {
        return choices[m_random() % size];
    }

    static constexpr std::array<std::string_view, 16> companies{
        "Yeşilova Bankası", "Atlas Kargo",  "Kuzey Telekom",  "ÇınarSoft",    "Deniz Market", "İnci Sigorta",
        "Şehir Elektrik",   "Mavi Hava",    "Öğrenci İşleri", "Blue Harbour", "Northwind",    "Acme Corporation",
        "Gökkuşağı Tur",    "Ihlamur Cafe", "Ünlü Giyim",     "Contoso"};
    static constexpr std::array<std::string_view, 14> things{"internet şubesi", "posta",
                                                             "e-posta hesabı",  "sunucu",
                                                             "yönetim paneli",  "mağaza",
                                                             "kredi kartı",     "VPN",
                                                             "forum",           "yedek",
                                                             "router",          "Wi-Fi",
                                                             "ödeme",           "geliştirici hesabı"};
    static constexpr std::array<std::string_view, 8> people{"ayse.yilmaz", "mehmet",  "zeynep.k", "ali.can",
                                                            "fatma",       "emre.oz", "elif",     "burak.demir"};

    std::mt19937 m_random{1923};
};

/// A tree of groups with some hundred entries each.
inline KdbxGroup makeVault(std::size_t entryCount, std::size_t entriesPerGroup = 250) {
    EntryMaker maker;
    KdbxGroup root;
    while (entryCount > 0) {
        KdbxGroup group;
        for (const auto some = std::min(entryCount, entriesPerGroup); group.entries.size() < some; --entryCount)
            group.entries.append(maker.entry());
        root.groups.append(std::move(group));
    }
    return root;
}
