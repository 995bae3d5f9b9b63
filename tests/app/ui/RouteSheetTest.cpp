// SPDX-License-Identifier: MIT
#include "app/ui/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QListView>

namespace {

using namespace WindowProbe;

class RouteSheetTest : public WindowTest {
protected:
    MainWindow window{environment};

    RouteSheetTest() {
        window.show();
        unlock();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    void open(const AppState::Route& route) {
        state->setRoute(route);
        QCoreApplication::processEvents();
    }
    void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    QListView& entries() { return *find<QListView>(window, "Kayıtlar"); }
};

TEST_F(RouteSheetTest, eachRouteHasItsSheet) {
    open(AppState::Route::newEntry(root().id));
    EXPECT_TRUE(shows(window, "Yeni kayıt"));
    open(AppState::Route::editEntry(bank().id));
    EXPECT_TRUE(shows(window, "Kaydı düzenle"));
    EXPECT_EQ(field(window, "Başlık")->text(), "Banka");
    open(AppState::Route::newGroup(root().id));
    EXPECT_TRUE(shows(window, "Yeni grup"));
    open(AppState::Route::editGroup(social().id));
    EXPECT_TRUE(shows(window, "Grubu düzenle"));
    EXPECT_EQ(field(window, "Grup adı")->text(), "Sosyal");
}

TEST_F(RouteSheetTest, anEntryDeepInTheTreeIsFound) {
    open(AppState::Route::editEntry(forum().id));
    EXPECT_EQ(field(window, "Başlık")->text(), "Forum");
}

TEST_F(RouteSheetTest, aRouteThatFindsNothingSaysSoAndCanBeLeft) {
    for (const auto& route : {AppState::Route::editEntry(UUID::random()), AppState::Route::editGroup(UUID::random())}) {
        open(route);
        EXPECT_TRUE(shows(window, "Bulunamadı"));
        EXPECT_TRUE(shows(window, "Bu kayıt artık mevcut değil."));
        click(window, "Kapat");
        EXPECT_EQ(state->route(), std::nullopt);
        EXPECT_FALSE(shows(window, "Bulunamadı"));
    }
}

TEST_F(RouteSheetTest, theMissingViewIsLeftWithEscapeAndWithReturn) {
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        open(AppState::Route::editEntry(UUID::random()));
        press(key);
        EXPECT_EQ(state->route(), std::nullopt);
    }
}

TEST_F(RouteSheetTest, anEntryThatAnUndoTakesAwayIsMissing) {
    state->addEntry(entryNamed("Yeni"), root().id);
    const auto id = state->focusedEntry()->id;
    open(AppState::Route::editEntry(id));
    ASSERT_EQ(field(window, "Başlık")->text(), "Yeni");

    state->undo();
    EXPECT_TRUE(shows(window, "Bulunamadı"));
    EXPECT_EQ(field(window, "Başlık"), nullptr);

    click(window, "Kapat");
    EXPECT_EQ(state->route(), std::nullopt);
}

TEST_F(RouteSheetTest, anEntryThatComesBackIsShownAgain) {
    state->addEntry(entryNamed("Yeni"), root().id);
    open(AppState::Route::editEntry(state->focusedEntry()->id));
    state->undo();
    state->redo();
    EXPECT_FALSE(shows(window, "Bulunamadı"));
    EXPECT_EQ(field(window, "Başlık")->text(), "Yeni");
}

TEST_F(RouteSheetTest, aFormKeepsWhatWasTypedWhileTheVaultChanges) {
    open(AppState::Route::editEntry(bank().id));
    type(window, "Kullanıcı adı", "ayşe");
    rename("Bankam");
    EXPECT_EQ(field(window, "Kullanıcı adı")->text(), "ayşe");
    EXPECT_EQ(field(window, "Başlık")->text(), "Banka");
}

TEST_F(RouteSheetTest, anotherRouteReplacesTheFormAndTheSameOneKeepsIt) {
    open(AppState::Route::editEntry(bank().id));
    type(window, "Başlık", "Yarım");
    open(AppState::Route::editEntry(bank().id));
    EXPECT_EQ(field(window, "Başlık")->text(), "Yarım");
    open(AppState::Route::editEntry(mail().id));
    EXPECT_EQ(field(window, "Başlık")->text(), "Posta");
}

TEST_F(RouteSheetTest, escapeDismissesTheSheetAndTheRouteAndGivesTheFocusBack) {
    entries().setFocus();
    open(AppState::Route::editEntry(bank().id));
    EXPECT_EQ(QApplication::focusWidget(), field(window, "Başlık"));
    EXPECT_FALSE(entries().isEnabled());

    press(Qt::Key_Escape);
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_EQ(field(window, "Başlık"), nullptr);
    EXPECT_TRUE(entries().isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &entries());
}

TEST_F(RouteSheetTest, lockingClosesTheSheetAndLeavesTheFocusToTheLockScreen) {
    open(AppState::Route::editEntry(bank().id));
    state->lock();
    QCoreApplication::processEvents();
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_EQ(field(window, "Başlık"), nullptr);
    EXPECT_EQ(QApplication::focusWidget(), field(window, "Ana parola"));
}

TEST_F(RouteSheetTest, theSheetStandsWithinTheSmallestWindow) {
    window.resize(720, 460);
    open(AppState::Route::editEntry(bank().id));
    auto* const title = field(window, "Başlık");
    EXPECT_TRUE(window.rect().contains(QRect(title->mapTo(&window, QPoint()), title->size())));
    auto* const confirm = button(window, "Kaydet");
    EXPECT_TRUE(window.rect().contains(QRect(confirm->mapTo(&window, QPoint()), confirm->size())));
}

}  // namespace
