// SPDX-License-Identifier: MIT
#include "app/state/NewVault.h"
#include "app/ui/groups/GroupRowDelegate.h"
#include "app/ui/groups/GroupTreeView.h"
#include "app/ui/theme/Theme.h"
#include "tests/app/ui/window/ColumnsTest.h"

#include <gmock/gmock.h>

#include <QPainter>

namespace {

using namespace WindowProbe;
using ::testing::Contains;
using ::testing::ElementsAre;

class GroupTreeTest : public ColumnsTest {
protected:
    /// "Kök" with "Sosyal" and "İş", and in "İş" "Sunucular".
    void grow() {
        state->edit("Adım", [](KdbxDatabase& database) {
            auto work = groupNamed("İş");
            auto servers = groupNamed("Sunucular");
            servers.entries = {entryTitled("Web")};
            work.groups = {servers};
            database.root.groups.append(work);
        });
        QCoreApplication::processEvents();
    }
    std::string currentName() { return groups().currentIndex().data().toString().toStdString(); }
    void press(Qt::Key key) { QTest::keyClick(&groups(), key); }
    const KdbxGroup& work() const { return root().groups[1]; }
};

TEST_F(GroupTreeTest, aNewVaultShowsItsRootAndThreeOpenGroups) {
    state->createDatabase("/kasa/Yeni Kasa.kdbx", "parola", std::nullopt);
    QCoreApplication::processEvents();
    ASSERT_EQ(textsOf(groups()).size(), 4U);
    EXPECT_EQ(textsOf(groups())[0], "Yeni Kasa");
    for (const auto& group : root().groups)
        EXPECT_TRUE(group.isExpanded);
}

TEST_F(GroupTreeTest, theHeaderNamesTheVaultAndAsksForANewGroup) {
    auto* const column = window.findChild<GroupTreeView*>();
    EXPECT_TRUE(shows(*column, "Kasam"));
    click(groups(), 1);
    WindowProbe::click(*column, "Yeni grup (⇧⌘G)");
    EXPECT_EQ(state->route(), Route::newGroup(social().id));
    state->setRoute(std::nullopt);
    state->setSelectedGroupID(std::nullopt);
    WindowProbe::click(*column, "Yeni grup (⇧⌘G)");
    EXPECT_EQ(state->route(), Route::newGroup(root().id));
}

TEST_F(GroupTreeTest, aRowThatAScreenReaderSelectsIsTheGroupThatShows) {
    click(groups(), 0);
    groups().selectionModel()->select(groups().model()->index(1, 0), QItemSelectionModel::ClearAndSelect);
    EXPECT_EQ(state->selectedGroupID(), social().id);
    EXPECT_EQ(currentName(), "Sosyal");
}

TEST_F(GroupTreeTest, selectingAGroupEmptiesTheSelectionOfEntries) {
    click(entries(), 0);
    click(groups(), 1);
    EXPECT_EQ(state->selectedGroupID(), social().id);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
    EXPECT_TRUE(shows(window, "Kayıt seçilmedi"));
}

TEST_F(GroupTreeTest, soDoesAClickOnTheGroupThatIsSelectedAlready) {
    click(entries(), 0);
    ASSERT_FALSE(state->selectedEntryIDs().empty());
    click(groups(), 0);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(GroupTreeTest, selectingAGroupLeavesTheSearchAsItIs) {
    state->setSearchText("banka");
    click(groups(), 1);
    EXPECT_EQ(state->searchText(), "banka");
    EXPECT_THAT(textsOf(entries()), ElementsAre("Banka"));
    state->clearSearch();
    EXPECT_THAT(textsOf(entries()), ElementsAre("Forum"));
}

TEST_F(GroupTreeTest, withNothingSelectedNoRowIs) {
    state->setSelectedGroupID(std::nullopt);
    EXPECT_FALSE(groups().selectionModel()->hasSelection());
}

TEST_F(GroupTreeTest, aClickOnTheChevronClosesAndOpensAndSelectsNothing) {
    click(groups(), 1);
    const auto row = groups().visualRect(groups().model()->index(0, 0));
    const auto chevron = GroupRowDelegate::chevronArea(row, 0, Qt::LeftToRight).center();
    QTest::mouseClick(groups().viewport(), Qt::LeftButton, {}, chevron);
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök"));
    EXPECT_FALSE(state->isDirty()) << "what is open is nothing to save";
    QTest::mouseClick(groups().viewport(), Qt::LeftButton, {}, chevron);
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök", "Sosyal"));
    EXPECT_EQ(state->selectedGroupID(), social().id);
}

TEST_F(GroupTreeTest, theArrowKeysLeadIntoGroupsAndOutOfThem) {
    grow();
    click(groups(), 0);
    press(Qt::Key_Right);
    EXPECT_EQ(currentName(), "Sosyal");
    press(Qt::Key_Right);
    EXPECT_EQ(currentName(), "Sosyal") << "there is nothing below it";
    press(Qt::Key_Down);
    press(Qt::Key_Left);
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök", "Sosyal", "İş"));
    EXPECT_EQ(currentName(), "İş");
    press(Qt::Key_Right);
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök", "Sosyal", "İş", "Sunucular"));
    press(Qt::Key_Right);
    EXPECT_EQ(currentName(), "Sunucular");
    EXPECT_THAT(textsOf(entries()), ElementsAre("Web"));
    press(Qt::Key_Left);
    EXPECT_EQ(currentName(), "İş");
    press(Qt::Key_Home);
    EXPECT_EQ(currentName(), "Kök");
    press(Qt::Key_End);
    EXPECT_EQ(currentName(), "Sunucular");
    EXPECT_EQ(state->selectedGroupID(), work().groups[0].id);
}

TEST_F(GroupTreeTest, aLetterGoesToTheNextNameThatBeginsWithIt) {
    grow();
    click(groups(), 0);
    QTest::keyClick(&groups(), 's');
    EXPECT_EQ(currentName(), "Sosyal");
    QTest::keyClick(&groups(), 'u');
    EXPECT_EQ(currentName(), "Sunucular");
}

TEST_F(GroupTreeTest, aGroupsMenuOffersWhatCanBeDoneWithIt) {
    grow();
    rightClick(groups(), middleOf(groups(), 1));
    EXPECT_THAT(itemsOf(*openMenu()),
                ElementsAre("Yeni kayıt", "Yeni alt grup", "-", "Grubu düzenle", "Grubu sil", "-", "Grubu taşı…"));
    openMenu()->close();
    rightClick(groups(), middleOf(groups(), 2));
    EXPECT_THAT(itemsOf(*openMenu()), ElementsAre("Yeni kayıt", "Yeni alt grup", "-", "Grubu düzenle", "Grubu sil", "-",
                                                  "Daralt", "-", "Grubu taşı…"));
    choose("Daralt");
    EXPECT_FALSE(work().isExpanded);
    rightClick(groups(), middleOf(groups(), 2));
    EXPECT_THAT(itemsOf(*openMenu()), Contains("Genişlet"));
    choose("Genişlet");
    EXPECT_TRUE(work().isExpanded);
    EXPECT_EQ(state->selectedGroupID(), root().id) << "a menu does not select";
}

TEST_F(GroupTreeTest, theRootCanNeitherBeEditedNorDeleted) {
    rightClick(groups(), middleOf(groups(), 0));
    EXPECT_THAT(itemsOf(*openMenu()), ElementsAre("Yeni kayıt", "Yeni alt grup", "-", "[Grubu düzenle]", "[Grubu sil]",
                                                  "-", "Daralt", "-", "[Grubu taşı…]"));
}

TEST_F(GroupTreeTest, aGroupsMenuActsOnItsGroup) {
    const auto id = social().id;
    rightClick(groups(), middleOf(groups(), 1));
    choose("Yeni kayıt");
    EXPECT_EQ(state->route(), Route::newEntry(id));
    state->setRoute(std::nullopt);
    rightClick(groups(), middleOf(groups(), 1));
    choose("Yeni alt grup");
    EXPECT_EQ(state->route(), Route::newGroup(id));
    state->setRoute(std::nullopt);
    rightClick(groups(), middleOf(groups(), 1));
    choose("Grubu düzenle");
    EXPECT_EQ(state->route(), Route::editGroup(id));
    state->setRoute(std::nullopt);
    rightClick(groups(), middleOf(groups(), 1));
    choose("Grubu sil");
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök"));
    EXPECT_EQ(state->undoLabel(), "Grubu Sil");
}

TEST_F(GroupTreeTest, theMenuKeyOpensTheMenuOfTheCurrentGroup) {
    click(groups(), 1);
    QTest::keyClick(&groups(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(openMenu(), nullptr);
    choose("Grubu düzenle");
    EXPECT_EQ(state->route(), Route::editGroup(social().id));
}

TEST_F(GroupTreeTest, entriesAreMovedToTheGroupTheyAreDroppedOn) {
    Drag drag(groups(), dragged({bank().id, forum().id}));
    EXPECT_TRUE(drag.moveTo(middleOf(groups(), 1)));
    EXPECT_EQ(groups().mark(), (RowMark{1, RowMark::Shape::ground}));
    EXPECT_TRUE(drag.dropAt(middleOf(groups(), 1)));
    EXPECT_FALSE(groups().mark());
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Banka", "Forum"));
    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta"));
}

TEST_F(GroupTreeTest, aDropOnTheirOwnGroupPutsEntriesToItsEnd) {
    EXPECT_TRUE(Drag(groups(), dragged({bank().id})).dropAt(middleOf(groups(), 0)));
    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Posta", "Banka"));
}

TEST_F(GroupTreeTest, entriesThatASearchFoundCanBeMoved) {
    state->setSearchText("banka");
    EXPECT_TRUE(Drag(groups(), dragged({bank().id})).dropAt(middleOf(groups(), 1)));
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Banka"));
}

TEST_F(GroupTreeTest, aDropOfTextThatIsNoIdentifierIsIgnored) {
    EXPECT_FALSE(Drag(groups(), "Banka\n1234").dropAt(middleOf(groups(), 1)));
    EXPECT_FALSE(state->canUndo());
    EXPECT_TRUE(Drag(groups(), "Banka\n" + dragged({bank().id})).dropAt(middleOf(groups(), 1)));
    EXPECT_THAT(titlesOf(social().entries), ElementsAre("Forum", "Banka"));
}

TEST_F(GroupTreeTest, thereIsNoDroppingBelowTheGroups) {
    Drag drag(groups(), dragged({bank().id}));
    EXPECT_FALSE(drag.dropAt({100, groups().viewport()->height() - 5}));
    EXPECT_FALSE(state->canUndo());
}

TEST_F(GroupTreeTest, aClosedGroupOpensUnderADragThatRestsOnIt) {
    grow();
    state->setGroupExpanded(work().id, false);
    Drag drag(groups(), dragged({bank().id}));
    drag.moveTo(middleOf(groups(), 2));
    QTRY_VERIFY_WITH_TIMEOUT(work().isExpanded, 5000);
    EXPECT_FALSE(state->isSearching());
    EXPECT_TRUE(drag.dropAt(middleOf(groups(), 3)));
    EXPECT_THAT(titlesOf(work().groups[0].entries), ElementsAre("Web", "Banka"));
}

TEST_F(GroupTreeTest, theCountOfADeepRowNeverLiesUnderItsName) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto group = groupNamed(std::string(300, 'W'));
        for (int depth = 0; depth < 30; ++depth) {
            auto above = groupNamed(std::string(300, 'W'));
            above.groups.append(std::move(group));
            group = std::move(above);
        }
        database.root.groups = {std::move(group)};
    });
    constexpr int narrowest = 168;
    QImage image(narrowest, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Palette::surface);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = QStyle::State_Enabled;
    GroupRowDelegate().paint(&painter, option, groups().model()->index(25, 0));
    painter.end();
    const int countWidth = QFontMetrics(BrandFont::label()).horizontalAdvance("0") + 2;
    const int gap = narrowest - Metric::l - countWidth - Metric::s;
    for (int y = 0; y < image.height(); ++y)
        for (int x = gap + 1; x < gap + Metric::s - 1; ++x)
            ASSERT_EQ(image.pixelColor(x, y), QColor(Palette::surface)) << x << ' ' << y;
}

}  // namespace
