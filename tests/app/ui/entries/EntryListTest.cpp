// SPDX-License-Identifier: MIT
#include "app/ui/entries/EntryListView.h"
#include "app/ui/entries/EntryRowMenu.h"
#include "app/ui/rows/EntryDrag.h"
#include "tests/app/ui/window/ColumnsTest.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;

class EntryListTest : public ColumnsTest {
protected:
    void selectBoth() { state->setSelectedEntryIDs({bank().id, mail().id}); }
    void fill(int count) {
        state->edit("Adım", [&](KdbxDatabase& database) {
            database.root.entries.clear();
            for (int number = 0; number < count; ++number)
                database.root.entries.append(entryTitled("Kayıt " + std::to_string(1000 + number)));
        });
        QCoreApplication::processEvents();
    }
    std::string currentTitle() { return entries().currentIndex().data().toString().toStdString(); }
    void openSortMenu() {
        WindowProbe::click(window, "Sıralama: Başlık");
        QCoreApplication::processEvents();
    }
};

TEST_F(EntryListTest, theHeaderNamesTheGroupAndCountsItsEntries) {
    EXPECT_TRUE(shows(window, "Kök"));
    EXPECT_TRUE(shows(window, "2 kayıt"));
    click(groups(), 1);
    EXPECT_TRUE(shows(window, "Sosyal"));
    EXPECT_TRUE(shows(window, "1 kayıt"));
}

TEST_F(EntryListTest, theHeaderOfASearchQuotesItAndCountsWhatMatches) {
    state->setSearchText("%2 %1");
    EXPECT_TRUE(shows(window, "Arama sonuçları"));
    EXPECT_TRUE(shows(window, "“%2 %1” · 0 eşleşme")) << "what is typed is not a place to fill";
    state->setSearchText("an");
    EXPECT_TRUE(shows(window, "“an” · 1 eşleşme"));
}

TEST_F(EntryListTest, withoutAGroupTheHeaderSaysAll) {
    state->lock();
    EntryListView view(*state);
    view.show();
    EXPECT_TRUE(shows(view, "Tümü"));
    EXPECT_TRUE(shows(view, "0 kayıt"));
}

TEST_F(EntryListTest, theSortMenuHasTwoTitledChoices) {
    openSortMenu();
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_THAT(itemsOf(*openMenu()), ElementsAre("[Sırala]", "Kendi sıram", "Başlık", "Kullanıcı", "Adres",
                                                  "Değiştirilme", "-", "[Yön]", "Artan", "Azalan"));
    for (const auto* const action : openMenu()->actions()) {
        const bool isChosen = action->text() == "Başlık" || action->text() == "Artan";
        EXPECT_EQ(action->isChecked(), isChosen) << qPrintable(action->text());
        EXPECT_EQ(action->isCheckable(), action->isEnabled() && !action->isSeparator());
    }
}

TEST_F(EntryListTest, choosingASortSortsAndNamesItInTheTooltip) {
    openSortMenu();
    choose("Azalan");
    EXPECT_THAT(textsOf(entries()), ElementsAre("Posta", "Banka"));
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::title, .ascending = false}));

    openSortMenu();
    choose("Değiştirilme");
    EXPECT_EQ(state->sort(), (EntrySort{.column = EntrySort::Column::modified, .ascending = false}));
    ASSERT_NE(button(window, "Sıralama: Değiştirilme"), nullptr);
    EXPECT_EQ(button(window, "Sıralama: Değiştirilme")->toolTip(), "Sıralama: Değiştirilme");
}

TEST_F(EntryListTest, aChosenSortStaysChecked) {
    openSortMenu();
    choose("Başlık");
    openSortMenu();
    EXPECT_TRUE(openMenu()->actions()[2]->isChecked());
}

TEST_F(EntryListTest, theAddButtonAsksForANewEntryInTheSelectedGroup) {
    click(groups(), 1);
    auto* const add = entries().window()->findChild<EntryListView*>()->findChildren<QAbstractButton*>()[1];
    EXPECT_EQ(add->toolTip(), "Yeni kayıt (⌘I)");
    QTest::mouseClick(add, Qt::LeftButton);
    EXPECT_EQ(state->route(), Route::newEntry(social().id));
}

TEST_F(EntryListTest, withoutASelectedGroupTheNewEntryGoesToTheRoot) {
    state->setSelectedGroupID(std::nullopt);
    QTest::mouseClick(window.findChild<EntryListView*>()->findChildren<QAbstractButton*>()[1], Qt::LeftButton);
    EXPECT_EQ(state->route(), Route::newEntry(root().id));
}

TEST_F(EntryListTest, clicksWriteTheSelection) {
    click(entries(), 0);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
    click(entries(), 1, Qt::ControlModifier);
    EXPECT_EQ(state->selectedEntryIDs(), (std::set{bank().id, mail().id}));
    click(entries(), 1, Qt::ControlModifier);
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
    click(entries(), 1, Qt::ShiftModifier);
    EXPECT_EQ(state->selectedEntryIDs(), (std::set{bank().id, mail().id}));
}

TEST_F(EntryListTest, returnCopiesThePasswordOfTheOneSelectedEntry) {
    state->edit("Adım",
                [](KdbxDatabase& database) { database.root.entries.mutableAt(0).password = SecureString("gizli"); });
    click(entries(), 0);
    QTest::keyClick(&entries(), Qt::Key_Return);
    EXPECT_EQ(pasteboard.text(), "gizli");
    EXPECT_EQ(state->statusMessage(), "Parola kopyalandı");
}

TEST_F(EntryListTest, returnWithTwoSelectedDoesNothing) {
    selectBoth();
    QTest::keyClick(&entries(), Qt::Key_Return);
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(EntryListTest, escapeClearsTheSearchFirstAndOnlyThenTheSelection) {
    state->setSearchText("a");
    selectBoth();
    QTest::keyClick(&entries(), Qt::Key_Escape);
    EXPECT_EQ(state->searchText(), "");
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U);
    QTest::keyClick(&entries(), Qt::Key_Escape);
    EXPECT_TRUE(state->selectedEntryIDs().empty());
}

TEST_F(EntryListTest, deleteTakesOutAllThatIsSelectedAndNothingElse) {
    QTest::keyClick(&entries(), Qt::Key_Delete);
    EXPECT_FALSE(state->canUndo());
    selectBoth();
    QTest::keyClick(&entries(), Qt::Key_Delete);
    EXPECT_TRUE(root().entries.empty());
    EXPECT_EQ(state->undoLabel(), "2 Kaydı Sil");
}

TEST_F(EntryListTest, anArrowSelectsTheOnlyRow) {
    fill(1);
    entries().setCurrentIndex({});
    entries().setFocus(Qt::TabFocusReason);
    ASSERT_EQ(state->focusedEntry(), nullptr);
    QTest::keyClick(&entries(), Qt::Key_Down);
    EXPECT_NE(state->focusedEntry(), nullptr);
}

TEST_F(EntryListTest, afterADeletionTheKeysGoOnAtTheNeighbour) {
    fill(10);
    click(entries(), 4);
    QTest::keyClick(&entries(), Qt::Key_Delete);
    EXPECT_EQ(currentTitle(), "Kayıt 1005");
    QTest::keyClick(&entries(), Qt::Key_Down);
    EXPECT_EQ(state->focusedEntry()->title, "Kayıt 1005") << "the one that came next";
    QTest::keyClick(&entries(), Qt::Key_Delete);
    QTest::keyClick(&entries(), Qt::Key_Up);
    EXPECT_EQ(state->focusedEntry()->title, "Kayıt 1003");

    QTest::keyClick(&entries(), Qt::Key_End);
    QTest::keyClick(&entries(), Qt::Key_Delete);
    EXPECT_EQ(currentTitle(), "Kayıt 1008");
}

TEST_F(EntryListTest, afterTheDeletionOfSeveralTheKeysGoOnBehindThem) {
    fill(10);
    click(entries(), 2);
    click(entries(), 4, Qt::ShiftModifier);
    QTest::keyClick(&entries(), Qt::Key_Delete);
    QTest::keyClick(&entries(), Qt::Key_Down);
    EXPECT_EQ(state->focusedEntry()->title, "Kayıt 1005");
}

TEST_F(EntryListTest, whatASearchHidesIsNotSelectedAnyMore) {
    click(entries(), 0);
    state->setSearchText("forum");
    EXPECT_TRUE(state->selectedEntryIDs().empty());

    state->clearSearch();
    selectBoth();
    state->setSearchText("banka");
    EXPECT_THAT(state->selectedEntryIDs(), ElementsAre(bank().id));
}

TEST_F(EntryListTest, spacesAreNoSearchThatHidesAnything) {
    selectBoth();
    state->setSearchText("  ");
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U);
}

TEST_F(EntryListTest, aChangeOfTheVaultLeavesTheKeyboardAndTheReaderWhereTheyAre) {
    fill(200);
    click(entries(), 0);
    QTest::keyClick(&entries(), Qt::Key_PageDown);
    QTest::keyClick(&entries(), Qt::Key_PageDown);
    const auto current = currentTitle();
    const int scrolled = entries().verticalScrollBar()->value();
    ASSERT_GT(scrolled, 0);

    state->copyPassword();
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.entries.mutableAt(150).title = "A başa geçer";
        for (const std::size_t place : {3, 60, 120})
            database.root.entries.mutableAt(place).title = "Z sona gider " + std::to_string(place);
    });
    QCoreApplication::processEvents();

    EXPECT_EQ(currentTitle(), current);
    EXPECT_EQ(entries().verticalScrollBar()->value(), scrolled);
}

TEST_F(EntryListTest, anotherGroupAndASearchBeginAtTheTop) {
    fill(200);
    entries().scrollToBottom();
    state->setSearchText("kayıt");
    QCoreApplication::processEvents();
    EXPECT_EQ(entries().verticalScrollBar()->value(), 0);
}

TEST_F(EntryListTest, anEntryThatIsAddedIsSelectedAndInSight) {
    fill(200);
    state->addEntry(entryTitled("Kayıt 1150 b"), root().id);
    QCoreApplication::processEvents();
    EXPECT_EQ(currentTitle(), "Kayıt 1150 b");
    EXPECT_TRUE(entries().viewport()->rect().contains(entries().visualRect(entries().currentIndex())));
}

TEST_F(EntryListTest, aDoubleClickOnARowOpensItsEditor) {
    doubleClick(entries(), middleOf(entries(), 1));
    EXPECT_EQ(state->route(), Route::editEntry(mail().id));
}

TEST_F(EntryListTest, aDoubleClickElsewhereOpensNothing) {
    click(entries(), 0);
    doubleClick(entries(), {100, entries().viewport()->height() - 5});
    EXPECT_FALSE(state->route());
    click(entries(), 0);
    doubleClick(groups(), middleOf(groups(), 0));
    EXPECT_FALSE(state->route());
}

TEST_F(EntryListTest, anEmptyGroupOffersToAddAnEntryToIt) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.groups.mutableAt(0).entries.clear(); });
    click(groups(), 1);
    EXPECT_TRUE(shows(window, "Bu grup boş"));
    EXPECT_TRUE(shows(window, "Buraya ilk kaydını ekle; kullanıcı adı, parola ve otomatik yazma sekansı saklanır."));
    WindowProbe::click(window, "Kayıt ekle");
    EXPECT_EQ(state->route(), Route::newEntry(social().id));
}

TEST_F(EntryListTest, theButtonOfAnEmptyGroupKeepsTheFocusWhenTheVaultChanges) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.clear(); });
    auto* const add = button(window, "Kayıt ekle");
    ASSERT_NE(add, nullptr);
    add->setFocus();
    state->setGroupExpanded(root().id, false);
    EXPECT_EQ(button(window, "Kayıt ekle"), add);
    EXPECT_TRUE(add->hasFocus());
}

TEST_F(EntryListTest, aScreenReaderHearsTheListsAndTheirRows) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.mutableAt(0).username = "ayşe"; });
    click(entries(), 0);
    auto* const list = QAccessible::queryAccessibleInterface(&entries());
    EXPECT_EQ(list->text(QAccessible::Name), "Kayıtlar");
    ASSERT_EQ(list->childCount(), 2);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "Banka");
    EXPECT_EQ(list->child(0)->text(QAccessible::Description), "ayşe");
    EXPECT_TRUE(list->child(0)->state().selected);
    EXPECT_FALSE(list->child(1)->state().selected);

    auto* const tree = QAccessible::queryAccessibleInterface(&groups());
    EXPECT_EQ(tree->text(QAccessible::Name), "Gruplar");
    EXPECT_EQ(tree->child(0)->text(QAccessible::Description), "3 kayıt, düzey 1");
}

TEST_F(EntryListTest, aSearchWithoutMatchesOffersToClearIt) {
    state->setSearchText("bnaka");
    EXPECT_TRUE(shows(window, "Eşleşme yok"));
    EXPECT_TRUE(shows(window, "“bnaka” için kayıt bulunamadı. Başka bir terim dene ya da aramayı temizle."));
    WindowProbe::click(window, "Aramayı temizle");
    EXPECT_EQ(state->searchText(), "");
    EXPECT_FALSE(shows(window, "Eşleşme yok"));
    EXPECT_THAT(textsOf(entries()), ElementsAre("Banka", "Posta"));
}

TEST_F(EntryListTest, theRowUnderThePointerHasItsActions) {
    EXPECT_EQ(button(window, "Kullanıcı adını kopyala"), nullptr);
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.entries.mutableAt(1).username = "ayşe";
        database.root.entries.mutableAt(1).password = SecureString("gizli");
    });
    hover(entries(), 1);
    auto* const copying = button(window, "Kullanıcı adını kopyala");
    ASSERT_NE(copying, nullptr);
    EXPECT_EQ(copying->toolTip(), "Kullanıcı adını kopyala");
    QTest::mouseClick(copying, Qt::LeftButton);
    EXPECT_EQ(pasteboard.text(), "ayşe");
    WindowProbe::click(window, "Parolayı kopyala");
    EXPECT_EQ(pasteboard.text(), "gizli");
    WindowProbe::click(window, "Otomatik yaz");
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(autoTyping.performed.size(), 1U);
    EXPECT_TRUE(state->selectedEntryIDs().empty()) << "an action does not select";
}

TEST_F(EntryListTest, anEntryThatIsNotTypedOffersNoTyping) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.mutableAt(0).autoTypeEnabled = false; });
    hover(entries(), 0);
    EXPECT_NE(button(window, "Parolayı kopyala"), nullptr);
    EXPECT_EQ(button(window, "Otomatik yaz"), nullptr);
}

TEST_F(EntryListTest, theActionsFollowTheRowsBeneathAPointerThatRests) {
    fill(100);
    hover(entries(), 2);
    ASSERT_EQ(entries().hoveredIndex().row(), 2);
    entries().verticalScrollBar()->setValue(2 * 52);
    EXPECT_EQ(entries().hoveredIndex().row(), 4);
    auto* const copying = button(window, "Parolayı kopyala");
    ASSERT_NE(copying, nullptr);
    EXPECT_TRUE(entries()
                    .visualRect(entries().hoveredIndex())
                    .contains(QRect(copying->mapTo(entries().viewport(), QPoint()), copying->size())));

    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(entries().viewport(), &leave);
    EXPECT_EQ(button(window, "Parolayı kopyala"), nullptr);
}

TEST_F(EntryListTest, aRowsMenuOffersWhatCanBeDoneWithTheEntry) {
    rightClick(entries(), middleOf(entries(), 0));
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_THAT(itemsOf(*openMenu()),
                ElementsAre("Kullanıcı adını kopyala", "Parolayı kopyala", "[Adresi kopyala]", "-", "Otomatik yaz",
                            "[Adresi tarayıcıda aç]", "-", "Düzenle…", "Çoğalt", "-", "Sil", "-", "Gruba taşı…"));
    openMenu()->close();

    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.mutableAt(0).url = "banka.example"; });
    rightClick(entries(), middleOf(entries(), 0));
    EXPECT_THAT(itemsOf(*openMenu()),
                ElementsAre("Kullanıcı adını kopyala", "Parolayı kopyala", "Adresi kopyala", "-", "Otomatik yaz",
                            "Adresi tarayıcıda aç", "-", "Düzenle…", "Çoğalt", "-", "Sil", "-", "Gruba taşı…"));
}

TEST_F(EntryListTest, aRowsMenuActsOnItsEntry) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto& entry = database.root.entries.mutableAt(0);
        entry.username = "ayşe";
        entry.password = SecureString("gizli");
        entry.url = "banka.example";
    });
    for (const auto& [item, copied] :
         {std::pair{"Kullanıcı adını kopyala", "ayşe"}, std::pair{"Parolayı kopyala", "gizli"},
          std::pair{"Adresi kopyala", "banka.example"}}) {
        rightClick(entries(), middleOf(entries(), 0));
        choose(item);
        EXPECT_EQ(pasteboard.text(), copied);
    }
    rightClick(entries(), middleOf(entries(), 0));
    choose("Adresi tarayıcıda aç");
    EXPECT_THAT(workspace.opened, ElementsAre("https://banka.example"));
    rightClick(entries(), middleOf(entries(), 0));
    choose("Otomatik yaz");
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(autoTyping.performed.size(), 1U);
    rightClick(entries(), middleOf(entries(), 0));
    choose("Düzenle…");
    EXPECT_EQ(state->route(), Route::editEntry(bank().id));
}

TEST_F(EntryListTest, aRightClickOnAnUnselectedRowActsOnThatRowAlone) {
    fill(4);
    state->setSelectedEntryIDs({root().entries[0].id, root().entries[1].id});
    rightClick(entries(), middleOf(entries(), 3));
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U) << "a menu does not select";
    choose("Sil");
    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Kayıt 1000", "Kayıt 1001", "Kayıt 1002"));
}

TEST_F(EntryListTest, aRightClickOnASelectedRowActsOnTheWholeSelection) {
    fill(4);
    state->setSelectedEntryIDs({root().entries[0].id, root().entries[1].id});
    rightClick(entries(), middleOf(entries(), 1));
    choose("Çoğalt");
    EXPECT_EQ(root().entries.size(), 6U);
    state->undo();
    state->setSelectedEntryIDs({root().entries[0].id, root().entries[1].id});
    rightClick(entries(), middleOf(entries(), 0));
    choose("Sil");
    EXPECT_THAT(titlesOf(root().entries), ElementsAre("Kayıt 1002", "Kayıt 1003"));
}

TEST_F(EntryListTest, aRightClickBesideTheRowsOpensNothing) {
    rightClick(entries(), {100, entries().viewport()->height() - 5});
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(EntryListTest, theMenuKeyAndShiftF10OpenTheMenuAtTheCurrentRow) {
    click(entries(), 1);
    const QRect row(entries().viewport()->mapToGlobal(entries().visualRect(entries().currentIndex()).topLeft()),
                    entries().visualRect(entries().currentIndex()).size());
    QTest::keyClick(&entries(), Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_TRUE(row.adjusted(0, 0, 0, 4).contains(openMenu()->pos()));
    openMenu()->close();

    QContextMenuEvent wish(QContextMenuEvent::Keyboard, {0, 0}, {0, 0});
    QCoreApplication::sendEvent(&entries(), &wish);
    ASSERT_NE(openMenu(), nullptr);
    choose("Düzenle…");
    EXPECT_EQ(state->route(), Route::editEntry(mail().id));
}

TEST_F(EntryListTest, lockingClosesTheMenu) {
    rightClick(entries(), middleOf(entries(), 0));
    state->lock();
    EXPECT_EQ(openMenu(), nullptr);
}

TEST_F(EntryListTest, whatIsDraggedIsTheWholeSelectionOrTheRowAlone) {
    fill(4);
    const std::set selected{root().entries[0].id, root().entries[1].id};
    state->setSelectedEntryIDs(selected);
    EXPECT_EQ(EntryRowMenu::targetIDs(*state, root().entries[1].id), selected);
    EXPECT_THAT(EntryRowMenu::targetIDs(*state, root().entries[3].id), ElementsAre(root().entries[3].id));
}

TEST_F(EntryListTest, identifiersAreDraggedAsTextOneALine) {
    const std::vector ids{bank().id, mail().id};
    const auto text = EntryDrag::textOf(ids);
    EXPECT_EQ(text.toStdString(), bank().id.text() + "\n" + mail().id.text());
    EXPECT_EQ(EntryDrag::idsIn(text), (std::set{bank().id, mail().id}));
    EXPECT_EQ(EntryDrag::idsIn(text.toLower() + "\r\nbaşka\n\n"), (std::set{bank().id, mail().id}));
    EXPECT_TRUE(EntryDrag::idsIn("").empty());
}

TEST_F(EntryListTest, aDropPutsEntriesBeforeTheRow) {
    fill(4);
    const auto& all = root().entries;
    Drag drag(entries(), dragged({all[3].id, all[2].id}));
    EXPECT_TRUE(drag.moveTo(middleOf(entries(), 1)));
    EXPECT_EQ(entries().mark(), (RowMark{1, RowMark::Shape::lineAbove}));
    EXPECT_TRUE(drag.dropAt(middleOf(entries(), 1)));
    EXPECT_FALSE(entries().mark());
    EXPECT_THAT(textsOf(entries()), ElementsAre("Kayıt 1000", "Kayıt 1002", "Kayıt 1003", "Kayıt 1001"));
    EXPECT_EQ(state->sort().column, EntrySort::Column::manual);
    EXPECT_EQ(state->statusMessage(), "Kendi sıralamana geçildi.");
}

TEST_F(EntryListTest, aDropBelowTheRowsPutsEntriesToTheEnd) {
    fill(4);
    Drag drag(entries(), dragged({root().entries[0].id}));
    const QPoint below(100, entries().viewport()->height() - 5);
    EXPECT_TRUE(drag.moveTo(below));
    EXPECT_EQ(entries().mark(), (RowMark{3, RowMark::Shape::lineBelow}));
    EXPECT_TRUE(drag.dropAt(below));
    EXPECT_EQ(textsOf(entries()).back(), "Kayıt 1000");
}

TEST_F(EntryListTest, aDropDuringASearchChangesNothing) {
    state->setSearchText("a");
    Drag drag(entries(), dragged({bank().id}));
    EXPECT_FALSE(drag.moveTo(middleOf(entries(), 1)));
    EXPECT_FALSE(entries().mark());
    EXPECT_FALSE(drag.dropAt(middleOf(entries(), 1)));
    EXPECT_FALSE(state->canUndo());
}

TEST_F(EntryListTest, aDropOfOtherTextChangesNothing) {
    Drag drag(entries(), "Banka\nbaşka bir metin");
    EXPECT_FALSE(drag.dropAt(middleOf(entries(), 0)));
    EXPECT_FALSE(state->canUndo());
    EXPECT_EQ(state->sort().column, EntrySort::Column::title);
}

TEST_F(EntryListTest, aDragThatLeavesLeavesNoMark) {
    Drag drag(entries(), dragged({bank().id}));
    drag.moveTo(middleOf(entries(), 1));
    ASSERT_TRUE(entries().mark());
    drag.leave();
    EXPECT_FALSE(entries().mark());
}

TEST_F(EntryListTest, aDragNearTheEdgeScrolls) {
    fill(100);
    Drag drag(entries(), dragged({root().entries[0].id}));
    drag.moveTo({100, entries().viewport()->height() - 2});
    QTRY_VERIFY_WITH_TIMEOUT(entries().verticalScrollBar()->value() > 60, 5000);
    drag.leave();
    const int scrolled = entries().verticalScrollBar()->value();
    QTest::qWait(60);
    EXPECT_EQ(entries().verticalScrollBar()->value(), scrolled);
}

TEST_F(EntryListTest, aLetterGoesToTheNextTitleThatBeginsWithIt) {
    state->edit("Adım", [](KdbxDatabase& database) {
        database.root.entries = {entryTitled("Alan"), entryTitled("IBM"), entryTitled("Irmak"), entryTitled("İnci")};
    });
    click(entries(), 0);
    QTest::keyClick(&entries(), 'i');
    EXPECT_EQ(state->focusedEntry()->title.substr(0, 1), "I");
    QTest::keyClick(&entries(), 'n');
    EXPECT_EQ(state->focusedEntry()->title, "İnci");
    QTest::keyClick(&entries(), 'x');
    EXPECT_EQ(state->focusedEntry()->title, "İnci");
}

TEST_F(EntryListTest, oneLetterAgainAndAgainGoesThroughAllThatBeginWithIt) {
    fill(3);
    click(entries(), 0);
    for (const auto* const title : {"Kayıt 1001", "Kayıt 1002", "Kayıt 1000"}) {
        QTest::keyClick(&entries(), 'k');
        EXPECT_EQ(state->focusedEntry()->title, title);
    }
}

TEST_F(EntryListTest, aTitleIsNotPutOnTheClipboardByTheCopyKey) {
    state->setSelectedEntryIDs({});
    QGuiApplication::clipboard()->setText("önceki");
    entries().setFocus();
    QTest::keyClick(&entries(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "önceki");
}

TEST_F(EntryListTest, theKeyboardShowsWhereItIsAndThePointerNeedsNoRing) {
    QStyleOptionViewItem option;
    option.widget = &entries();
    option.state = QStyle::State_HasFocus;
    click(entries(), 0);
    EXPECT_FALSE(RowListView::showsFocus(option));
    QTest::keyClick(&entries(), Qt::Key_Down);
    EXPECT_TRUE(RowListView::showsFocus(option));
}

}  // namespace
