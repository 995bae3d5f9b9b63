// SPDX-License-Identifier: MIT
#include "tests/app/ui/SheetFixture.h"

#include <gmock/gmock.h>

#include <QScrollArea>
#include <QScrollBar>

namespace {

using ::testing::ElementsAre;

using Route = AppState::Route;

class GroupEditTest : public SheetFixture {};

TEST_F(GroupEditTest, aNewGroupStartsWithTheDefaults) {
    open(Route::newGroup(root().id));
    EXPECT_TRUE(shows("Yeni grup"));
    EXPECT_EQ(field("Grup adı").text(), "");
    EXPECT_EQ(notes().toPlainText(), "");
    EXPECT_EQ(button("Simge seç").accessibleDescription(), "Klasör");
    EXPECT_TRUE(shows("Otomatik yazma"));
    EXPECT_FALSE(button("Bu grup için varsayılan sekans").isChecked());
    EXPECT_FALSE(has("Sekans"));
    EXPECT_FALSE(has("Grubu sil"));
    EXPECT_EQ(focusName(), "Grup adı");
}

TEST_F(GroupEditTest, inAWindowOfTheUsualSizeTheWholeFormShows) {
    open(Route::editGroup(social().id));
    ASSERT_NE(WindowProbe::button(window, "Grubu sil"), nullptr);
    auto* page = button("Grubu sil").parentWidget();
    while (qobject_cast<QScrollArea*>(page) == nullptr)
        page = page->parentWidget();
    EXPECT_EQ(qobject_cast<QScrollArea*>(page)->verticalScrollBar()->maximum(), 0);
}

TEST_F(GroupEditTest, aNameOfBlanksCannotBeConfirmed) {
    open(Route::newGroup(root().id));
    EXPECT_FALSE(button("Oluştur").isEnabled());
    type("Grup adı", " \t\u00a0");
    EXPECT_FALSE(button("Oluştur").isEnabled());
    press(Qt::Key_Return);
    EXPECT_NE(state->route(), std::nullopt);
    type("Grup adı", "İş");
    EXPECT_TRUE(button("Oluştur").isEnabled());
}

TEST_F(GroupEditTest, aNewGroupHoldsWhatWasTypedAndIsSelected) {
    open(Route::newGroup(social().id));
    type("Grup adı", " \tForumlar\t ");
    typeNotes(" Bir\nİki ");
    click("Bu grup için varsayılan sekans");
    EXPECT_EQ(field("Sekans").text(), "{USERNAME}{TAB}{PASSWORD}{ENTER}");
    EXPECT_TRUE(shows("Alt gruplar ve kayıtlar bunu devralır."));
    type("Sekans", "{PASSWORD}");
    click("Oluştur");

    ASSERT_EQ(social().groups.size(), 1U);
    const auto& group = social().groups[0];
    EXPECT_EQ(group.name, "Forumlar");
    EXPECT_EQ(group.notes, " Bir\nİki ");
    EXPECT_EQ(group.iconID, 48);
    EXPECT_EQ(group.defaultAutoTypeSequence, "{PASSWORD}");
    EXPECT_TRUE(group.isExpanded);
    EXPECT_EQ(group.created, group.modified);
    EXPECT_NEAR(group.created.seconds, Timestamp::now().seconds, 60);
    EXPECT_TRUE(group.entries.empty() && group.groups.empty() && group.unknownXML.empty());
    EXPECT_EQ(state->selectedGroupID(), group.id);
    EXPECT_EQ(state->undoLabel(), "Grup Ekle");
    EXPECT_EQ(state->route(), std::nullopt);
}

TEST_F(GroupEditTest, blanksAndTabsAroundANameGoAndALineBreakStays) {
    for (const auto& [typed, name] : {std::pair{" Ev ", "Ev"}, {"Ev\t", "Ev"}, {"Ev\n", "Ev\n"}}) {
        open(Route::editGroup(social().id));
        type("Grup adı", typed);
        click("Kaydet");
        EXPECT_EQ(social().name, name);
    }
}

TEST_F(GroupEditTest, anEditChangesItsFourFieldsAlone) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto& group = database.root.groups.mutableAt(0);
        group.unknownXML = {"<Özel/>"};
        group.defaultAutoTypeSequence = "{TAB}";
        group.created = {1'700'000'000};
    });
    open(Route::editGroup(social().id));
    EXPECT_TRUE(shows("Grubu düzenle"));
    EXPECT_EQ(field("Grup adı").text(), "Sosyal");
    EXPECT_TRUE(button("Bu grup için varsayılan sekans").isChecked());
    EXPECT_EQ(field("Sekans").text(), "{TAB}");
    type("Grup adı", "Toplum");
    typeNotes("Not");
    click("Simge seç");
    press(Qt::Key_Left);
    press(Qt::Key_Return);
    click("Kaydet");
    EXPECT_EQ(social().name, "Toplum");
    EXPECT_EQ(social().notes, "Not");
    EXPECT_EQ(social().iconID, 47);
    EXPECT_EQ(social().defaultAutoTypeSequence, "{TAB}");
    EXPECT_THAT(social().unknownXML, ElementsAre("<Özel/>"));
    EXPECT_EQ(social().created.seconds, 1'700'000'000);
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum"));
    EXPECT_EQ(state->undoLabel(), "Grubu Düzenle");
    EXPECT_EQ(state->route(), std::nullopt);
}

TEST_F(GroupEditTest, whatComesToTheGroupBehindTheFormStays) {
    open(Route::editGroup(social().id));
    type("Grup adı", "Toplum");
    state->addEntry(entryTitled("Yeni"), social().id);
    EXPECT_TRUE(shows("2 kayıt ve tüm alt gruplar silinir."));
    EXPECT_EQ(field("Grup adı").text(), "Toplum");
    click("Kaydet");
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Yeni"));
}

TEST_F(GroupEditTest, switchingTheSequenceOffClearsIt) {
    state->edit("Adım",
                [](KdbxDatabase& database) { database.root.groups.mutableAt(0).defaultAutoTypeSequence = "{TAB}"; });
    open(Route::editGroup(social().id));
    click("Bu grup için varsayılan sekans");
    EXPECT_FALSE(has("Sekans"));
    click("Kaydet");
    EXPECT_EQ(social().defaultAutoTypeSequence, std::nullopt);
}

TEST_F(GroupEditTest, theRootCannotBeDeleted) {
    open(Route::editGroup(root().id));
    EXPECT_EQ(field("Grup adı").text(), "Kök");
    EXPECT_FALSE(has("Grubu sil"));
    EXPECT_FALSE(shows("3 kayıt ve tüm alt gruplar silinir."));
}

TEST_F(GroupEditTest, deletingCountsTheEntriesOfAllSubgroupsAndAsksNothing) {
    auto inner = groupNamed("İç");
    inner.entries = {entryTitled("Derin"), entryTitled("Daha derin")};
    state->addGroup(inner, social().id);
    open(Route::editGroup(social().id));
    EXPECT_TRUE(shows("3 kayıt ve tüm alt gruplar silinir."));
    click("Grubu sil");
    EXPECT_TRUE(root().groups.empty());
    EXPECT_EQ(state->route(), std::nullopt);
    EXPECT_EQ(state->selectedGroupID(), root().id);
    EXPECT_EQ(state->undoLabel(), "Grubu Sil");
    EXPECT_FALSE(shows("Bulunamadı"));
}

TEST_F(GroupEditTest, cancellingChangesNothing) {
    for (const bool isByKey : {false, true}) {
        open(Route::editGroup(social().id));
        type("Grup adı", "Yarım");
        if (isByKey)
            press(Qt::Key_Escape);
        else
            click("Vazgeç");
        EXPECT_EQ(state->route(), std::nullopt);
        EXPECT_EQ(social().name, "Sosyal");
        EXPECT_FALSE(state->canUndo());
    }
}

TEST_F(GroupEditTest, returnConfirms) {
    open(Route::editGroup(social().id));
    type("Grup adı", "Toplum");
    press(Qt::Key_Return);
    EXPECT_EQ(social().name, "Toplum");
}

TEST_F(GroupEditTest, tabWalksTheFormAsItIsRead) {
    open(Route::editGroup(social().id));
    QStringList walked;
    for (int i = 0; i < 7; ++i) {
        walked.append(focusName());
        press(Qt::Key_Tab);
    }
    EXPECT_EQ(walked.join(", "),
              "Grup adı, Notlar, Bu grup için varsayılan sekans, Grubu sil, Vazgeç, Kaydet, Simge seç");
    EXPECT_EQ(focusName(), "Grup adı");
}

}  // namespace
