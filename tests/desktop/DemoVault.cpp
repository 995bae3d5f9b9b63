// SPDX-License-Identifier: MIT
#include "tests/desktop/DemoVault.h"

#include <array>
#include <span>

namespace {

// 2026-03-14T09:26:00Z
constexpr Timestamp made{1773480360};
constexpr double day = 86400;

struct Row {
    const char* title;
    const char* username;
    const char* password;
    const char* url;
    std::int64_t iconID;
};

constexpr std::array internet{
    Row{"Kütüphane", "isil.kaya", "Ciltli-Roman-83", "https://kutuphane.example/giris", 7},
    Row{"Sinema biletleri", "isil@example.com", "mısır&gazoz*5", "https://bilet.example", 11},
    Row{"Ev ağı", "yonetici", "kedi.sever.modem.21", "http://192.168.1.1", 36},
    Row{"Bulut deposu", "isil@example.com", "gök-gürültüsü-47-Q", "https://depo.example/oturum", 47},
    Row{"Hava durumu", "", "pUslu9sabah", "https://hava.example", 12},
};
constexpr std::array shopping{
    Row{"Kitapçı", "isil@example.com", "3.baskı_ön-söz", "https://kitapci.example/uyelik", 22},
    Row{"Çiçekçi", "isil@example.com", "Karanfil!9demet", "https://cicek.example", 43},
    Row{"Nalbur", "kaya-ev", "12lik.dübel.Vida", "https://nalbur.example/siparis", 4},
    Row{"Pazar yeri", "isil.kaya", "elma-armut-Ayva7", "https://pazar.example", 30},
};
constexpr std::array clothing{
    Row{"Terzi", "isil@example.com", "iğne+iplik=2026", "https://terzi.example", 13},
    Row{"Ayakkabıcı", "isil@example.com", "bağcık%38numara", "https://ayakkabi.example", 68},
};
constexpr std::array social{
    Row{"Ekşi Sözlük", "isil.kaya", "ekşi-mayalı-Ekmek4", "https://eksisozluk.com", 1},
    Row{"GitHub", "isilkaya", "Yz7!kuyruklu-yıldız-0lI1", "https://github.com/login", 20},
    Row{"LinkedIn", "isil@example.com", "Kartvizit_88", "https://linkedin.com", 9},
    Row{"Mastodon", "@isil", "dişi.fil#Bahçe", "https://mastodon.social", 12},
    Row{"Reddit", "", "uzun~Başlık~2", "https://reddit.com", 43},
    Row{"YouTube", "isil@example.com", "abone-ol-Zil1", "https://youtube.com/account", 11},
    Row{"", "", "", "", 0},
};
constexpr std::array mail{
    Row{"Kişisel e-posta", "isil@example.com", "posta;Güvercin;3", "https://posta.example/giris", 5},
    Row{"İş e-postası", "isil.kaya@firma.example", "Evrak-Dolabı-2.raf", "https://posta.firma.example", 19},
    Row{"Aile grubu", "kayalar@example.com", "bayram.ŞEKERİ.12", "https://gruplar.example", 62},
    Row{"Okul", "1804217@okul.example", "final_Haftası!", "https://posta.okul.example", 5},
    Row{"Dernek", "sayman@dernek.example", "aidat*Makbuz*6", "https://dernek.example", 15},
    Row{"Eski adres", "isilk@eski.example", "2009dan-kalma", "https://eski.example", 25},
    Row{"Bülten", "isil+bulten@example.com", "okunmadı(147)", "https://bulten.example/abonelik", 21},
    Row{"ملاحظات السفر", "isil@example.com", "kervan-Saray-5", "https://seyahat.example", 7},
    Row{"👩‍👩‍👧‍👦 Ortak takvim 🗓️", "kayalar", "her-Pazar-10:30", "https://takvim.example", 37},
};
constexpr std::array banking{
    Row{"Vadesiz hesap", "21345678901", "Kumbara!78kuruş", "https://internet.banka.example/giris", 16},
    Row{"Kredi kartı", "4546 •••• 7712", "hesap-Kesim-24", "https://kart.banka.example", 16},
    Row{"Yatırım", "ikaya", "Faiz?Enflasyon?9", "https://yatirim.example", 50},
    Row{"Emeklilik", "21345678901", "65-yaş-Deniz-kıyısı", "https://bes.example", 29},
    Row{"Vergi", "21345678901", "beyan.Mart.31", "https://vergi.example/e-beyan", 22},
    Row{"Sigorta", "isil@example.com", "kasko/Trafik/Dask", "https://sigorta.example", 60},
    Row{"Fatura ödeme", "isil@example.com", "elektrik+Su+Doğalgaz", "https://fatura.example", 21},
    Row{"Döviz bürosu", "", "al-Sat-makas1", "https://doviz.example", 29},
};
constexpr std::array servers{
    Row{"derleme-01", "kaya", "Ninja$Uyur%3", "ssh://derleme-01.firma.example", 20},
    Row{"veritabanı (canlı)", "dba", "SELECT-kahve-FROM-mutfak", "postgres://vt.firma.example:5432", 47},
    Row{"yedek", "yedekci", "3-2-1-Kuralı", "sftp://yedek.firma.example", 25},
    Row{"Sertifika kasası", "kaya", "x509~Yenile~90gün", "https://ca.firma.example", 15},
    Row{"İzleme panosu", "isil.kaya", "yeşil-Sarı-kırmızı", "https://izleme.firma.example", 50},
    Row{"VPN", "ikaya", "Tünel(7)Işık", "vpn.firma.example", 24},
};

KdbxEntry entryOf(const Row& row, double ageInDays) {
    KdbxEntry entry;
    entry.title = row.title;
    entry.username = row.username;
    entry.password = SecureString(row.password);
    entry.url = row.url;
    entry.iconID = row.iconID;
    entry.created = {made.seconds - ageInDays * day};
    entry.modified = {entry.created.seconds + ageInDays * day / 3};
    entry.accessed = {made.seconds - day};
    return entry;
}

KdbxGroup groupOf(const std::string& name, std::int64_t iconID, std::span<const Row> rows) {
    KdbxGroup group;
    group.name = name;
    group.iconID = iconID;
    group.created = group.modified = made;
    for (std::size_t i = 0; i < rows.size(); ++i)
        group.entries.append(entryOf(rows[i], 400.0 - 7.5 * static_cast<double>(i)));
    return group;
}

void addHistory(KdbxEntry& entry, int count) {
    auto version = entry;
    for (int i = 0; i < count; ++i) {
        version.modified = {entry.modified.seconds - (count - i) * 16.25 * day};
        version.password = SecureString("eski-parola-" + std::to_string(i + 1));
        entry.historyItems.append(version);
    }
}

/// All that an entry can have.
void fill(KdbxEntry& github) {
    github.tags = {"iş", "kritik"};
    github.notes = "İki aşamalı doğrulama telefonda.\nKurtarma kodları çelik dolapta, ikinci rafta.";
    github.customFields.emplace("Kurtarma kodu", "7f3k-91qz-Ğü");
    github.customFields.emplace("Kullanıcı no", "48151623");
    github.protectedCustomFields.insert("Kurtarma kodu");
    github.autoTypeWindowAssociations = {{"*GitHub*", std::nullopt},
                                         {"Oturum aç*", "{USERNAME}{TAB}{PASSWORD}{DELAY 200}{ENTER}"}};
    addHistory(github, 7);
}

void addSpecialFeatures(KdbxGroup& group) {
    fill(group.entries.mutableAt(1));

    auto& linkedIn = group.entries.mutableAt(2);
    linkedIn.expires = true;
    linkedIn.expiryTime = Timestamp{made.seconds - 30 * day};
    linkedIn.autoTypeEnabled = false;
    linkedIn.tags = {"iş"};

    auto& mastodon = group.entries.mutableAt(3);
    mastodon.autoTypeSequence = "{CLEARFIELD}{USERNAME}{TAB}{PASSWORD}{ENTER}";
    addHistory(mastodon, 2);
}

/// Texts that are far longer than any place for them.
KdbxEntry longEntry() {
    std::string title = "Çok uzun başlık:";
    for (int i = 0; i < 36; ++i)
        title += " ölçüsüz";
    auto entry =
        entryOf({"", "çok.uzun.bir.kullanıcı.adı.ki.hiçbir.sütuna.sığmaz@alt.alan.firma.example",
                 "Sonu-Gelmeyen-Parola-Sonu-Gelmeyen-Parola-Sonu-Gelmeyen-Parola",
                 "https://cok-uzun-bir-alan-adi.alt-alan.firma.example/yol/yol/yol/yol/yol/yol/yol?sorgu=uzun", 8},
                90);
    entry.title = title;
    entry.notes = "Boşluksuz" + std::string(280, 'z') + "\n\n" + title;
    for (int i = 1; i <= 14; ++i)
        entry.tags.push_back("etiket numara " + std::to_string(i));
    entry.customFields.emplace("Adı da değeri gibi hiçbir yere sığmayan, uzadıkça uzayan alan", title);
    return entry;
}

}  // namespace

KdbxDatabase demoVault() {
    auto internetGroup = groupOf("İnternet", 1, internet);
    auto shoppingGroup = groupOf("Alışveriş", 48, shopping);
    shoppingGroup.groups.append(groupOf("Giyim", 48, clothing));
    shoppingGroup.isExpanded = false;
    auto socialGroup = groupOf("Sosyal", 9, social);
    addSpecialFeatures(socialGroup);
    internetGroup.groups.append(std::move(shoppingGroup));
    internetGroup.groups.append(std::move(socialGroup));

    auto bankingGroup = groupOf("Bankacılık", 16, banking);
    bankingGroup.groups.append(groupOf("Kapanan hesaplar", 25, {}));
    bankingGroup.isExpanded = false;
    auto serverGroup = groupOf("İş sunucuları", 3, servers);
    serverGroup.entries.append(longEntry());

    auto root = groupOf("Kasam", 48, {});
    for (auto& group : {internetGroup, groupOf("E-posta", 5, mail), bankingGroup, serverGroup})
        root.groups.append(group);
    KdbxMeta meta;
    meta.databaseName = root.name;
    return {.meta = std::move(meta),
            .root = std::move(root),
            .cipher = KdbxCipher::chacha20,
            .kdf = {KdfSettings::Argon2{
                .variant = KdfSettings::Variant::argon2id, .memoryKiB = 1024, .iterations = 2, .parallelism = 1}},
            .compressed = true,
            .formatVersion = {.major = 4, .minor = 1}};
}

KdbxDatabase demoVaultWithFurtherEntries(std::size_t count) {
    auto vault = demoVault();
    auto further = groupOf("Diğerleri", 48, {});
    for (std::size_t i = 1; i <= count; ++i) {
        const auto number = std::to_string(i);
        auto entry = entryOf({"", "", "", "", static_cast<std::int64_t>(i % 69)}, static_cast<double>(i % 1000));
        entry.title = "Kayıt " + number;
        entry.username = "kullanici" + number;
        entry.password = SecureString("parola-" + number);
        entry.url = "https://site" + number + ".example/giris";
        further.entries.append(std::move(entry));
    }
    vault.root.groups.append(std::move(further));
    return vault;
}
