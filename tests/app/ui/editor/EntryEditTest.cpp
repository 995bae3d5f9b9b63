// SPDX-License-Identifier: MIT
#include "tests/app/ui/editor/EntryEditFixture.h"

#include <gmock/gmock.h>

#include <QAccessible>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

using Route = AppState::Route;

class EntryEditTest : public EntryEditFixture {};

TEST_F(EntryEditTest, aNewEntryStartsWithTheDefaults) {
    createIn(root());
    EXPECT_TRUE(shows("Yeni kayıt"));
    for (const auto* const name : {"Başlık", "Kullanıcı adı", "Adres", "Etiketler", "Parola"})
        EXPECT_EQ(field(name).text(), "") << name;
    EXPECT_EQ(field("Başlık").placeholderText(), "örn. GitHub");
    EXPECT_EQ(field("Kullanıcı adı").placeholderText(), "ad@ornek.com");
    EXPECT_EQ(field("Adres").placeholderText(), "https://…");
    EXPECT_EQ(field("Etiketler").placeholderText(), "iş, kritik");
    EXPECT_TRUE(shows("Virgülle ayır."));
    EXPECT_FALSE(button("Son kullanma tarihi var").isChecked());
    EXPECT_EQ(expiryField(), nullptr);
    EXPECT_TRUE(button("Bu kayıt için etkin").isChecked());
    EXPECT_FALSE(button("Özel sekans kullan").isChecked());
    EXPECT_TRUE(shows("Varsayılan: {USERNAME}{TAB}{PASSWORD}{ENTER}"));
    EXPECT_TRUE(shows("Özel alanlar"));
    EXPECT_TRUE(shows("Henüz özel alan yok."));
    EXPECT_TRUE(shows("Notlar"));
    EXPECT_EQ(button("Simge seç").accessibleDescription(), "Anahtar");
}

TEST_F(EntryEditTest, theFormOfAnEntryShowsAllOfIt) {
    auto entry = fullEntry();
    entry.expires = true;
    entry.expiryTime = {1'826'698'500};
    entry.autoTypeSequence = "{PASSWORD}";
    editThis(entry);
    EXPECT_TRUE(shows("Kaydı düzenle"));
    EXPECT_TRUE(shows("GitHub")) << "the subtitle";
    EXPECT_EQ(field("Başlık").text(), "GitHub");
    EXPECT_EQ(field("Kullanıcı adı").text(), "isilkaya");
    EXPECT_EQ(field("Adres").text(), "https://github.com/login");
    EXPECT_EQ(field("Etiketler").text(), "iş, kritik");
    EXPECT_EQ(field("Parola").text(), "kT4}vQ9w");
    EXPECT_EQ(field("Parola").echoMode(), QLineEdit::Password);
    EXPECT_EQ(notes().toPlainText(), "Bir\nİki");
    EXPECT_EQ(button("Simge seç").accessibleDescription(), "Uçbirim");
    ASSERT_NE(expiryField(), nullptr);
    EXPECT_EQ(expiryField()->dateTime().toSecsSinceEpoch(), 1'826'698'500);
    EXPECT_TRUE(button("Özel sekans kullan").isChecked());
    EXPECT_EQ(field("Sekans").text(), "{PASSWORD}");
    ASSERT_EQ(keys().size(), 2);
    EXPECT_EQ(keys()[0]->text(), "Müşteri no");
    EXPECT_EQ(values()[0]->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(keys()[1]->text(), "PIN");
    EXPECT_EQ(values()[1]->text(), "4821");
    EXPECT_EQ(values()[1]->echoMode(), QLineEdit::Password);
}

TEST_F(EntryEditTest, theHeadingFollowsTheTitle) {
    createIn(root());
    type("Başlık", "Bankam");
    EXPECT_TRUE(shows("Bankam"));
    field("Başlık").clear();
    EXPECT_FALSE(shows("Bankam"));
}

TEST_F(EntryEditTest, aTitleOfBlanksCannotBeConfirmed) {
    createIn(root());
    EXPECT_FALSE(button("Oluştur").isEnabled());
    for (const auto* const blanks : {" ", "\t", "  \t ", "\u00a0\u2003"}) {
        type("Başlık", blanks);
        EXPECT_FALSE(button("Oluştur").isEnabled());
        press(Qt::Key_Return);
        EXPECT_NE(state->route(), std::nullopt) << "Return is no way around";
    }
    type("Başlık", " a ");
    EXPECT_TRUE(button("Oluştur").isEnabled());
}

TEST_F(EntryEditTest, aNewEntryHoldsWhatWasTypedAndIsSelected) {
    createIn(social());
    type("Başlık", " \tBankam\t ");
    type("Kullanıcı adı", " ayşe ");
    type("Adres", " https://banka.example ");
    type("Parola", " gizli ");
    type("Etiketler", "iş, kritik");
    typeNotes("Bir\nİki ");
    click("Oluştur");

    ASSERT_EQ(social().entries.size(), 2U);
    const auto& entry = social().entries[1];
    EXPECT_EQ(entry.title, "Bankam");
    EXPECT_EQ(entry.username, " ayşe ") << "taken as it stands";
    EXPECT_EQ(entry.url, "https://banka.example");
    EXPECT_EQ(entry.password, SecureString(" gizli "));
    EXPECT_THAT(entry.tags, ElementsAre("iş", "kritik"));
    EXPECT_EQ(entry.notes, "Bir\nİki ");
    EXPECT_EQ(entry.iconID, 0);
    EXPECT_TRUE(entry.autoTypeEnabled);
    EXPECT_EQ(entry.autoTypeSequence, std::nullopt);
    EXPECT_FALSE(entry.expires);
    EXPECT_EQ(entry.expiryTime, std::nullopt);
    EXPECT_EQ(entry.created, entry.modified);
    EXPECT_NEAR(entry.created.seconds, Timestamp::now().seconds, 60);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(entry.id));
    EXPECT_EQ(state->undoLabel(), "Kayıt Ekle");
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_TRUE(state->isDirty());
    EXPECT_EQ(files.writes, 0) << "saving is another matter";
}

TEST_F(EntryEditTest, anEditIsOneStepThatKeepsTheFormerEntry) {
    editThis(fullEntry());
    type("Başlık", "GitLab");
    click("Kaydet");
    EXPECT_EQ(edited().title, "GitLab");
    EXPECT_EQ(state->undoLabel(), "Kaydı Düzenle");
    ASSERT_EQ(edited().historyItems.size(), 1U);
    EXPECT_EQ(edited().historyItems[0].title, "GitHub");
    state->undo();
    EXPECT_EQ(edited().title, "GitHub");
}

TEST_F(EntryEditTest, whatTheFormDoesNotShowSurvivesAnEdit) {
    const auto before = fullEntry();
    editThis(before);
    click("Kaydet");
    EXPECT_EQ(edited().id, before.id);
    EXPECT_EQ(edited().unknownXML, before.unknownXML);
    ASSERT_EQ(edited().autoTypeWindowAssociations.size(), 1U);
    EXPECT_EQ(edited().autoTypeWindowAssociations[0].window, "GitHub*");
    EXPECT_EQ(edited().created, before.created);
    EXPECT_EQ(edited().accessed, before.accessed);
    EXPECT_EQ(edited().customFields, before.customFields);
    EXPECT_EQ(edited().protectedCustomFields, before.protectedCustomFields);
    EXPECT_EQ(edited().tags, before.tags);
    EXPECT_EQ(edited().iconID, before.iconID);
}

TEST_F(EntryEditTest, anUnchangedFormMakesAPasswordWithAnotherPadAndANewTime) {
    const auto before = fullEntry();
    editThis(before);
    click("Kaydet");
    EXPECT_EQ(edited().password, before.password);
    EXPECT_NE(copyOf(edited().password.pad()), copyOf(before.password.pad()));
    EXPECT_NE(edited().modified, before.modified);
}

TEST_F(EntryEditTest, whatChangedBehindTheFormIsNotTakenBack) {
    const auto before = fullEntry();
    editThis(before);
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.entries.mutableAt(0).unknownXML = {"<Yeni/>"};
        database.root.entries.mutableAt(0).username = "başkası";
    });
    type("Başlık", "GitLab");
    click("Kaydet");
    EXPECT_THAT(edited().unknownXML, ElementsAre("<Yeni/>"));
    EXPECT_EQ(edited().username, "isilkaya") << "the form's own fields are the form's";
}

TEST_F(EntryEditTest, cancellingChangesNothing) {
    for (const bool isByKey : {false, true}) {
        open(Route::editEntry(bank().id));
        type("Başlık", "Yarım");
        type("Parola", "yarım");
        if (isByKey)
            press(Qt::Key_Escape);
        else
            click("Vazgeç");
        EXPECT_EQ(state->route(), std::nullopt);
        EXPECT_EQ(bank().title, "Banka");
        EXPECT_FALSE(state->canUndo());
        EXPECT_FALSE(state->isDirty());
    }
    open(Route::editEntry(bank().id));
    EXPECT_EQ(field("Başlık").text(), "Banka") << "what was typed is gone with the sheet";
}

TEST_F(EntryEditTest, tagsAreSplitAtCommasAlone) {
    const std::vector<std::pair<QString, std::vector<std::string>>> cases{
        {"a, b,,c", {"a", "b", "c"}},
        {"a;b", {"a;b"}},
        {" , \t,", {}},
        {"", {}},
        {"iki sözcük ,x", {"iki sözcük", "x"}},
        {"a,a", {"a", "a"}},
        {"\ta\t,\u00a0b\u00a0", {"a", "b"}},
    };
    for (const auto& [text, tags] : cases) {
        open(Route::editEntry(bank().id));
        type("Etiketler", text);
        click("Kaydet");
        EXPECT_EQ(bank().tags, tags) << qPrintable(text);
    }
}

TEST_F(EntryEditTest, ofFieldsWithOneNameTheLaterValueWinsAndAnEmptyNameDisappears) {
    createIn(root());
    type("Başlık", "Yeni");
    addField(" Alan ", "bir");
    addField("Alan", "iki");
    addField("  ", "adsız");
    click("Oluştur");
    EXPECT_THAT(root().entries[2].customFields, ElementsAre(Pair("Alan", "iki")));
    EXPECT_THAT(root().entries[2].protectedCustomFields, IsEmpty());
}

TEST_F(EntryEditTest, aNameStaysProtectedIfAnyOfItsFieldsWas) {
    createIn(root());
    type("Başlık", "Yeni");
    addField("Alan", "bir");
    click("Düz metin");
    addField("Alan", "iki");
    click("Oluştur");
    EXPECT_THAT(root().entries[2].customFields, ElementsAre(Pair("Alan", "iki")));
    EXPECT_THAT(root().entries[2].protectedCustomFields, ElementsAre("Alan"));
}

TEST_F(EntryEditTest, namesThatAreEqualAsTextsAreOneField) {
    createIn(root());
    type("Başlık", "Yeni");
    addField("ş", "bir");
    addField("s\u0327", "iki");
    click("Oluştur");
    ASSERT_EQ(root().entries[2].customFields.size(), 1U);
    EXPECT_EQ(root().entries[2].customFields.begin()->second, "iki");
}

TEST_F(EntryEditTest, anAddedFieldTakesTheFocusAndARemovedOneLeavesItNearby) {
    createIn(root());
    type("Başlık", "Yeni");
    addField("Bir", "1");
    EXPECT_EQ(keys().size(), 1);
    EXPECT_FALSE(shows("Henüz özel alan yok."));
    click("Alan ekle");
    EXPECT_EQ(QApplication::focusWidget(), keys()[1]);
    keys()[1]->insert("İki");

    QTest::mouseClick(all<QAbstractButton>("Alanı sil")[0], Qt::LeftButton);
    ASSERT_EQ(keys().size(), 1);
    EXPECT_EQ(keys()[0]->text(), "İki");
    EXPECT_EQ(focusName(), "Alanı sil");
    press(Qt::Key_Space);
    EXPECT_EQ(keys().size(), 0);
    EXPECT_EQ(focusName(), "Alan ekle");
    EXPECT_TRUE(shows("Henüz özel alan yok."));
    click("Oluştur");
    EXPECT_THAT(root().entries[2].customFields, IsEmpty());
}

TEST_F(EntryEditTest, theProtectionOfAFieldIsTurnedRoundByKey) {
    createIn(root());
    addField("PIN", "4821");
    EXPECT_EQ(values()[0]->echoMode(), QLineEdit::Normal);
    button("Düz metin").setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(values()[0]->echoMode(), QLineEdit::Password);
    EXPECT_EQ(values()[0]->text(), "4821");
    EXPECT_EQ(focusName(), "Korumalı");
    press(Qt::Key_Space);
    EXPECT_EQ(values()[0]->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(button("Düz metin").toolTip(), "Düz metin");
}

TEST_F(EntryEditTest, switchingTheExpiryOffDropsItsDate) {
    auto entry = fullEntry();
    entry.expires = true;
    entry.expiryTime = {1'826'698'500};
    editThis(entry);
    click("Son kullanma tarihi var");
    EXPECT_EQ(expiryField(), nullptr);
    click("Kaydet");
    EXPECT_FALSE(edited().expires);
    EXPECT_EQ(edited().expiryTime, std::nullopt);
}

TEST_F(EntryEditTest, aNewExpiryIsAYearFromNow) {
    open(Route::editEntry(bank().id));
    click("Son kullanma tarihi var");
    ASSERT_NE(expiryField(), nullptr);
    click("Kaydet");
    EXPECT_TRUE(bank().expires);
    ASSERT_TRUE(bank().expiryTime);
    EXPECT_NEAR(bank().expiryTime->seconds, Timestamp::now().seconds + 31536000, 60);
}

TEST_F(EntryEditTest, anExpiryThatIsNotTouchedKeepsWhatTheFieldDoesNotShow) {
    for (const double seconds : {1'826'698'533.25, -62135596800.0, 253402300800.0}) {
        auto entry = fullEntry();
        entry.expires = true;
        entry.expiryTime = {seconds};
        editThis(entry);
        click("Kaydet");
        EXPECT_EQ(edited().expiryTime->seconds, seconds);
    }
}

TEST_F(EntryEditTest, aDateOfTheCalendarIsTheExpiryAndTheTimeOfDayStays) {
    auto entry = fullEntry();
    entry.expires = true;
    entry.expiryTime = {double(QDateTime(QDate(2027, 11, 20), QTime(8, 15)).toSecsSinceEpoch())};
    editThis(entry);
    click("Takvimi aç");
    EXPECT_EQ(focusName(), "20 Kasım 2027 Cumartesi");
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    EXPECT_EQ(focusName(), "5 Aralık 2027 Pazar");
    EXPECT_TRUE(shows("Aralık 2027"));
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Aralık 2027"));
    EXPECT_EQ(focusName(), "Takvimi aç");
    EXPECT_EQ(expiryField()->text(), "05.12.2027 08:15");
    click("Kaydet");
    EXPECT_EQ(edited().expiryTime->seconds, double(QDateTime(QDate(2027, 12, 5), QTime(8, 15)).toSecsSinceEpoch()));
}

TEST_F(EntryEditTest, anExpiryIsTypedPartByPartAndTabGoesOn) {
    auto entry = fullEntry();
    entry.expires = true;
    entry.expiryTime = {double(QDateTime(QDate(2027, 11, 20), QTime(8, 15, 42)).toSecsSinceEpoch())};
    editThis(entry);
    button("Son kullanma tarihi var").setFocus();
    press(Qt::Key_Tab);
    EXPECT_EQ(focusName(), "Son kullanma tarihi");
    QTest::keyClicks(QApplication::focusWidget(), "05");
    press(Qt::Key_Up);
    EXPECT_EQ(expiryField()->text(), "05.12.2027 08:15");
    press(Qt::Key_Tab);
    EXPECT_EQ(focusName(), "Takvimi aç");
    press(Qt::Key_Backtab);
    press(Qt::Key_Return);
    EXPECT_EQ(edited().expiryTime->seconds, double(QDateTime(QDate(2027, 12, 5), QTime(8, 15, 42)).toSecsSinceEpoch()));
}

TEST_F(EntryEditTest, theWheelScrollsTheFormAndChangesNoDate) {
    auto entry = fullEntry();
    entry.expires = true;
    editThis(entry);
    const auto before = expiryField()->text();
    QWheelEvent turn(QPointF(5, 5), expiryField()->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    expiryField()->setFocus();
    QApplication::sendEvent(expiryField(), &turn);
    EXPECT_EQ(expiryField()->text(), before);
    EXPECT_FALSE(turn.isAccepted());
}

TEST_F(EntryEditTest, escapeClosesTheCalendarAlone) {
    open(Route::editEntry(bank().id));
    click("Son kullanma tarihi var");
    click("Takvimi aç");
    ASSERT_TRUE(has("Önceki ay"));
    press(Qt::Key_Escape);
    EXPECT_FALSE(has("Önceki ay"));
    EXPECT_NE(state->route(), std::nullopt);
}

TEST_F(EntryEditTest, theSequenceIsKeptWhileAutoTypeIsOff) {
    auto entry = fullEntry();
    entry.autoTypeSequence = "{PASSWORD}";
    editThis(entry);
    click("Bu kayıt için etkin");
    EXPECT_FALSE(has("Özel sekans kullan"));
    EXPECT_FALSE(has("Sekans"));
    click("Kaydet");
    EXPECT_FALSE(edited().autoTypeEnabled);
    EXPECT_EQ(edited().autoTypeSequence, "{PASSWORD}");
}

TEST_F(EntryEditTest, aCustomSequenceStartsFromTheUsersOwn) {
    preferences->setDefaultAutoTypeSequence("{PASSWORD}{TAB}");
    open(Route::editEntry(bank().id));
    EXPECT_TRUE(shows("Varsayılan: {PASSWORD}{TAB}"));
    click("Özel sekans kullan");
    EXPECT_FALSE(shows("Varsayılan: {PASSWORD}{TAB}"));
    EXPECT_EQ(field("Sekans").text(), "{PASSWORD}{TAB}");
    EXPECT_TRUE(
        shows("{USERNAME} {PASSWORD} {TAB} {ENTER} {DELAY 200} {CLEARFIELD} {URL} {TITLE} {NOTES} {S:AlanAdı}"));
    click("Kaydet");
    EXPECT_EQ(bank().autoTypeSequence, "{PASSWORD}{TAB}");

    open(Route::editEntry(bank().id));
    click("Özel sekans kullan");
    click("Kaydet");
    EXPECT_EQ(bank().autoTypeSequence, std::nullopt);
}

TEST_F(EntryEditTest, aNewEntrysCustomSequenceStartsFromTheBuiltInOne) {
    preferences->setDefaultAutoTypeSequence("{PASSWORD}{TAB}");
    createIn(root());
    type("Başlık", "Yeni");
    click("Özel sekans kullan");
    click("Oluştur");
    EXPECT_EQ(root().entries[2].autoTypeSequence, "{USERNAME}{TAB}{PASSWORD}{ENTER}");
}

TEST_F(EntryEditTest, aGeneratedPasswordFollowsThePreferencesAndShows) {
    preferences->setGeneratorOptions({.length = 9, .upper = false, .lower = false, .digits = true, .symbols = false});
    open(Route::editEntry(bank().id));
    click("Parola üret");
    const auto first = field("Parola").text();
    EXPECT_TRUE(QRegularExpression("^[0-9]{9}$").match(first).hasMatch());
    EXPECT_EQ(field("Parola").echoMode(), QLineEdit::Normal);
    EXPECT_TRUE(shows("9 karakter"));
    click("Parola üret");
    EXPECT_NE(field("Parola").text(), first);
    EXPECT_EQ(bank().password, SecureString()) << "nothing is changed before the form is confirmed";
    const auto last = field("Parola").text().toStdString();
    click("Kaydet");
    EXPECT_EQ(bank().password, SecureString(last));
}

TEST_F(EntryEditTest, aPasswordThatIsCopiedFromTheFormIsWipedLater) {
    createIn(root());
    type("Parola", "gizli");
    click("Göster");
    password().selectAll();
    QTest::keyClick(&password(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(pasteboard.text(), "gizli");
    EXPECT_TRUE(clipboard.hasPendingSecret());
    clock.advance(std::chrono::seconds(12));
    EXPECT_EQ(pasteboard.text(), "");
}

TEST_F(EntryEditTest, theStrengthFollowsThePassword) {
    createIn(root());
    EXPECT_TRUE(shows("Çok zayıf"));
    EXPECT_TRUE(shows("0 bit entropi"));
    EXPECT_TRUE(shows("0 karakter"));
    type("Parola", "kT4}vQ9w:mZ2pR_h");
    EXPECT_TRUE(shows("Çok güçlü"));
    EXPECT_TRUE(shows("16 karakter"));
}

TEST_F(EntryEditTest, theGeneratorTakesThePlaceOfTheForm) {
    open(Route::editEntry(bank().id));
    type("Başlık", "Yarım");
    click("Üreteci aç…");
    EXPECT_EQ(state->route(), Route::generator(std::nullopt));
    EXPECT_FALSE(has("Kullanıcı adı"));
    EXPECT_EQ(bank().title, "Banka");
}

TEST_F(EntryEditTest, textsComeBackToTheLetter) {
    auto entry = fullEntry();
    entry.username = std::string(40'000, 'u');
    entry.notes = "a\u00a0b\r\nc\rd\u2028e\u2029f\tg ";
    entry.customFields = {{"Çok satırlı", "bir\niki\r\nüç\u00a0"}};
    entry.protectedCustomFields = {};
    entry.autoTypeSequence = "{TITLE}\u00a0\n";
    editThis(entry);
    click("Kaydet");
    EXPECT_EQ(edited().username.size(), 40'000U);
    EXPECT_EQ(edited().notes, entry.notes);
    EXPECT_EQ(edited().customFields, entry.customFields);
    EXPECT_EQ(edited().customFields.begin()->second, entry.customFields.begin()->second);
    EXPECT_EQ(edited().autoTypeSequence, entry.autoTypeSequence);
}

TEST_F(EntryEditTest, notesThatWereTypedInKeepTheirBlanksAndHaveLineFeeds) {
    auto entry = fullEntry();
    entry.notes = "a\u00a0b";
    editThis(entry);
    notes().setFocus();
    notes().moveCursor(QTextCursor::End);
    press(Qt::Key_Return);
    press(Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClicks(&notes(), "c");
    EXPECT_NE(state->route(), std::nullopt) << "Return is a line here";
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(state->route(), std::nullopt) << "and with Ctrl it confirms";
    EXPECT_EQ(edited().notes, "a\u00a0b\n\nc");
}

TEST_F(EntryEditTest, tabWalksTheFormAsItIsReadAndStaysInIt) {
    editThis(fullEntry());
    const QStringList order{"Başlık",
                            "Kullanıcı adı",
                            "Adres",
                            "Etiketler",
                            "Son kullanma tarihi var",
                            "Parola",
                            "Göster",
                            "Parola üret",
                            "Üreteci aç…",
                            "Bu kayıt için etkin",
                            "Özel sekans kullan",
                            "Alan ekle",
                            "Alan adı",
                            "Değer",
                            "Düz metin",
                            "Alanı sil",
                            "Alan adı",
                            "Değer",
                            "Göster",
                            "Korumalı",
                            "Alanı sil",
                            "Notlar",
                            "Vazgeç",
                            "Kaydet",
                            "Simge seç"};
    QStringList walked;
    for (qsizetype i = 0; i < order.size(); ++i) {
        walked.append(focusName());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(walked.join(", "), order.join(", "));
    EXPECT_EQ(focusName(), "Başlık");
    press(Qt::Key_Backtab);
    press(Qt::Key_Backtab);
    EXPECT_EQ(focusName(), "Kaydet");
}

TEST_F(EntryEditTest, aScreenReaderDistinguishesTheRowsOfFields) {
    createIn(root());
    addField("PIN", "4821");
    click("Alan ekle");
    QStringList rows;
    for (auto* const key : keys()) {
        auto* const row = QAccessible::queryAccessibleInterface(key)->parent();
        EXPECT_EQ(row->role(), QAccessible::Grouping);
        rows += row->text(QAccessible::Name);
    }
    EXPECT_EQ(rows.join(", "), "PIN, Adsız alan");
}

TEST_F(EntryEditTest, aFieldAddedLastIsReachedBeforeTheNotes) {
    createIn(root());
    click("Alan ekle");
    QStringList walked;
    for (int i = 0; i < 5; ++i) {
        walked.append(focusName());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(walked.join(", "), "Alan adı, Değer, Düz metin, Alanı sil, Notlar");
}

TEST_F(EntryEditTest, theFieldWithTheFocusIsScrolledIntoView) {
    window.resize(720, 460);
    editThis(fullEntry());
    for (int i = 0; i < 25; ++i) {
        const auto* const focus = QApplication::focusWidget();
        EXPECT_FALSE(focus->visibleRegion().isEmpty()) << qPrintable(focusName());
        press(Qt::Key_Tab);
    }
}

}  // namespace
