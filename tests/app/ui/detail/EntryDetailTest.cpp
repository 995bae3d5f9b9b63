// SPDX-License-Identifier: MIT
#include "tests/app/ui/detail/EntryDetailFixture.h"
#include "tests/support/MemoryScan.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QPointer>
#include <QTextEdit>

namespace {

using namespace WindowProbe;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class EntryDetailTest : public EntryDetailFixture {};

// The header and what can be done at once.

TEST_F(EntryDetailTest, theTitleStandsAboveAllAndAnEmptyOneSaysSo) {
    showBank([](KdbxEntry&) {});
    EXPECT_EQ(labels().front(), "Banka");
    showBank([](KdbxEntry& entry) { entry.title = ""; });
    EXPECT_EQ(labels().front(), "Adsız kayıt");
}

TEST_F(EntryDetailTest, thePencilAsksForTheEditor) {
    showBank([](KdbxEntry&) {});
    auto* const pencil = WindowProbe::button(pane, "Düzenle (⌘E)");
    ASSERT_NE(pencil, nullptr);
    EXPECT_EQ(pencil->toolTip(), "Düzenle (⌘E)");
    pencil->click();
    EXPECT_EQ(state->route(), Route::editEntry(bank().id));
}

TEST_F(EntryDetailTest, badgesShowExpiryAndTypingThatIsOff) {
    showBank([](KdbxEntry&) {});
    EXPECT_THAT(badges(), ElementsAre("Varsayılan"));
    showBank([](KdbxEntry& entry) {
        entry.expires = true;
        entry.expiryTime = Timestamp{1};
        entry.autoTypeEnabled = false;
    });
    EXPECT_THAT(badges(), ElementsAre("Süresi doldu", "Otomatik yazma kapalı", "Varsayılan"));
}

TEST_F(EntryDetailTest, anEntryThatExpiresAtNoTimeHasNeitherBadgeNorDate) {
    showBank([](KdbxEntry& entry) {
        entry.expires = true;
        entry.expiryTime.reset();
    });
    EXPECT_THAT(badges(), ElementsAre("Varsayılan"));
    EXPECT_FALSE(shows(pane, "Son kullanma"));

    showBank([](KdbxEntry& entry) {
        entry.expires = false;
        entry.expiryTime = Timestamp{1};
    });
    EXPECT_THAT(badges(), ElementsAre("Varsayılan"));
    EXPECT_FALSE(shows(pane, "Son kullanma"));
}

TEST_F(EntryDetailTest, theActionsCopyAndType) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.password = SecureString("gizli");
    });
    click(pane, "Kullanıcı");
    EXPECT_EQ(pasteboard.text(), "ışıl");
    EXPECT_TRUE(clipboard.hasPendingSecret());
    click(pane, "Parola");
    EXPECT_EQ(pasteboard.text(), "gizli");
    EXPECT_TRUE(clipboard.hasPendingSecret());
    click(pane, "Otomatik yaz");
    clock.advance(std::chrono::seconds(0));
    EXPECT_EQ(autoTyping.performed.size(), 1U);
}

TEST_F(EntryDetailTest, whatIsEmptyCannotBeCopied) {
    showBank([](KdbxEntry&) {});
    EXPECT_FALSE(WindowProbe::button(pane, "Kullanıcı")->isEnabled());
    EXPECT_FALSE(WindowProbe::button(pane, "Parola")->isEnabled());
    EXPECT_TRUE(WindowProbe::button(pane, "Otomatik yaz")->isEnabled());

    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.password = SecureString("gizli");
    });
    EXPECT_TRUE(WindowProbe::button(pane, "Kullanıcı")->isEnabled());
    EXPECT_TRUE(WindowProbe::button(pane, "Parola")->isEnabled());
}

// User name and password.

TEST_F(EntryDetailTest, aPasswordShowsAsManyDotsAsItHasCharactersWithinBounds) {
    for (const auto& [characters, dots] : {std::pair{0, 8}, std::pair{3, 8}, std::pair{20, 20}, std::pair{40, 32}}) {
        std::string password;
        for (int i = 0; i < characters; ++i)
            password += "ş";  // two bytes, one character
        showBank([&](KdbxEntry& entry) { entry.password = SecureString(password); });
        EXPECT_EQ(secret("Parola"), QString(dots, QChar(0x2022))) << characters;
    }
}

TEST_F(EntryDetailTest, theEyeShowsThePasswordAndHidesItAgain) {
    showBank([](KdbxEntry& entry) { entry.password = SecureString("pl1ıO0-👩‍👩‍👧"); });
    press("Göster", "Parola");
    EXPECT_EQ(secret("Parola"), "pl1ıO0-👩‍👩‍👧");
    EXPECT_EQ(button("Gizle", "Parola")->toolTip(), "Gizle");
    press("Gizle", "Parola");
    EXPECT_EQ(secret("Parola"), "••••••••");
    EXPECT_EQ(button("Göster", "Parola")->toolTip(), "Göster");
}

TEST_F(EntryDetailTest, thePasswordIsMaskedAgainAfterAnotherEntry) {
    const auto fill = [](KdbxEntry& entry) {
        entry.password = SecureString("gizli");
        entry.customFields = {{"Kod", "1234"}};
        entry.protectedCustomFields = {"Kod"};
    };
    showBank(fill);
    press("Göster", "Parola");
    press("Göster", "Kod");
    EXPECT_EQ(secret("Kod"), "1234");

    state->setSelectedEntryIDs({mail().id});
    state->setSelectedEntryIDs({bank().id});
    EXPECT_EQ(secret("Parola"), "••••••••");
    EXPECT_EQ(secret("Kod"), "••••••");

    press("Göster", "Parola");
    state->setSelectedEntryIDs({bank().id, mail().id});
    state->setSelectedEntryIDs({bank().id});
    EXPECT_EQ(secret("Parola"), "••••••••");
}

TEST_F(EntryDetailTest, whatIsRevealedStaysSoWhileTheEntryIsEdited) {
    showBank([](KdbxEntry& entry) { entry.password = SecureString("eski"); });
    press("Göster", "Parola");
    showBank([](KdbxEntry& entry) { entry.password = SecureString("yeni"); });
    EXPECT_EQ(secret("Parola"), "yeni");
}

TEST_F(EntryDetailTest, aMaskedSecretIsNowhereInTheWindow) {
    showBank([](KdbxEntry& entry) {
        entry.password = SecureString("gizli");
        entry.customFields = {{"Kod", "gizli"}};
        entry.protectedCustomFields = {"Kod"};
    });
    for (auto* const widget : shown<QWidget>()) {
        for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
            EXPECT_FALSE(heard(widget, kind).contains("gizli")) << widget->metaObject()->className();
        EXPECT_FALSE(widget->toolTip().contains("gizli"));
    }
}

TEST_F(EntryDetailTest, onlyTheNotesCanBeSelected) {
    showBank([](KdbxEntry& entry) {
        entry.password = SecureString("gizli");
        entry.notes = "Şubede.";
    });
    press("Göster", "Parola");
    for (auto* const label : shown<QLabel>())
        EXPECT_EQ(label->textInteractionFlags() & Qt::TextSelectableByMouse, 0) << qPrintable(label->text());
    EXPECT_THAT(shown<QLineEdit>(), IsEmpty());
    EXPECT_EQ(shown<QTextEdit>().size(), 1U);
}

TEST_F(EntryDetailTest, aRowCopiesItsField) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.password = SecureString("gizli");
    });
    press("Kopyala", "Kullanıcı adı");
    EXPECT_EQ(pasteboard.text(), "ışıl");
    press("Kopyala", "Parola");
    EXPECT_EQ(pasteboard.text(), "gizli");
    clock.advance(std::chrono::seconds(13));
    EXPECT_EQ(pasteboard.text(), "");
}

// Address and tags.

TEST_F(EntryDetailTest, anAddressWithoutTagsStandsAlone) {
    showBank([](KdbxEntry& entry) { entry.url = "banka.example"; });
    EXPECT_THAT(cardWith("Adres"), ElementsAre("Adres", "banka.example"));
    EXPECT_FALSE(shows(pane, "Etiketler"));
}

TEST_F(EntryDetailTest, tagsWithoutAnAddressStandAlone) {
    showBank([](KdbxEntry& entry) { entry.tags = {"iş", "kritik"}; });
    EXPECT_THAT(cardWith("Etiketler"), ElementsAre("Etiketler"));
    EXPECT_THAT(badges(), ElementsAre("iş", "kritik", "Varsayılan"));
    EXPECT_FALSE(shows(pane, "Adres"));
}

TEST_F(EntryDetailTest, anEntryWithNeitherHasNoPlaceCard) {
    showBank([](KdbxEntry&) {});
    EXPECT_FALSE(shows(pane, "Adres"));
    EXPECT_FALSE(shows(pane, "Etiketler"));
    EXPECT_FALSE(shows(pane, "Özel alanlar"));
    EXPECT_FALSE(shows(pane, "Notlar"));
    EXPECT_FALSE(shows(pane, "Geçmiş"));
}

TEST_F(EntryDetailTest, theAddressIsOpenedAndCopiedToStay) {
    showBank([](KdbxEntry& entry) { entry.url = "banka.example"; });
    press("Adresi tarayıcıda aç", "Adres");
    EXPECT_THAT(workspace.opened, ElementsAre("https://banka.example"));
    press("Kopyala", "Adres");
    EXPECT_EQ(pasteboard.text(), "banka.example");
    clock.advance(std::chrono::seconds(60));
    EXPECT_EQ(pasteboard.text(), "banka.example");
}

// Custom fields.

TEST_F(EntryDetailTest, customFieldsStandInTheOrderOfTheirNames) {
    showBank([](KdbxEntry& entry) { entry.customFields = {{"Şube", "Kadıköy"}, {"IBAN", "TR12"}, {"Kod", "1234"}}; });
    EXPECT_THAT(cardWith("Özel alanlar"),
                ElementsAre("Özel alanlar", "IBAN", "TR12", "Kod", "1234", "Şube", "Kadıköy"));
}

TEST_F(EntryDetailTest, aProtectedFieldShowsDotsWithinItsOwnBounds) {
    for (const auto& [characters, dots] : {std::pair{2, 6}, std::pair{10, 10}, std::pair{30, 24}}) {
        showBank([&](KdbxEntry& entry) {
            entry.customFields = {{"Kod", std::string(static_cast<std::size_t>(characters), 'x')}};
            entry.protectedCustomFields = {"Kod"};
        });
        EXPECT_EQ(secret("Kod"), QString(dots, QChar(0x2022))) << characters;
    }
}

TEST_F(EntryDetailTest, eachProtectedFieldHasItsOwnEye) {
    showBank([](KdbxEntry& entry) {
        entry.customFields = {{"Kod", "1234"}, {"Pin", "5678"}, {"Şube", "Kadıköy"}};
        entry.protectedCustomFields = {"Kod", "Pin"};
    });
    press("Göster", "Pin");
    EXPECT_EQ(secret("Kod"), "••••••");
    EXPECT_EQ(secret("Pin"), "5678");
    EXPECT_EQ(button("Göster", "Şube"), nullptr);
    press("Gizle", "Pin");
    EXPECT_EQ(secret("Pin"), "••••••");
}

TEST_F(EntryDetailTest, aPlainFieldIsCopiedToStayAndAProtectedOneIsWiped) {
    showBank([](KdbxEntry& entry) {
        entry.customFields = {{"Kod", "1234"}, {"Şube", "Kadıköy"}};
        entry.protectedCustomFields = {"Kod"};
    });
    press("Kopyala", "Şube");
    EXPECT_EQ(pasteboard.text(), "Kadıköy");
    EXPECT_FALSE(clipboard.hasPendingSecret());
    clock.advance(std::chrono::seconds(60));
    EXPECT_EQ(pasteboard.text(), "Kadıköy");

    press("Kopyala", "Kod");
    EXPECT_EQ(pasteboard.text(), "1234");
    EXPECT_TRUE(clipboard.hasPendingSecret());
    clock.advance(std::chrono::seconds(13));
    EXPECT_EQ(pasteboard.text(), "");
}

TEST_F(EntryDetailTest, eachFieldCopiesItsOwnTextAlsoAfterTheEntryWasTouched) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.customFields = {{"A", "bir"}, {"B", "iki"}, {"C", "üç"}};
    });
    for (int round = 0; round < 3; ++round) {
        press("Kopyala", "Kullanıcı adı");  // sends the entry anew
        for (const auto& [field, text] : {std::pair{"A", "bir"}, std::pair{"B", "iki"}, std::pair{"C", "üç"}}) {
            press("Kopyala", field);
            EXPECT_EQ(pasteboard.text(), text);
        }
    }
}

// Typing.

TEST_F(EntryDetailTest, anEntryWithoutASequenceShowsTheUsersOwn) {
    showBank([](KdbxEntry&) {});
    EXPECT_THAT(badges(), Contains("Varsayılan"));
    EXPECT_THAT(cardWith("Otomatik yazma"), ElementsAre("Otomatik yazma", preferences->defaultAutoTypeSequence()));
    preferences->setDefaultAutoTypeSequence("{PASSWORD}");
    EXPECT_THAT(cardWith("Otomatik yazma"), ElementsAre("Otomatik yazma", "{PASSWORD}"));
}

TEST_F(EntryDetailTest, anOwnSequenceIsShownAlsoWhereItIsEmpty) {
    showBank([](KdbxEntry& entry) { entry.autoTypeSequence = "{USERNAME}{ENTER}"; });
    EXPECT_THAT(badges(), ElementsAre("Özel"));
    EXPECT_THAT(cardWith("Otomatik yazma"), ElementsAre("Otomatik yazma", "{USERNAME}{ENTER}"));
    showBank([](KdbxEntry& entry) { entry.autoTypeSequence = ""; });
    EXPECT_THAT(badges(), ElementsAre("Özel"));
    EXPECT_THAT(cardWith("Otomatik yazma"), ElementsAre("Otomatik yazma", "—"));
}

TEST_F(EntryDetailTest, windowsStandInTheirStoredOrderWithTheirSequences) {
    showBank([](KdbxEntry& entry) {
        entry.autoTypeSequence = "{TAB}";
        entry.autoTypeWindowAssociations = {{"*Zirve*", std::nullopt}, {"Oturum aç*", "{PASSWORD}"}};
    });
    EXPECT_THAT(cardWith("Otomatik yazma"),
                ElementsAre("Otomatik yazma", "{TAB}", "Pencere eşleşmeleri", "*Zirve*", "Oturum aç*", "→ {PASSWORD}"));
}

// Notes, times and history.

TEST_F(EntryDetailTest, theNotesCanBeReadAndSelectedButNotChanged) {
    showBank([](KdbxEntry& entry) { entry.notes = "Birinci satır.\n\tİkinci <b>satır</b>."; });
    auto* const notes = find<QTextEdit>(pane, "Notlar");
    ASSERT_NE(notes, nullptr);
    EXPECT_EQ(notes->toPlainText(), "Birinci satır.\n\tİkinci <b>satır</b>.");
    EXPECT_TRUE(notes->isReadOnly());
    EXPECT_TRUE(notes->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
    EXPECT_TRUE(notes->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
}

TEST_F(EntryDetailTest, longNotesAreShownWholeInTheNarrowestColumn) {
    pane.resize(260, 620);
    showBank([](KdbxEntry& entry) { entry.notes = std::string(900, 'z') + "\n\n" + std::string(40, '\n') + "son"; });
    auto* const notes = find<QTextEdit>(pane, "Notlar");
    EXPECT_GE(notes->height(), notes->document()->size().height());
    EXPECT_LE(notes->document()->size().width(), notes->width());
    EXPECT_EQ(notes->verticalScrollBar()->maximum(), 0);
    EXPECT_GT(scrollBar().maximum(), 0);
}

TEST_F(EntryDetailTest, theTimesAreDatesInTurkish) {
    showBank([](KdbxEntry& entry) {
        entry.created = Timestamp{1773480360};  // 2026-03-14 09:26 UTC
        entry.modified = Timestamp{1754647500};
        entry.accessed = Timestamp{1772323199.75};
        entry.expires = true;
        entry.expiryTime = Timestamp{1765152000};
    });
    EXPECT_THAT(cardWith("Oluşturuldu"),
                ElementsAre("Oluşturuldu", "14 Mar 2026 09:26", "Değiştirildi", "8 Ağu 2025 10:05", "Erişildi",
                            "28 Şub 2026 23:59", "Son kullanma", "8 Ara 2025 00:00"));
}

TEST_F(EntryDetailTest, timesThatNoCalendarReachesAreADash) {
    for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN(),
                                 std::numeric_limits<double>::infinity(), 253402300800.0, -62135596801.0}) {
        showBank([&](KdbxEntry& entry) { entry.created = Timestamp{seconds}; });
        EXPECT_EQ(cardWith("Oluşturuldu")[1], "—") << seconds;
    }
}

TEST_F(EntryDetailTest, theHistoryCountsAllVersionsAndListsTheSixNewest) {
    showBank([](KdbxEntry& entry) {
        for (int version = 1; version <= 7; ++version) {
            auto item = entryTitled(version == 5 ? "" : "Sürüm " + std::to_string(version));
            item.modified = Timestamp{version * 86400.0};
            entry.historyItems.append(item);
        }
    });
    EXPECT_THAT(cardWith("Geçmiş"),
                ElementsAre("Geçmiş", "7 sürüm", "Sürüm 7", "8 Oca 1970 00:00", "Sürüm 6", "7 Oca 1970 00:00", "Adsız",
                            "6 Oca 1970 00:00", "Sürüm 4", "5 Oca 1970 00:00", "Sürüm 3", "4 Oca 1970 00:00", "Sürüm 2",
                            "3 Oca 1970 00:00"));
}

// The same entry again, and another one.

TEST_F(EntryDetailTest, aCopyLeavesFocusScrollingAndControlsAlone) {
    showBank([](KdbxEntry& entry) {
        entry.password = SecureString("gizli");
        entry.accessed = Timestamp{0};
        entry.notes = std::string(2000, 'z');
    });
    QPointer<QAbstractButton> copy = button("Kopyala", "Parola");
    copy->setFocus();
    scrollBar().setValue(40);
    copy->click();
    QCoreApplication::processEvents();
    ASSERT_TRUE(copy);
    EXPECT_EQ(QApplication::focusWidget(), copy);
    EXPECT_EQ(scrollBar().value(), 40);
    EXPECT_NE(bank().accessed, Timestamp{0});
    EXPECT_THAT(labels(), Not(Contains("1 Oca 1970 00:00"))) << "the time of access is the new one";
}

TEST_F(EntryDetailTest, anEditedEntryKeepsTheFocusedControlAndItsPlace) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.customFields = {{"Kod", "1234"}};
        entry.notes = std::string(2000, 'z');
    });
    button("Kopyala", "Kod")->setFocus();
    scrollBar().setValue(120);
    showBank([](KdbxEntry& entry) { entry.username = "ayşe"; });
    EXPECT_TRUE(shows(pane, "ayşe"));
    EXPECT_EQ(QApplication::focusWidget(), button("Kopyala", "Kod"));
    EXPECT_EQ(scrollBar().value(), 120);

    showBank([](KdbxEntry& entry) { entry.customFields.clear(); });
    EXPECT_EQ(QApplication::focusWidget(), WindowProbe::button(pane, "Düzenle (⌘E)"))
        << "a control that is no more gives the focus to one that is";
}

TEST_F(EntryDetailTest, anotherEntryStartsAtItsTop) {
    const auto long_ = [](KdbxEntry& entry) { entry.notes = std::string(3000, 'z'); };
    state->edit("Adım", [&](KdbxDatabase& database) { long_(database.root.entries.mutableAt(1)); });
    showBank(long_);
    scrollBar().setValue(200);
    state->setSelectedEntryIDs({mail().id});
    EXPECT_EQ(scrollBar().value(), 0);
}

TEST_F(EntryDetailTest, everyShownChangeOfTheEntryIsSeen) {
    showBank([](KdbxEntry& entry) {
        entry.historyItems = {entryTitled("Eski")};
        entry.autoTypeWindowAssociations = {{"*", std::nullopt}};
        entry.customFields = {{"Kod", "1234"}};
    });
    const auto before = labels();
    const std::vector<std::function<void(KdbxEntry&)>> changes = {
        [](KdbxEntry& entry) { entry.title = "Başka"; },
        [](KdbxEntry& entry) { entry.username = "ayşe"; },
        [](KdbxEntry& entry) { entry.url = "x.example"; },
        [](KdbxEntry& entry) { entry.tags = {"iş"}; },
        [](KdbxEntry& entry) { entry.notes = "Not"; },
        [](KdbxEntry& entry) { entry.customFields["Kod"] = "5678"; },
        [](KdbxEntry& entry) { entry.protectedCustomFields = {"Kod"}; },
        [](KdbxEntry& entry) { entry.autoTypeSequence = "{TAB}"; },
        [](KdbxEntry& entry) { entry.autoTypeWindowAssociations[0].sequence = "{TAB}"; },
        [](KdbxEntry& entry) { entry.autoTypeWindowAssociations[0].window = "*Banka*"; },
        [](KdbxEntry& entry) { entry.created = Timestamp{1}; },
        [](KdbxEntry& entry) { entry.modified = Timestamp{1}; },
        [](KdbxEntry& entry) { entry.historyItems.mutableAt(0).title = "Daha eski"; },
        [](KdbxEntry& entry) { entry.historyItems.append(entryTitled("Eski")); },
        [](KdbxEntry& entry) {
            entry.expires = true;
            entry.expiryTime = Timestamp{4e9};
        },
    };
    for (std::size_t i = 0; i < changes.size(); ++i) {
        showBank(changes[i]);
        EXPECT_NE(labels(), before) << "change " << i;
        state->undo();
        EXPECT_EQ(labels(), before) << "change " << i;
    }
    showBank([](KdbxEntry& entry) { entry.autoTypeEnabled = false; });
    EXPECT_THAT(badges(), Contains("Otomatik yazma kapalı"));
}

TEST_F(EntryDetailTest, lockingForgetsTheTextsAndWhatWasRevealed) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.password = SecureString("gizli");
    });
    press("Göster", "Parola");
    state->lock();
    for (auto* const label : pane.findChildren<QLabel*>())
        EXPECT_THAT(label->text().toStdString(), Not(::testing::AnyOf("Banka", "ışıl")));
    EXPECT_TRUE(pane.findChildren<SecretText*>().isEmpty());
    EXPECT_TRUE(shows(pane, "Kayıt seçilmedi"));
}

/// Random, and nowhere else in the process.
SecureString secureString(const MaskedSecret& secret) {
    auto text = secret.clear();
    SecureString secure(text);
    wipe(text);
    return secure;
}

/// The same as Qt's texts hold it.
MaskedSecret asUTF16(const MaskedSecret& secret) {
    Bytes bytes;
    for (std::size_t i = 0; i < secret.size(); ++i) {
        bytes.push_back(secret.at(i));
        bytes.push_back(0);
    }
    return MaskedSecret::of(bytes);
}

TEST_F(EntryDetailTest, aPasswordThatWasShownIsNowhereInMemoryOnceItIsHiddenAndTheVaultLocked) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    const auto password = MaskedSecret::text();
    const auto inUTF16 = asUTF16(password);
    showBank([&](KdbxEntry& entry) { entry.password = secureString(password); });
    MemoryScan memory;
    for (const int width : {260, 468}) {
        pane.resize(width, 620);
        press("Göster", "Parola");
        pane.grab();
        press("Gizle", "Parola");
        EXPECT_EQ(memory.occurrences(inUTF16), 0) << "hidden again";
    }
    press("Göster", "Parola");
    pane.grab();
    state->lock();
    EXPECT_EQ(memory.occurrences(password), 0);
    EXPECT_EQ(memory.occurrences(inUTF16), 0);
}

}  // namespace
