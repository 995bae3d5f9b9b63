// SPDX-License-Identifier: MIT
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Theme.h"
#include "tests/app/ui/detail/EntryDetailFixture.h"

#include <gmock/gmock.h>

#include <QApplication>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

class EntryDetailPlaceTest : public EntryDetailFixture {};

// What there is instead of one entry.

TEST_F(EntryDetailPlaceTest, withoutASelectionItSaysWhereToChoose) {
    EXPECT_THAT(labels(), ElementsAre("Kayıt seçilmedi", "Ayrıntıları görmek için listeden bir kayıt seç."));
}

TEST_F(EntryDetailPlaceTest, aSelectedEntryThatTheVaultDoesNotHaveIsMissed) {
    state->setSelectedEntryIDs({UUID::random()});
    EXPECT_THAT(labels(), ElementsAre("Kayıt bulunamadı",
                                      "Seçili kayıt veritabanı ağacında yok. Kasayı kapatıp yeniden açmayı dene."));
}

TEST_F(EntryDetailPlaceTest, severalSelectedEntriesShowTheirNumber) {
    state->setSelectedEntryIDs({bank().id, mail().id});
    EXPECT_THAT(labels(), ElementsAre("2 kayıt seçildi",
                                      "Toplu işlemler için aşağıdaki düğmeleri ya da sağ tık menüsünü kullan."));
    state->setSelectedEntryIDs({bank().id, mail().id, forum().id});
    EXPECT_EQ(labels().front(), "3 kayıt seçildi");
}

TEST_F(EntryDetailPlaceTest, severalSelectedEntriesAreDuplicated) {
    state->setSelectedEntryIDs({bank().id, mail().id});
    click(pane, "Çoğalt");
    EXPECT_EQ(root().entries.size(), 4U);
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U);
    EXPECT_FALSE(state->selectedEntryIDs().contains(bank().id));
    click(pane, "Çoğalt");
    EXPECT_EQ(root().entries.size(), 6U) << "the copies are selected now, and the button is still there";
}

TEST_F(EntryDetailPlaceTest, severalSelectedEntriesAreDeletedWithoutAQuestion) {
    state->setSelectedEntryIDs({bank().id, mail().id});
    click(pane, "Sil");
    EXPECT_TRUE(root().entries.empty());
    EXPECT_TRUE(shows(pane, "Kayıt seçilmedi"));
}

TEST_F(EntryDetailPlaceTest, theEntryStaysShownForAsLongAsItIsSelectedWhateverIsSearched) {
    showBank([](KdbxEntry&) {});
    state->setSearchText("forum");
    EXPECT_EQ(labels().front(), "Banka");
}

// Where it stands and how it is reached.

TEST_F(EntryDetailPlaceTest, everythingFitsInTheNarrowestColumnWhateverTheTexts) {
    pane.resize(260, 620);
    const std::string wide(300, 'W');
    const std::string emoji = "👩‍👩‍👧‍👦 قائمة 日本語 " + wide;
    showBank([&](KdbxEntry& entry) {
        entry.title = emoji;
        entry.username = entry.url = wide;
        entry.password = SecureString(wide);
        entry.notes = emoji;
        entry.tags = {wide, "iş", emoji};
        entry.customFields = {{wide, emoji}, {"Kod", wide}};
        entry.protectedCustomFields = {"Kod"};
        entry.autoTypeEnabled = false;
        entry.autoTypeSequence = wide;
        entry.autoTypeWindowAssociations = {{wide, emoji}};
        entry.historyItems = {entryTitled(wide)};
        entry.expires = true;
        entry.expiryTime = Timestamp{0};
    });
    auto* const page = pane.findChild<QScrollArea*>()->widget();
    press("Göster", "Parola");
    press("Göster", "Kod");
    for (auto* const widget : shown<QWidget>()) {
        if (widget == page || !page->isAncestorOf(widget) || widget->parentWidget()->inherits("QAbstractScrollArea"))
            continue;
        const QRect place(widget->mapTo(page, QPoint()), widget->size());
        EXPECT_TRUE(page->rect().contains(place)) << widget->metaObject()->className();
        EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << widget->metaObject()->className();
    }
    for (auto* const text : shown<Paragraph>())
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << qPrintable(text->text().left(20));
    for (auto* const text : shown<SecretText>())
        EXPECT_GE(text->height(), text->heightForWidth(text->width()));
    EXPECT_FALSE(pane.findChild<QScrollArea*>()->horizontalScrollBar()->isVisible());
}

TEST_F(EntryDetailPlaceTest, aRevealedSecretHasItsLinesAtOnce) {
    showBank([](KdbxEntry& entry) { entry.password = SecureString(std::string(300, 'x')); });
    button("Göster", "Parola")->click();
    auto* const secret = pane.findChild<SecretText*>();
    EXPECT_GE(secret->height(), secret->heightForWidth(secret->width())) << "with no turn of the event loop between";
    EXPECT_TRUE(secret->parentWidget()->rect().contains(secret->geometry()));
}

TEST_F(EntryDetailPlaceTest, aTitleOfMoreThanThreeLinesIsElidedAndHasItAllAsItsTooltip) {
    const std::string title(300, 'W');
    showBank([&](KdbxEntry& entry) { entry.title = title; });
    auto* const label = find<Paragraph>(pane, QString::fromStdString(title));
    ASSERT_NE(label, nullptr);
    pane.grab();
    EXPECT_EQ(label->toolTip().toStdString(), title);
    showBank([&](KdbxEntry& entry) { entry.title = "Kısa"; });
    pane.grab();
    EXPECT_EQ(find<Paragraph>(pane, "Kısa")->toolTip(), "");
}

TEST_F(EntryDetailPlaceTest, theCardsStandTwentyInFromBothEdgesWithAndWithoutAScrollBar) {
    for (const auto* notes : {"kısa", "\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n\n"}) {
        pane.resize(468, 900);
        showBank([&](KdbxEntry& entry) { entry.notes = notes; });
        auto* const card = shown<Card>().front();
        EXPECT_EQ(card->mapTo(&pane, QPoint()).x(), 20);
        EXPECT_EQ(card->mapTo(&pane, QPoint(card->width(), 0)).x(), 448) << scrollBar().maximum();
    }
    EXPECT_TRUE(scrollBar().isVisible());
}

TEST_F(EntryDetailPlaceTest, aWideColumnKeepsItsRowsShort) {
    pane.resize(2960, 1900);
    showBank([](KdbxEntry&) {});
    EXPECT_EQ(shown<Card>().front()->width(), 720);
    EXPECT_NEAR(shown<Card>().front()->mapTo(&pane, QPoint(360, 0)).x(), pane.width() / 2, 1) << "in the middle";
}

TEST_F(EntryDetailPlaceTest, aLineBetweenTwoRowsReachesTheEdgesOfItsCard) {
    showBank([](KdbxEntry&) {});
    auto* const card = shown<Card>().front();
    const auto picture = card->grab().toImage();
    const int middle = picture.height() / 2;
    int lines = 0;
    for (int y = middle - 12; y < middle + 12; ++y)
        if (picture.pixelColor(picture.width() / 2, y) == Palette::line) {
            ++lines;
            EXPECT_EQ(picture.pixelColor(1, y), Palette::line);
            EXPECT_EQ(picture.pixelColor(picture.width() - 2, y), Palette::line);
        }
    EXPECT_EQ(lines, 1);
}

TEST_F(EntryDetailPlaceTest, theTabKeyGoesThroughItFromTopToBottom) {
    showBank([](KdbxEntry& entry) {
        entry.username = "ışıl";
        entry.password = SecureString("gizli");
        entry.url = "banka.example";
        entry.customFields = {{"Kod", "1234"}};
        entry.protectedCustomFields = {"Kod"};
        entry.notes = "Şubede.";
    });
    showBank([](KdbxEntry& entry) { entry.username = "ayşe"; });  // made anew, and still in its order
    std::vector<std::string> stops;
    auto* stop = WindowProbe::button(pane, "Düzenle (⌘E)");
    stop->setFocus();
    for (int i = 0; i < 12; ++i) {
        auto* const focused = QApplication::focusWidget();
        stops.push_back((heard(focused) + '|' + heard(focused, QAccessible::Description)).toStdString());
        QTest::keyClick(focused, Qt::Key_Tab);
    }
    EXPECT_THAT(stops, ElementsAre("Düzenle (Ctrl+E)|Düzenle (Ctrl+E)", "Kullanıcı|Kullanıcı adını kopyala",
                                   "Parola|Parolayı kopyala", "Otomatik yaz|", "Kopyala|Kullanıcı adı", "Göster|Parola",
                                   "Kopyala|Parola", "Adresi tarayıcıda aç|Adres", "Kopyala|Adres", "Göster|Kod",
                                   "Kopyala|Kod", "Notlar|"));
}

TEST_F(EntryDetailPlaceTest, theSpaceKeyPressesAndThePageKeyScrolls) {
    showBank([](KdbxEntry& entry) {
        entry.password = SecureString("gizli");
        entry.notes = std::string(3000, 'z');
    });
    auto* const eye = button("Göster", "Parola");
    eye->setFocus();
    QTest::keyClick(eye, Qt::Key_Space);
    EXPECT_EQ(secret("Parola"), "gizli");
    QTest::keyClick(eye, Qt::Key_PageDown);
    EXPECT_GT(scrollBar().value(), 0);
}

}  // namespace
