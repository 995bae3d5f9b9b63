// SPDX-License-Identifier: MIT
#include "core/model/KdbxDatabase.h"

#include "tests/support/Entries.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

/// A group in a group in a group, and so on.
KdbxGroup chainOfGroups(int depth) {
    KdbxGroup group{.id = UUID(), .name = "innermost", .created = {1}, .modified = {1}};
    for (int level = 0; level < depth; ++level) {
        KdbxGroup outer{.id = UUID(), .created = {1}, .modified = {1}};
        outer.groups.append(std::move(group));
        group = std::move(outer);
    }
    return group;
}

TEST(KdbxEntryTest, startsWithTheValuesOfANewEntry) {
    const auto before = Timestamp::now();
    const KdbxEntry entry;
    EXPECT_FALSE(entry.id.isZero());
    EXPECT_NE(entry.id, KdbxEntry().id);
    EXPECT_EQ(entry.title + entry.username + entry.url + entry.notes, "");
    EXPECT_TRUE(entry.password.isEmpty());
    EXPECT_TRUE(entry.customFields.empty());
    EXPECT_TRUE(entry.protectedCustomFields.empty());
    EXPECT_TRUE(entry.tags.empty());
    EXPECT_EQ(entry.autoTypeSequence, std::nullopt);
    EXPECT_TRUE(entry.autoTypeEnabled);
    EXPECT_TRUE(entry.autoTypeWindowAssociations.empty());
    EXPECT_EQ(entry.iconID, 0);
    EXPECT_GE(entry.created, before);
    EXPECT_EQ(entry.modified, entry.created);
    EXPECT_EQ(entry.accessed, entry.created);
    EXPECT_FALSE(entry.expires);
    EXPECT_EQ(entry.expiryTime, std::nullopt);
    EXPECT_TRUE(entry.historyItems.empty());
    EXPECT_TRUE(entry.unknownXML.empty());
}

TEST(KdbxEntryTest, isExpiredStrictlyAfterItsTime) {
    const Timestamp time{1'000};
    KdbxEntry entry{.expires = true, .expiryTime = time};
    EXPECT_TRUE(entry.isExpired({1'000.5}));
    EXPECT_FALSE(entry.isExpired(time));
    EXPECT_FALSE(entry.isExpired({999.5}));
    EXPECT_TRUE(entry.isExpired());

    entry.expiryTime = Timestamp{Timestamp::now().seconds + 1'000};
    EXPECT_FALSE(entry.isExpired());
}

TEST(KdbxEntryTest, withoutATimeOrWithoutTheMarkIsNeverExpired) {
    EXPECT_FALSE((KdbxEntry{.expires = true}).isExpired());
    EXPECT_FALSE((KdbxEntry{.expires = false, .expiryTime = Timestamp{0}}).isExpired());
}

TEST(KdbxEntryTest, isEqualByItsIdentityAndItsLastChangeAlone) {
    const KdbxEntry entry{.title = "a", .password = SecureString("eski")};
    auto other = entry;
    other.title = "b";
    other.password = SecureString("yeni");
    EXPECT_EQ(entry, other);

    other.modified.seconds += 0.25;
    EXPECT_NE(entry, other);
    other = entry;
    other.id = UUID::random();
    EXPECT_NE(entry, other);
}

TEST(KdbxGroupTest, startsWithTheValuesOfANewGroup) {
    const KdbxGroup group;
    EXPECT_FALSE(group.id.isZero());
    EXPECT_EQ(group.name + group.notes, "");
    EXPECT_EQ(group.iconID, 48);
    EXPECT_TRUE(group.groups.empty());
    EXPECT_TRUE(group.entries.empty());
    EXPECT_TRUE(group.isExpanded);
    EXPECT_EQ(group.defaultAutoTypeSequence, std::nullopt);
    EXPECT_EQ(group.modified, group.created);
    EXPECT_TRUE(group.unknownXML.empty());
}

TEST(KdbxGroupTest, isEqualWhateverItsNameAndTheFieldsOfItsEntries) {
    const KdbxGroup group{.name = "a", .groups = {KdbxGroup{.entries = {entryTitled("b")}}}};
    auto other = group;
    other.name = "c";
    other.notes = "d";
    other.iconID = 1;
    other.isExpanded = false;
    other.groups.mutableAt(0).entries.mutableAt(0).password = SecureString("yeni");
    EXPECT_EQ(group, other);
}

TEST(KdbxGroupTest, differsByIdentityChangeEntriesAndSubgroupsAtAnyDepth) {
    const KdbxGroup group{.groups = {KdbxGroup{.entries = {entryTitled("b")}}}};
    const auto changed = [&](auto change) {
        auto other = group;
        change(other);
        return other;
    };
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.id = UUID::random(); }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.modified.seconds += 1; }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.entries.append({}); }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.groups.append({}); }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.groups.clear(); }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.groups.mutableAt(0).modified.seconds += 1; }));
    EXPECT_NE(group,
              changed([](KdbxGroup& other) { other.groups.mutableAt(0).entries.mutableAt(0).modified.seconds += 1; }));
    EXPECT_NE(group, changed([](KdbxGroup& other) { other.groups.mutableAt(0).entries.clear(); }));
}

TEST(KdbxGroupTest, theOrderOfEntriesAndSubgroupsCountsInEquality) {
    const KdbxEntry a;
    const KdbxEntry b;
    const KdbxGroup group{.entries = {a, b}};
    auto other = group;
    other.entries = {b, a};
    EXPECT_NE(group, other);
}

TEST(KdbxGroupTest, allEntriesGivesItsOwnBeforeThoseOfItsSubgroups) {
    const auto c = entryTitled("C");
    const KdbxGroup group{.groups = {KdbxGroup{.entries = {c}}}, .entries = {entryTitled("A"), entryTitled("B")}};
    EXPECT_EQ(titlesOf(group.allEntries()), (std::vector<std::string>{"A", "B", "C"}));
}

TEST(KdbxGroupTest, allEntriesFollowsTheStoredOrderOfSubgroups) {
    const KdbxGroup first{.groups = {KdbxGroup{.entries = {entryTitled("2")}}}, .entries = {entryTitled("1")}};
    const KdbxGroup second{.entries = {entryTitled("3")}};
    const KdbxGroup group{.groups = {first, second}, .entries = {entryTitled("0")}};
    EXPECT_EQ(titlesOf(group.allEntries()), (std::vector<std::string>{"0", "1", "2", "3"}));
}

TEST(KdbxGroupTest, allEntriesOfAnEmptySubtreeIsEmpty) {
    EXPECT_TRUE((KdbxGroup{.groups = {KdbxGroup{.groups = {KdbxGroup{}}}}}).allEntries().empty());
}

TEST(KdbxGroupTest, allEntriesGivesNoHistoryItems) {
    auto entry = entryTitled("now");
    entry.historyItems.append(entryTitled("before"));
    EXPECT_EQ(titlesOf((KdbxGroup{.entries = {entry}}).allEntries()), std::vector<std::string>{"now"});
}

TEST(KdbxGroupTest, noTreeIsTooDeepToBeCopiedComparedWalkedAndDestroyed) {
    // On a stack much smaller than the program's own.
    const auto onASmallStack = [](auto work) {
        pthread_attr_t attributes;
        ASSERT_EQ(::pthread_attr_init(&attributes), 0);
        ASSERT_EQ(::pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
        pthread_t thread{};
        ASSERT_EQ(::pthread_create(
                      &thread, &attributes,
                      [](void* argument) -> void* {
                          (*static_cast<decltype(work)*>(argument))();
                          return nullptr;
                      },
                      &work),
                  0);
        ASSERT_EQ(::pthread_join(thread, nullptr), 0);
        ::pthread_attr_destroy(&attributes);
    };
    onASmallStack([] {
        const auto tree = chainOfGroups(50'000);
        const auto same = chainOfGroups(50'000);
        EXPECT_TRUE(tree == same);
        EXPECT_FALSE(tree == chainOfGroups(49'999));
        EXPECT_TRUE(tree.allEntries().empty());
    });
}

TEST(KdbxDatabaseTest, aCopyIsIndependent) {
    KdbxDatabase database{.meta = {},
                          .root = {.name = "Kasa", .entries = {entryTitled("a")}},
                          .cipher = KdbxCipher::chacha20,
                          .kdf = KdfSettings::recommended(),
                          .compressed = true,
                          .formatVersion = {4, 1}};
    const auto snapshot = database;

    database.meta.databaseName = "other";
    database.root.name = "other";
    database.root.entries.mutableAt(0).title = "other";

    EXPECT_EQ(snapshot.meta.databaseName, "Brenvik Database");
    EXPECT_EQ(snapshot.root.name, "Kasa");
    EXPECT_EQ(snapshot.root.entries[0].title, "a");
}

TEST(KdbxMetaTest, startsWithTheValuesOfANewVault) {
    const KdbxMeta meta;
    EXPECT_EQ(meta.databaseName, "Brenvik Database");
    EXPECT_EQ(meta.databaseDescription, "");
    EXPECT_EQ(meta.defaultUsername, "");
    EXPECT_TRUE(meta.recycleBinEnabled);
    EXPECT_EQ(meta.recycleBinUUID, std::nullopt);
    EXPECT_EQ(meta.historyMaxItems, 10);
    EXPECT_EQ(meta.historyMaxSize, 6'291'456);
    EXPECT_EQ(meta.generator, "Brenvik");
}

TEST(KdbxMetaTest, eachOfTheEightFieldsCountsInEquality) {
    const KdbxMeta meta;
    const auto changed = [&](auto change) {
        auto other = meta;
        change(other);
        return other;
    };
    EXPECT_EQ(meta, KdbxMeta());
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.databaseName = "x"; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.databaseDescription = "x"; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.defaultUsername = "x"; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.recycleBinEnabled = false; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.recycleBinUUID = UUID(); }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.historyMaxItems = 11; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.historyMaxSize = 1; }));
    EXPECT_NE(meta, changed([](KdbxMeta& other) { other.generator = "x"; }));
}

TEST(KdbxMetaTest, itsTextsAreComparedAsTexts) {
    EXPECT_EQ((KdbxMeta{.databaseName = "ş"}), (KdbxMeta{.databaseName = "s\u0327"}));
}

TEST(KdbxCipherTest, hasItsTextValuesInOrder) {
    ASSERT_EQ(allKdbxCiphers.size(), 2u);
    EXPECT_EQ(textValue(allKdbxCiphers[0]), "AES-256-CBC");
    EXPECT_EQ(textValue(allKdbxCiphers[1]), "ChaCha20");
}

TEST(KdbxCipherTest, isBuiltFromItsTextValueToTheLetter) {
    EXPECT_EQ(kdbxCipher("AES-256-CBC"), KdbxCipher::aes256);
    EXPECT_EQ(kdbxCipher("ChaCha20"), KdbxCipher::chacha20);
    for (const auto* text : {"", "aes-256-cbc", "CHACHA20", "chacha20", "AES-256-CBC ", "Twofish"})
        EXPECT_EQ(kdbxCipher(text), std::nullopt) << text;
}

TEST(KdfSettingsTest, recommendsArgon2idOver256MiB) {
    EXPECT_EQ(
        KdfSettings::recommended(),
        (KdfSettings{KdfSettings::Argon2{
            .variant = KdfSettings::Variant::argon2id, .memoryKiB = 262'144, .iterations = 16, .parallelism = 4}}));
}

TEST(KdfSettingsTest, isEqualByCaseAndPayload) {
    const KdfSettings settings{KdfSettings::Argon2{
        .variant = KdfSettings::Variant::argon2d, .memoryKiB = 1, .iterations = 2, .parallelism = 3}};
    EXPECT_EQ(settings,
              (KdfSettings{KdfSettings::Argon2{
                  .variant = KdfSettings::Variant::argon2d, .memoryKiB = 1, .iterations = 2, .parallelism = 3}}));
    EXPECT_NE(settings,
              (KdfSettings{KdfSettings::Argon2{
                  .variant = KdfSettings::Variant::argon2id, .memoryKiB = 1, .iterations = 2, .parallelism = 3}}));
    EXPECT_NE(settings,
              (KdfSettings{KdfSettings::Argon2{
                  .variant = KdfSettings::Variant::argon2d, .memoryKiB = 9, .iterations = 2, .parallelism = 3}}));
    EXPECT_NE(settings,
              (KdfSettings{KdfSettings::Argon2{
                  .variant = KdfSettings::Variant::argon2d, .memoryKiB = 1, .iterations = 9, .parallelism = 3}}));
    EXPECT_NE(settings,
              (KdfSettings{KdfSettings::Argon2{
                  .variant = KdfSettings::Variant::argon2d, .memoryKiB = 1, .iterations = 2, .parallelism = 9}}));
    EXPECT_NE((KdfSettings{KdfSettings::AesKdf{.rounds = 1}}), (KdfSettings{KdfSettings::AesKdf{.rounds = 2}}));
}

TEST(KdbxKeyTest, aCopyHasItsOwnPassword) {
    KdbxKey key("parola", Bytes{1, 2, 3});
    const auto copy = key;
    key.password = "başka";
    EXPECT_EQ(copy.password, "parola");
    EXPECT_EQ(copy.keyFileData, (Bytes{1, 2, 3}));
}

TEST(KdbxKeyTest, takesOverBothPartsOfAnother) {
    const KdbxKey key("parola", Bytes{1});
    KdbxKey other("çok uzun bir eski parola, yerinde kalmamalı", std::nullopt);
    other = key;
    EXPECT_EQ(other.password, "parola");
    EXPECT_EQ(other.keyFileData, Bytes{1});

    const auto& same = other;
    other = same;
    EXPECT_EQ(other.password, "parola");
    other = KdbxKey();
    EXPECT_EQ(other.password, std::nullopt);
    EXPECT_EQ(other.keyFileData, std::nullopt);
}

TEST(KdbxKeyTest, wipesItsPasswordWhenItGoesAndWhenAnotherComes) {
    // The key stands in memory of the test's own, which can be looked into afterwards.
    alignas(KdbxKey) std::array<char, sizeof(KdbxKey)> place{};
    const std::string_view memory(place.data(), place.size());
    auto* key = ::new (place.data()) KdbxKey("kisa parola", std::nullopt);
    ASSERT_NE(memory.find("kisa parola"), std::string_view::npos);

    *key = KdbxKey("yeni", std::nullopt);
    EXPECT_EQ(memory.find("parola"), std::string_view::npos);
    key->~KdbxKey();
    EXPECT_EQ(memory.find("yeni"), std::string_view::npos);
}

}  // namespace
