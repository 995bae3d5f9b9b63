// SPDX-License-Identifier: MIT
#include "app/ui/groups/MoveView.h"
#include "app/ui/rows/GroupDrag.h"
#include "tests/app/ui/window/ColumnsTest.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QMenuBar>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

/// "Kök" with "Sosyal" and "İş", and in "İş", which is folded up, "Sunucular".
class MovingTest : public ColumnsTest {
protected:
    void SetUp() override {
        ColumnsTest::SetUp();
        state->edit("Adım", [](KdbxDatabase& database) {
            auto work = groupNamed("İş");
            work.groups = {groupNamed("Sunucular")};
            work.isExpanded = false;
            database.root.groups.append(work);
        });
        QCoreApplication::processEvents();
    }
    const KdbxGroup& work() const { return root().groups[1]; }

    QAction& command(const QString& text) {
        for (auto* const action : window.findChildren<QAction*>())
            if (action->text() == text)
                return *action;
        ADD_FAILURE() << "no command " << qPrintable(text);
        static QAction none;
        return none;
    }
    MoveView* sheet() { return find<MoveView>(window, "Gruba taşı"); }
    RowListView& targets() { return list("Hedef grup"); }

    void chooseTarget(const std::string& name) {
        const auto names = textsOf(targets());
        const auto found = std::ranges::find(names, name);
        ASSERT_NE(found, names.end());
        click(targets(), static_cast<int>(found - names.begin()));
    }
    bool dragGroup(const UUID& id, int row) {
        const auto content = GroupDrag::contentOf(id);
        const QPoint place = middleOf(groups(), row);
        QDragEnterEvent enter(place, Qt::MoveAction, content.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(groups().viewport(), &enter);
        QDropEvent drop(place, Qt::MoveAction, content.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(groups().viewport(), &drop);
        return drop.isAccepted();
    }
};

TEST_F(MovingTest, aGroupThatWouldGoTooDeepIsNoTarget) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto group = groupNamed("2495");
        for (int level = 2494; level > 1; --level) {
            auto parent = groupNamed(std::to_string(level));
            parent.groups = {std::move(group)};
            group = std::move(parent);
        }
        database.root.groups.append(std::move(group));
    });
    QCoreApplication::processEvents();
    state->setSelectedGroupID(work().id);  // it holds a group
    const auto last = static_cast<int>(textsOf(groups()).size()) - 1;
    ASSERT_EQ(textsOf(groups())[static_cast<std::size_t>(last)], "2495");

    command("Grubu Taşı…").trigger();
    EXPECT_EQ(textsOf(targets()).back(), "2494");
    groups().scrollToBottom();
    EXPECT_FALSE(dragGroup(work().id, last));
    const auto* deepest = &state->root()->groups.back();
    while (!deepest->groups.empty())
        deepest = &deepest->groups[0];
    EXPECT_TRUE(state->canMoveGroup(work().groups[0].id, deepest->id)) << "it holds nothing";
}

TEST_F(MovingTest, theSheetShowsAllGroupsAndBeginsAtThePresentOne) {
    click(entries(), 0);
    command("Gruba Taşı…").trigger();
    ASSERT_NE(sheet(), nullptr);
    EXPECT_THAT(textsOf(targets()), ElementsAre("Kök", "Sosyal", "İş", "Sunucular"));
    EXPECT_EQ(targets().currentIndex().row(), 0);
    EXPECT_TRUE(shows(*sheet(), "Banka"));
    EXPECT_FALSE(button(*sheet(), "Taşı")->isEnabled()) << "it is there already";
    chooseTarget("Sunucular");
    EXPECT_TRUE(button(*sheet(), "Taşı")->isEnabled());
    WindowProbe::click(*sheet(), "Taşı");
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_THAT(titlesOf(work().groups[0].entries), ElementsAre("Banka"));
    EXPECT_EQ(state->undoLabel(), "Kayıtları Taşı");
}

TEST_F(MovingTest, aGroupIsMovedWithoutBeingOfferedToItself) {
    state->setSelectedGroupID(work().id);
    command("Grubu Taşı…").trigger();
    EXPECT_THAT(textsOf(targets()), ElementsAre("Kök", "Sosyal"));
    chooseTarget("Sosyal");
    QTest::keyClick(&targets(), Qt::Key_Return);
    ASSERT_EQ(root().groups.size(), 1U);
    EXPECT_EQ(social().groups.back().name, "İş");
}

TEST_F(MovingTest, escapeMovesNothing) {
    click(entries(), 0);
    command("Gruba Taşı…").trigger();
    chooseTarget("Sosyal");
    QTest::keyClick(&targets(), Qt::Key_Escape);
    EXPECT_EQ(sheet(), nullptr);
    EXPECT_EQ(state->undoLabel(), "Adım");
}

TEST_F(MovingTest, theSheetGoesWithWhatItIsFor) {
    click(entries(), 0);
    command("Gruba Taşı…").trigger();
    state->deleteEntries({bank().id});
    EXPECT_EQ(sheet(), nullptr);

    click(entries(), 0);
    command("Gruba Taşı…").trigger();
    ASSERT_NE(sheet(), nullptr);
    state->lock();
    EXPECT_EQ(sheet(), nullptr);
}

TEST_F(MovingTest, theCommandsAreThereForWhatCanBeMoved) {
    const auto enabled = [&] {
        std::vector<std::string> texts;
        for (const auto* text : {"Gruba Taşı…", "Grubu Taşı…", "Yukarı Taşı", "Aşağı Taşı"})
            if (command(text).isEnabled())
                texts.emplace_back(text);
        return texts;
    };
    window.activateWindow();
    click(groups(), 0);
    groups().setFocus();
    EXPECT_THAT(enabled(), ElementsAre()) << "the root stays where it is, and no entry is selected";
    click(groups(), 2);
    EXPECT_THAT(enabled(), ElementsAre("Grubu Taşı…", "Yukarı Taşı", "Aşağı Taşı"));
    click(groups(), 0);
    entries().setFocus();
    click(entries(), 0);
    EXPECT_THAT(enabled(), ElementsAre("Gruba Taşı…", "Yukarı Taşı", "Aşağı Taşı"));
    state->setSearchText("banka");
    EXPECT_THAT(enabled(), ElementsAre("Gruba Taşı…")) << "a search has no order";
    state->setRoute(Route::generator(std::nullopt));
    EXPECT_THAT(enabled(), ElementsAre());
}

TEST_F(MovingTest, aGroupIsDroppedIntoAnotherButNotIntoWhatItHolds) {
    state->setGroupExpanded(work().id, true);
    ASSERT_THAT(textsOf(groups()), ElementsAre("Kök", "Sosyal", "İş", "Sunucular"));
    EXPECT_FALSE(dragGroup(work().id, 2));
    EXPECT_FALSE(dragGroup(work().id, 3));
    EXPECT_FALSE(dragGroup(root().id, 1));
    EXPECT_TRUE(dragGroup(work().id, 1));
    EXPECT_THAT(textsOf(groups()), ElementsAre("Kök", "Sosyal", "İş", "Sunucular"));
    EXPECT_EQ(social().groups.back().name, "İş");
    EXPECT_EQ(state->undoLabel(), "Grubu Taşı");
}

TEST_F(MovingTest, onlyARowBelowTheRootCanBeDragged) {
    const auto canDrag = [&](int row) {
        return groups().model()->index(row, 0).flags().testFlag(Qt::ItemIsDragEnabled);
    };
    EXPECT_FALSE(canDrag(0));
    EXPECT_TRUE(canDrag(1));
}

TEST_F(MovingTest, theEntriesTakeNoGroup) {
    const auto content = GroupDrag::contentOf(work().id);
    EXPECT_FALSE(content->hasText()) << "which a search field would take";
    const QPoint place = middleOf(entries(), 0);
    QDragEnterEvent enter(place, Qt::MoveAction, content.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(entries().viewport(), &enter);
    QDropEvent drop(place, Qt::MoveAction, content.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(entries().viewport(), &drop);
    EXPECT_FALSE(drop.isAccepted());
}

}  // namespace
