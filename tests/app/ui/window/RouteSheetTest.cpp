// SPDX-License-Identifier: MIT
#include "tests/app/ui/SheetFixture.h"

#include <QListView>

namespace {

class RouteSheetTest : public SheetFixture {
protected:
    QListView& entries() { return *WindowProbe::find<QListView>(window, "Kayıtlar"); }
    bool isInWindow(const QWidget& widget) const {
        return window.rect().contains(QRect(widget.mapTo(&window, QPoint()), widget.size()));
    }
};

TEST_F(RouteSheetTest, eachRouteHasItsSheet) {
    open(AppState::Route::newEntry(root().id));
    EXPECT_TRUE(shows("Yeni kayıt"));
    open(AppState::Route::editEntry(bank().id));
    EXPECT_TRUE(shows("Kaydı düzenle"));
    EXPECT_EQ(field("Başlık").text(), "Banka");
    open(AppState::Route::newGroup(root().id));
    EXPECT_TRUE(shows("Yeni grup"));
    open(AppState::Route::editGroup(social().id));
    EXPECT_TRUE(shows("Grubu düzenle"));
    EXPECT_EQ(field("Grup adı").text(), "Sosyal");
}

TEST_F(RouteSheetTest, anEntryDeepInTheTreeIsFound) {
    open(AppState::Route::editEntry(forum().id));
    EXPECT_EQ(field("Başlık").text(), "Forum");
}

TEST_F(RouteSheetTest, aRouteThatFindsNothingSaysSoAndCanBeLeft) {
    for (const auto& route : {AppState::Route::editEntry(UUID::random()), AppState::Route::editGroup(UUID::random())}) {
        open(route);
        EXPECT_TRUE(shows("Bulunamadı"));
        EXPECT_TRUE(shows("Bu kayıt artık mevcut değil."));
        click("Kapat");
        EXPECT_EQ(state->route(), std::nullopt);
        EXPECT_FALSE(shows("Bulunamadı"));
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
    state->addEntry(entryTitled("Yeni"), root().id);
    const auto id = state->focusedEntry()->id;
    open(AppState::Route::editEntry(id));
    ASSERT_EQ(field("Başlık").text(), "Yeni");

    state->undo();
    EXPECT_TRUE(shows("Bulunamadı"));
    EXPECT_FALSE(has("Başlık"));

    click("Kapat");
    EXPECT_EQ(state->route(), std::nullopt);
}

TEST_F(RouteSheetTest, anEntryThatComesBackIsShownAgain) {
    state->addEntry(entryTitled("Yeni"), root().id);
    open(AppState::Route::editEntry(state->focusedEntry()->id));
    state->undo();
    state->redo();
    EXPECT_FALSE(shows("Bulunamadı"));
    EXPECT_EQ(field("Başlık").text(), "Yeni");
}

TEST_F(RouteSheetTest, aFormKeepsWhatWasTypedWhileTheVaultChanges) {
    open(AppState::Route::editEntry(bank().id));
    type("Kullanıcı adı", "ayşe");
    rename("Bankam");
    EXPECT_EQ(field("Kullanıcı adı").text(), "ayşe");
    EXPECT_EQ(field("Başlık").text(), "Banka");
}

TEST_F(RouteSheetTest, anotherRouteReplacesTheFormAndTheSameOneKeepsIt) {
    open(AppState::Route::editEntry(bank().id));
    type("Başlık", "Yarım");
    open(AppState::Route::editEntry(bank().id));
    EXPECT_EQ(field("Başlık").text(), "Yarım");
    open(AppState::Route::editEntry(mail().id));
    EXPECT_EQ(field("Başlık").text(), "Posta");
}

TEST_F(RouteSheetTest, escapeDismissesTheSheetAndTheRouteAndGivesTheFocusBack) {
    entries().setFocus();
    open(AppState::Route::editEntry(bank().id));
    EXPECT_EQ(focusName(), "Başlık");
    EXPECT_FALSE(entries().isEnabled());

    press(Qt::Key_Escape);
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_FALSE(has("Başlık"));
    EXPECT_TRUE(entries().isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &entries());
}

TEST_F(RouteSheetTest, lockingClosesTheSheetAndLeavesTheFocusToTheLockScreen) {
    open(AppState::Route::editEntry(bank().id));
    state->lock();
    QCoreApplication::processEvents();
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_FALSE(has("Başlık"));
    EXPECT_EQ(focusName(), "Ana parola");
}

TEST_F(RouteSheetTest, theSheetStandsWithinTheSmallestWindow) {
    window.resize(720, 460);
    open(AppState::Route::editEntry(bank().id));
    EXPECT_TRUE(isInWindow(field("Başlık")));
    EXPECT_TRUE(isInWindow(button("Vazgeç")));
    EXPECT_TRUE(isInWindow(button("Kaydet")));
}

}  // namespace
