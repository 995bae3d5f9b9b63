// SPDX-License-Identifier: MIT
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QListView>
#include <QMenuBar>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

class MainViewTest : public WindowTest {
protected:
    MainWindow window{environment};

    MainViewTest() {
        window.show();
        unlock();
        QCoreApplication::processEvents();
    }

    QListView& list(const QString& name) { return *find<QListView>(window, name); }
    void choose(const QString& listName, int row) {
        auto& view = list(listName);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(row, 0)).center());
    }
    std::vector<std::string> rows(const QString& name) {
        std::vector<std::string> rows;
        auto* const view = find<QListView>(window, name);
        for (int row = 0; view && row < view->model()->rowCount(); ++row)
            rows.push_back(view->model()->index(row, 0).data().toString().toStdString());
        return rows;
    }
    QAction* command(const QString& text) {
        for (auto* const action : window.findChildren<QAction*>())
            if (action->text() == text)
                return action;
        return nullptr;
    }
};

TEST_F(MainViewTest, showsTheGroupsAndTheEntriesOfTheSelectedOne) {
    EXPECT_THAT(rows("Gruplar"), ElementsAre("Kök", "Sosyal"));
    EXPECT_THAT(rows("Kayıtlar"), ElementsAre("Banka", "Posta"));
    EXPECT_TRUE(shows(window, "3 kayıt"));
    EXPECT_TRUE(shows(window, "Kayıt seçilmedi"));

    choose("Gruplar", 1);
    EXPECT_THAT(rows("Kayıtlar"), ElementsAre("Forum"));
    EXPECT_TRUE(shows(window, "3 kayıt")) << "all entries of the vault are counted";
}

TEST_F(MainViewTest, selectingAGroupDeselectsTheEntry) {
    choose("Kayıtlar", 0);
    ASSERT_EQ(state->selectedEntryIDs().size(), 1U);
    choose("Gruplar", 1);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_TRUE(shows(window, "Kayıt seçilmedi"));
}

TEST_F(MainViewTest, oneSelectedEntryShowsItsFieldsAndTwoShowTheirNumber) {
    choose("Kayıtlar", 0);
    EXPECT_TRUE(shows(window, "Kullanıcı adı"));
    list("Kayıtlar").selectAll();
    EXPECT_TRUE(shows(window, "2 kayıt seçildi"));
    state->setSelectedEntryIDs({UUID::random()});
    EXPECT_TRUE(shows(window, "Kayıt bulunamadı"));
}

TEST_F(MainViewTest, aRenamedEntryKeepsItsSelection) {
    choose("Kayıtlar", 0);
    rename("Zeytin");
    EXPECT_THAT(rows("Kayıtlar"), ElementsAre("Posta", "Zeytin"));
    ASSERT_TRUE(state->focusedEntry());
    EXPECT_EQ(state->focusedEntry()->title, "Zeytin");
    EXPECT_TRUE(list("Kayıtlar").selectionModel()->isRowSelected(1));
}

TEST_F(MainViewTest, savingIsOfferedWhenThereIsSomethingToSave) {
    EXPECT_FALSE(command("Kaydet")->isEnabled());
    EXPECT_FALSE(button(window, "Kaydet (⌘S)")->isEnabled());
    rename("Bankam");
    EXPECT_TRUE(shows(window, "3 kayıt · kaydedilmedi"));
    EXPECT_TRUE(command("Kaydet")->isEnabled());
    click(window, "Kaydet (⌘S)");
    EXPECT_EQ(files.writes, 1);
    EXPECT_TRUE(shows(window, "Kaydedildi"));
    EXPECT_FALSE(command("Kaydet")->isEnabled());
    clock.advance(std::chrono::seconds(2));
    EXPECT_FALSE(shows(window, "Kaydedildi"));
}

TEST_F(MainViewTest, undoAndRedoAreNamedAfterTheirStep) {
    EXPECT_FALSE(command("Geri Al")->isEnabled());
    rename("Bankam");
    command("Geri Al — Kaydı Düzenle")->trigger();
    EXPECT_EQ(firstTitle(), "Banka");
    command("Yinele — Kaydı Düzenle")->trigger();
    EXPECT_EQ(firstTitle(), "Bankam");
}

TEST_F(MainViewTest, searchingFindsInAllGroupsAndSaysWhatItFound) {
    type(window, "Kayıtlarda ara", "forum");
    EXPECT_THAT(rows("Kayıtlar"), ElementsAre("Forum"));
    EXPECT_TRUE(shows(window, "Arama sonuçları"));
    EXPECT_TRUE(shows(window, "“forum” · 1 eşleşme"));

    type(window, "Kayıtlarda ara", "yok");
    EXPECT_TRUE(shows(window, "Eşleşme yok"));
    EXPECT_TRUE(shows(window, "“yok” için kayıt bulunamadı. Başka bir terim dene ya da aramayı temizle."));
    command("Ara")->trigger();
    EXPECT_EQ(state->searchFocusToken(), 1);
}

TEST_F(MainViewTest, escapeClearsTheSearchAndThenTheSelection) {
    type(window, "Kayıtlarda ara", "banka");
    choose("Kayıtlar", 0);
    QTest::keyClick(&list("Kayıtlar"), Qt::Key_Escape);
    EXPECT_EQ(state->searchText(), "");
    EXPECT_EQ(state->selectedEntryIDs().size(), 1U);
    QTest::keyClick(&list("Kayıtlar"), Qt::Key_Escape);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(MainViewTest, anEmptyGroupSaysSo) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.groups.mutableAt(0).entries.clear(); });
    choose("Gruplar", 1);
    EXPECT_TRUE(shows(window, "Bu grup boş"));
    EXPECT_TRUE(shows(window, "Buraya ilk kaydını ekle; kullanıcı adı, parola ve otomatik yazma sekansı saklanır."));
}

TEST_F(MainViewTest, theArrowKeysCloseAndOpenAGroup) {
    choose("Gruplar", 0);
    QTest::keyClick(&list("Gruplar"), Qt::Key_Left);
    EXPECT_THAT(rows("Gruplar"), ElementsAre("Kök"));
    EXPECT_FALSE(state->isDirty());
    QTest::keyClick(&list("Gruplar"), Qt::Key_Right);
    EXPECT_THAT(rows("Gruplar"), ElementsAre("Kök", "Sosyal"));
}

TEST_F(MainViewTest, aFailureStandsInTheStatusBarUntilItIsDismissed) {
    files.unwritable[vaultFile] = "“Ev.kdbx” kaydedilemedi: diskte yer kalmadı.";
    rename("Bankam");
    click(window, "Kaydet (⌘S)");
    EXPECT_TRUE(shows(window, "“Ev.kdbx” kaydedilemedi: diskte yer kalmadı."));
    click(window, "Hatayı kapat");
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(shows(window, "“Ev.kdbx” kaydedilemedi: diskte yer kalmadı."));
}

TEST_F(MainViewTest, theClipboardsCountdownShowsAndCanBeCutShort) {
    clipboard.copySecret("gizli");
    EXPECT_TRUE(shows(window, "Pano 12 sn sonra temizlenecek"));
    clock.advance(std::chrono::seconds(1));
    EXPECT_TRUE(shows(window, "Pano 11 sn sonra temizlenecek"));
    click(window, "Temizle");
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_FALSE(shows(window, "Pano 11 sn sonra temizlenecek"));
}

TEST_F(MainViewTest, lockingShowsTheCardAgainWithoutAnythingOfTheVault) {
    choose("Kayıtlar", 0);
    click(window, "Kasayı kilitle (⌘L)");
    EXPECT_TRUE(state->isLocked());
    EXPECT_NE(field(window, "Ana parola"), nullptr);
    for (auto* const label : window.findChildren<QLabel*>())
        EXPECT_NE(label->text(), "Banka");
}

TEST_F(MainViewTest, theWindowIsACardWhileLockedAndGoesBackToItsSize) {
    window.resize(900, 600);
    QCoreApplication::processEvents();
    state->lock();
    QCoreApplication::processEvents();
    EXPECT_EQ(window.width(), 480);
    EXPECT_EQ(window.minimumSize(), window.maximumSize());

    state->unlock("parola", std::nullopt);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(900, 600));
    EXPECT_EQ(window.minimumSize(), QSize(720, 460));
}

TEST_F(MainViewTest, theFirstUnlockGivesTheUsualSize) {
    EXPECT_EQ(window.size(), QSize(1020, 680));
}

}  // namespace
