// SPDX-License-Identifier: MIT
#include "app/ui/window/Toolbar.h"

#include "app/ui/commands/Commands.h"
#include "app/ui/components/SearchField.h"
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QMenu>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

class ToolbarTest : public WindowTest {
protected:
    MainWindow window{environment};

    ToolbarTest() {
        window.show();
        unlock();
        QCoreApplication::processEvents();
    }

    Toolbar& bar() { return *window.findChild<Toolbar*>(); }
    QMenu& more() { return *bar().findChild<QMenu*>(); }
    QAction& item(const QString& text) {
        for (auto* const action : more().actions())
            if (action->text() == text)
                return *action;
        ADD_FAILURE() << "no item " << qPrintable(text);
        static QAction none;
        return none;
    }
};

TEST_F(ToolbarTest, itsControlsAreInOrderAndNameTheirKeys) {
    std::map<int, std::string> names;
    for (auto* const widget : bar().findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (!widget->accessibleName().isEmpty() && !widget->isWindow())
            names.emplace(widget->x(), widget->accessibleName().toStdString());
    std::vector<std::string> fromTheLeft;
    for (const auto& [x, name] : names)
        fromTheLeft.push_back(name);
    EXPECT_THAT(fromTheLeft, ElementsAre("Kayıtlarda ara", "Yeni kayıt (Ctrl+I)", "Diğer işlemler", "Kaydet (Ctrl+S)",
                                         "Kasayı kilitle (Ctrl+L)"));
    for (const auto* name : {"Yeni kayıt (⌘I)", "Diğer işlemler", "Kaydet (⌘S)", "Kasayı kilitle (⌘L)"})
        EXPECT_EQ(button(bar(), name)->toolTip(), name);
}

TEST_F(ToolbarTest, theSearchHasItsIdealWidthInAWindowOfTheUsualOne) {
    auto* const search = bar().findChild<SearchField*>();
    EXPECT_EQ(search->placeholderText(), "Kayıtlarda ara");
    EXPECT_NEAR(search->width(), 260, 4);
    window.resize(1900, 800);
    QCoreApplication::processEvents();
    EXPECT_EQ(search->width(), 380);
    window.resize(720, 460);
    QCoreApplication::processEvents();
    EXPECT_EQ(search->width(), 260) << "there is room for it";
    EXPECT_EQ(search->minimumWidth(), 120);
}

TEST_F(ToolbarTest, theSearchFollowsTheStateAndTheStateTheSearch) {
    type(window, "Kayıtlarda ara", "forum");
    EXPECT_EQ(state->searchText(), "forum");
    state->clearSearch();
    EXPECT_EQ(field(window, "Kayıtlarda ara")->text(), "");
    window.activateWindow();
    state->focusSearch();
    EXPECT_EQ(window.focusWidget(), field(window, "Kayıtlarda ara"));
}

TEST_F(ToolbarTest, aNewEntryIsForTheSelectedGroup) {
    state->setSelectedGroupID(social().id);
    click(window, "Yeni kayıt (⌘I)");
    EXPECT_EQ(state->route(), Route::newEntry(social().id));
}

TEST_F(ToolbarTest, theMenuHasWhatIsDoneMostToTheSelectedEntry) {
    std::vector<std::string> items;
    for (auto* const action : more().actions())
        items.push_back((action->isSeparator() ? "— " : "") + action->text().toStdString());
    EXPECT_THAT(items, ElementsAre("— Seçili kayıt", "Kullanıcı adını kopyala", "Parolayı kopyala", "Otomatik yaz",
                                   "— ", "Yeni grup…", "Parola üret…", "Panoyu temizle"));
    click(window, "Diğer işlemler");
    EXPECT_TRUE(more().isVisible());
    more().close();
}

TEST_F(ToolbarTest, itsEntryItemsNeedOneSelectedEntry) {
    const auto items = {"Kullanıcı adını kopyala", "Parolayı kopyala", "Otomatik yaz"};
    for (const auto* text : items)
        EXPECT_FALSE(item(text).isEnabled()) << text;
    state->setSelectedEntryIDs({bank().id, mail().id});
    for (const auto* text : items)
        EXPECT_FALSE(item(text).isEnabled()) << text;
    state->setSelectedEntryIDs({bank().id});
    for (const auto* text : items)
        EXPECT_TRUE(item(text).isEnabled()) << text;
}

TEST_F(ToolbarTest, itsItemsDoWhatTheySay) {
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.entries.mutableAt(0).username = "işıl";
        database.root.entries.mutableAt(0).password = SecureString("gizli");
    });
    state->setSelectedEntryIDs({bank().id});
    item("Kullanıcı adını kopyala").trigger();
    EXPECT_EQ(pasteboard.text(), "işıl");
    item("Parolayı kopyala").trigger();
    EXPECT_EQ(pasteboard.text(), "gizli");
    item("Otomatik yaz").trigger();
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(autoTyping.performed.size(), 1U);
    item("Yeni grup…").trigger();
    EXPECT_EQ(state->route(), Route::newGroup(root().id));
    state->setRoute(std::nullopt);
    item("Parola üret…").trigger();
    EXPECT_EQ(state->route(), Route::generator(std::nullopt));
}

TEST_F(ToolbarTest, theClipboardIsClearedWhileASecretIsOnIt) {
    EXPECT_FALSE(item("Panoyu temizle").isEnabled());
    clipboard.copySecret("gizli");
    EXPECT_TRUE(item("Panoyu temizle").isEnabled());
    item("Panoyu temizle").trigger();
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_FALSE(item("Panoyu temizle").isEnabled());
}

TEST_F(ToolbarTest, savingAndLockingAreItsLastButtons) {
    EXPECT_FALSE(button(window, "Kaydet (⌘S)")->isEnabled());
    const auto quiet = button(window, "Kaydet (⌘S)")->grab().toImage();
    rename("Bankam");
    EXPECT_TRUE(button(window, "Kaydet (⌘S)")->isEnabled());
    EXPECT_NE(button(window, "Kaydet (⌘S)")->grab().toImage(), quiet) << "unsaved work has another tint";
    click(window, "Kaydet (⌘S)");
    EXPECT_FALSE(button(window, "Kaydet (⌘S)")->isEnabled());
    click(window, "Kasayı kilitle (⌘L)");
    EXPECT_TRUE(state->isLocked());
}

TEST_F(ToolbarTest, theTitleIsTheVaultsAndALongOneIsCutShort) {
    EXPECT_TRUE(shows(bar(), "Kasam"));
    EXPECT_TRUE(shows(bar(), "3 kayıt"));
    rename("Bankam");
    EXPECT_TRUE(shows(bar(), "3 kayıt · kaydedilmedi"));
    const int searchLeft = field(window, "Kayıtlarda ara")->x();
    state->edit("Adım", [](KdbxDatabase& database) {
        database.meta.databaseName = "Çok uzun bir kasa adı, araç çubuğuna sığmayan";
    });
    QCoreApplication::processEvents();
    EXPECT_EQ(field(window, "Kayıtlarda ara")->x(), searchLeft);
    EXPECT_EQ(window.windowTitle(), "Çok uzun bir kasa adı, araç çubuğuna sığmayan[*] — Brenvik");
}

}  // namespace
