// SPDX-License-Identifier: MIT
#include "app/ui/components/LongText.h"

#include "app/ui/components/TextArea.h"
#include "tests/app/ui/detail/EntryDetailFixture.h"
#include "tests/app/ui/editor/EntryEditFixture.h"

#include <QClipboard>
#include <QPlainTextEdit>
#include <QTextEdit>

// How long a layout takes depends on the machine, and how much is laid out does not: so letters are counted.

namespace {

using namespace WindowProbe;

constexpr std::size_t MiB = std::size_t{1} << 20;

std::string repeatedTo(std::size_t size, std::string_view piece) {
    std::string text;
    text.reserve(size + piece.size());
    while (text.size() < size)
        text += piece;
    return text;
}

const std::string unbroken = repeatedTo(MiB, "https://örnek.example/");
const std::string lines = repeatedTo(2 * MiB, "Bir satır not, iki üç sözcük.\n");

/// An entry all of whose texts are long.
KdbxEntry longEntry(const std::string& text) {
    auto entry = entryTitled("Uzun");
    entry.title = text;
    entry.username = text;
    entry.password = SecureString(text);
    entry.url = text;
    entry.notes = text;
    entry.tags = {text, "kısa"};
    entry.customFields = {{"Açık", text}, {"Gizli", text}, {text, "ad"}};
    entry.protectedCustomFields = {"Gizli"};
    entry.autoTypeSequence = text;
    entry.autoTypeWindowAssociations = {{.window = text, .sequence = text}};
    auto version = entry;
    entry.historyItems.append(version);
    return entry;
}

TEST(LongTextTest, thePagesOfATextAreTheText) {
    for (const auto& text : {std::string(), std::string("kısa"), unbroken, lines, std::string(100'000, '\n'),
                             std::string(100'000, '\x80'), repeatedTo(100'000, "\xF0\x9F\x94\x91")}) {
        const auto pages = LongText::pagesOf(text);
        ASSERT_EQ(pages.front(), 0U);
        for (std::size_t page = 0; page < pages.size(); ++page) {
            const auto end = page + 1 < pages.size() ? pages[page + 1] : text.size();
            ASSERT_LE(end - pages[page], LongText::pageBytes);
            ASSERT_TRUE(page == 0 || pages[page] > pages[page - 1]);
            if (text.starts_with("\xF0")) {
                ASSERT_EQ(pages[page] % 4, 0U) << "a character in two";
            }
        }
    }
    EXPECT_EQ(lines[LongText::pagesOf(lines)[1] - 1], '\n') << "a page ends with a line";
}

TEST(LongTextTest, aPageEndsBetweenTwoCharacters) {
    for (const std::string_view character : {"e\u0301", "👩‍💻", "🇹🇷", "한", "ش\u0651\u064e"}) {
        const auto text = "a" + repeatedTo(100'000, character);
        for (const auto page : LongText::pagesOf(text))
            ASSERT_TRUE(page == 0 || (page - 1) % character.size() == 0) << character;
    }
    const auto broken = repeatedTo(100'000, std::string(7, 'x') + "\r\n");
    for (const auto page : LongText::pagesOf(broken))
        ASSERT_EQ(page % 9, 0U) << "a line break in two";
}

TEST(LongTextTest, aCharacterOfAMegabyteIsCutBetweenItsMarks) {
    const auto text = "a" + repeatedTo(MiB, "\u0301");
    const auto pages = LongText::pagesOf(text);
    EXPECT_GT(pages.size(), 100U);
    for (const auto page : pages)
        ASSERT_TRUE(page == 0 || page % 2 == 1);
    EXPECT_LE(LongText::beginning(text).size(), LongText::mostLetters + 1);
}

TEST(LongTextTest, aBeginningCutsNoCharacterInTwo) {
    const auto keys = QString::fromUtf8("🔑").repeated(2000);
    EXPECT_EQ(LongText::beginning(keys, 3), QString::fromUtf8("🔑…"));
    EXPECT_EQ(LongText::beginning(keys, 4), QString::fromUtf8("🔑🔑…"));
    EXPECT_EQ(LongText::beginning(QStringLiteral("kısa"), 4), "kısa");
    EXPECT_EQ(LongText::beginning(QString::fromUtf8("ae\u0301e\u0301"), 2), "a…");
    EXPECT_EQ(LongText::beginning(std::string_view("ae\u0301e\u0301"), 4), QString::fromUtf8("ae\u0301…"));
    EXPECT_EQ(LongText::beginning(std::string_view("kısa")), QString::fromUtf8("kısa"));
}

class LongDetailTest : public EntryDetailFixture {
protected:
    /// Everything that shows, is spoken or waits in a tooltip.
    qsizetype letters() const {
        qsizetype letters = 0;
        for (auto* const widget : pane.findChildren<QWidget*>()) {
            letters +=
                widget->toolTip().size() + widget->accessibleName().size() + widget->accessibleDescription().size();
            if (const auto* const label = qobject_cast<QLabel*>(widget))
                letters += label->text().size();
            if (const auto* const text = qobject_cast<QTextEdit*>(widget))
                letters += text->document()->characterCount();
            if (auto* const secret = qobject_cast<SecretText*>(widget))
                letters += heard(secret).size();
        }
        return letters;
    }
    QTextEdit& notes() const { return *pane.findChild<QTextEdit*>("notes"); }
};

TEST_F(LongDetailTest, whatIsLaidOutHasALimitWhateverTheLengthOfTheTexts) {
    constexpr qsizetype mostLetters = 120'000;  // a page of each field, where each is of megabytes
    for (const auto& text : {unbroken, lines}) {
        const auto id = bank().id;
        showBank([&](KdbxEntry& entry) {
            entry = longEntry(text);
            entry.id = id;
        });
        EXPECT_GT(letters(), 10'000) << "something shows";
        EXPECT_LT(letters(), mostLetters);
    }
    press("Göster", "Parola");
    EXPECT_LT(letters(), mostLetters);
}

TEST_F(LongDetailTest, everyPageOfTheNotesCanBeReached) {
    const auto text = repeatedTo(100'000, "Bir satır not, iki üç sözcük.\n");
    showBank([&](KdbxEntry& entry) { entry.notes = text; });
    EXPECT_TRUE(shows(pane, "Sayfa 1 / 13"));
    auto* const next = pane.findChild<QAbstractButton*>("notes.next");
    std::string read;
    for (;;) {
        read += notes().toPlainText().toStdString();
        if (!next->isEnabled())
            break;
        QTest::mouseClick(next, Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(read, text);
    EXPECT_TRUE(shows(pane, "Sayfa 13 / 13"));

    QTest::mouseClick(pane.findChild<QAbstractButton*>("notes.first"), Qt::LeftButton);
    EXPECT_TRUE(shows(pane, "Sayfa 1 / 13"));
    QTest::mouseClick(pane.findChild<QAbstractButton*>("notes.last"), Qt::LeftButton);
    EXPECT_TRUE(shows(pane, "Sayfa 13 / 13"));
}

TEST_F(LongDetailTest, theKeyboardTurnsPagesAndTheFocusNeverStaysOnAButtonThatIsOff) {
    showBank([&](KdbxEntry& entry) { entry.url = std::string(3 * LongText::pageBytes, 'x'); });
    auto* const last = pane.findChild<QAbstractButton*>("url.last");
    pane.activateWindow();
    last->setFocus();
    QTest::keyClick(last, Qt::Key_Space);
    EXPECT_FALSE(last->isEnabled());
    EXPECT_EQ(pane.focusWidget()->objectName(), "url.previous");
}

TEST_F(LongDetailTest, theNotesAreCopiedWhole) {
    showBank([&](KdbxEntry& entry) { entry.notes = lines; });
    QTest::mouseClick(pane.findChild<QAbstractButton*>("notes.copy"), Qt::LeftButton);
    EXPECT_EQ(pasteboard.text(), lines);
}

TEST_F(LongDetailTest, allThatIsSelectedIsCopiedWholeAndAPartAsItIs) {
    showBank([&](KdbxEntry& entry) { entry.notes = lines; });
    const auto& clipboard = *QApplication::clipboard();
    notes().setFocus();
    QTest::keyClick(&notes(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&notes(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(clipboard.text().toStdString() == lines);

    QTest::keyClick(&notes(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&notes(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&notes(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), "B");
}

TEST_F(LongDetailTest, aSecretOfMegabytesIsCopiedWholeWhileItsBeginningShows) {
    showBank([&](KdbxEntry& entry) { entry.password = SecureString(unbroken); });
    press("Göster", "Parola");
    EXPECT_TRUE(secret("Parola").endsWith(QChar(0x2026)));
    EXPECT_LT(secret("Parola").size(), 10'000);
    QTest::mouseClick(pane.findChild<QAbstractButton*>("password.copy"), Qt::LeftButton);
    EXPECT_TRUE(pasteboard.text() == unbroken);
}

TEST_F(LongDetailTest, shortNotesHaveNeitherPagesNorAButton) {
    showBank([&](KdbxEntry& entry) { entry.notes = "Bir\nİki"; });
    EXPECT_EQ(notes().toPlainText(), "Bir\nİki");
    EXPECT_EQ(pane.findChild<QAbstractButton*>("notes.next"), nullptr);
    EXPECT_EQ(pane.findChild<QAbstractButton*>("notes.copy"), nullptr);
}

class LongEditTest : public EntryEditFixture {};

TEST_F(LongEditTest, whatIsTooLongToBeEditedStaysToTheByte) {
    const auto text = repeatedTo(4 * MiB, "çok uzun bir metin\t");
    auto entry = longEntry(text.substr(0, text.size() - 1));  // no white space at the end: a title is trimmed
    entry.autoTypeWindowAssociations.clear();
    entry.historyItems.clear();
    editThis(entry);
    for (auto* const field : window.findChildren<QLineEdit*>())
        EXPECT_LT(field->text().size(), 10'000) << qPrintable(field->accessibleName());
    EXPECT_LT(notes().toPlainText().size(), 10'000);

    button("Bu kayıt için etkin").click();
    click("Kaydet");

    EXPECT_FALSE(edited().autoTypeEnabled);
    EXPECT_TRUE(edited().title == entry.title);
    EXPECT_TRUE(edited().username == entry.username);
    EXPECT_TRUE(edited().password == entry.password);
    EXPECT_TRUE(edited().url == entry.url);
    EXPECT_TRUE(edited().notes == entry.notes);
    EXPECT_TRUE(edited().tags == entry.tags);
    EXPECT_TRUE(edited().customFields == entry.customFields);
    EXPECT_TRUE(edited().autoTypeSequence == entry.autoTypeSequence);
}

TEST_F(LongEditTest, whatIsTooLongToBeEditedCanBeReplaced) {
    auto entry = fullEntry();
    entry.url = unbroken;
    entry.notes = unbroken;
    editThis(entry);
    auto& address = field("Adres");
    EXPECT_EQ(address.toolTip(),
              "Bu metin burada değiştirilemeyecek kadar uzun; olduğu gibi kalır. Yerine başka bir şey "
              "yazmak için önce tümünü seçip sil.");
    QTest::keyClicks(&address, "x");
    QTest::keyClick(&address, Qt::Key_Backspace);
    EXPECT_TRUE(address.isReadOnly()) << "one letter is not deleted from what cannot be edited";
    address.selectAll();
    QTest::keyClick(&address, Qt::Key_Delete);
    QTest::keyClicks(&address, "https://kisa.example");
    auto& area = notes();
    area.selectAll();
    QTest::keyClick(&area, Qt::Key_Backspace);
    QTest::keyClicks(&area, "yeni");
    click("Kaydet");

    EXPECT_EQ(edited().url, "https://kisa.example");
    EXPECT_EQ(edited().notes, "yeni");
}

TEST_F(LongEditTest, whatIsTooLongToBeEditedIsCopiedWhole) {
    auto entry = fullEntry();
    entry.url = unbroken;
    entry.notes = lines + unbroken;
    entry.password = SecureString(unbroken);
    editThis(entry);
    const auto& clipboard = *QApplication::clipboard();
    const auto copied = [&](QWidget& field) {
        field.setFocus();
        QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
        return clipboard.text().toStdString();
    };
    EXPECT_TRUE(copied(field("Adres")) == entry.url);
    EXPECT_TRUE(copied(notes()) == entry.notes);
    EXPECT_TRUE(copied(password()) == entry.notes) << "what is masked is not copied";
    EXPECT_EQ(pasteboard.text(), "");
    password().setRevealed(true);
    password().selectAll();
    password().copy();
    EXPECT_TRUE(pasteboard.text() == unbroken);
}

TEST_F(LongEditTest, noWayOfChangingAPartOfWhatIsKeptTruncatesIt) {
    auto entry = fullEntry();
    entry.url = unbroken;
    entry.password = SecureString(unbroken);
    entry.notes = unbroken;
    editThis(entry);
    password().setRevealed(true);
    for (QLineEdit* const line : {&field("Adres"), static_cast<QLineEdit*>(&password())}) {
        line->setFocus();
        line->setCursorPosition(3);
        QTest::keyClick(line, Qt::Key_K, Qt::ControlModifier);
        QTest::keyClick(line, Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
        line->insert("x");  // as an assistive program may
        line->del();
    }
    notes().setFocus();
    QTest::keyClick(&notes(), Qt::Key_V, Qt::ControlModifier);
    notes().insertPlainText("x");
    click("Kaydet");

    EXPECT_TRUE(edited().url == entry.url);
    EXPECT_TRUE(edited().password == entry.password);
    EXPECT_TRUE(edited().notes == entry.notes);
}

TEST_F(LongEditTest, whatIsTooLongToBeEditedCanBeDeleted) {
    auto entry = fullEntry();
    entry.url = unbroken;
    entry.password = SecureString(unbroken);
    entry.notes = unbroken;
    entry.tags = {unbroken};
    editThis(entry);
    for (QWidget* const each :
         std::initializer_list<QWidget*>{&field("Adres"), &password(), &field("Etiketler"), &notes()}) {
        each->setFocus();
        QTest::keyClick(each, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(each, Qt::Key_Backspace);
    }
    click("Kaydet");

    EXPECT_EQ(edited().url, "");
    EXPECT_TRUE(edited().password.isEmpty());
    EXPECT_EQ(edited().notes, "");
    EXPECT_TRUE(edited().tags.empty());
}

TEST_F(LongEditTest, whatIsPastedMayHaveAnyLength) {
    editThis(fullEntry());
    QApplication::clipboard()->setText(QString::fromStdString(unbroken));
    auto& address = field("Adres");
    address.setCursorPosition(5);
    QTest::keyClick(&address, Qt::Key_V, Qt::ControlModifier);
    EXPECT_LT(address.text().size(), 10'000);
    notes().moveCursor(QTextCursor::End);
    QTest::keyClick(&notes(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_LT(notes().toPlainText().size(), 10'000);
    const auto before = fullEntry();
    click("Kaydet");

    EXPECT_TRUE(edited().url == before.url.substr(0, 5) + unbroken + before.url.substr(5));
    EXPECT_TRUE(edited().notes == before.notes + unbroken);
}

TEST_F(LongEditTest, aGroupWithALongNameStaysToTheByteToo) {
    auto group = root().groups[0];
    group.name = unbroken;
    group.notes = lines + unbroken;
    group.defaultAutoTypeSequence = unbroken;
    state->edit("Adım", [&](KdbxDatabase& database) { database.root.groups.mutableAt(0) = group; });
    open(AppState::Route::editGroup(group.id));
    EXPECT_LT(field("Grup adı").text().size(), 10'000);
    click("Kaydet");

    EXPECT_TRUE(root().groups[0].name == group.name);
    EXPECT_TRUE(root().groups[0].notes == group.notes);
    EXPECT_TRUE(root().groups[0].defaultAutoTypeSequence == group.defaultAutoTypeSequence);
}

TEST_F(LongEditTest, aLongTitleOfBlanksIsNoTitle) {
    for (const auto& [title, isTitle] : {std::pair(std::string(MiB, ' '), false), std::pair(unbroken, true),
                                         std::pair(std::string(MiB, ' ') + "a", true)}) {
        auto entry = root().entries.empty() ? entryTitled("Kısa") : edited();
        entry.title = title;
        editThis(entry);
        EXPECT_EQ(button("Kaydet").isEnabled(), isTitle);
        state->setRoute(std::nullopt);
    }
}

TEST_F(LongEditTest, tagsThatWereNotTouchedKeepTheirCommas) {
    auto entry = fullEntry();
    entry.tags = {"iş, ev", "kritik"};
    editThis(entry);
    click("Kaydet");
    EXPECT_EQ(edited().tags, entry.tags);
}

TEST_F(LongEditTest, aTextThatAFieldCanTakeIsEditedInIt) {
    auto entry = fullEntry();
    entry.url = std::string(15'000, 'u');
    entry.notes = lines;
    editThis(entry);
    EXPECT_EQ(field("Adres").text().size(), 15'000);
    EXPECT_FALSE(field("Adres").isReadOnly());
    EXPECT_FALSE(notes().isReadOnly());
    EXPECT_EQ(notes().toPlainText().toStdString(), lines);
}

}  // namespace
