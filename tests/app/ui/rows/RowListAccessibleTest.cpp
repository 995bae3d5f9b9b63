// SPDX-License-Identifier: MIT
#include "app/ui/rows/RowListAccessible.h"

#include "tests/app/ui/window/ColumnsTest.h"

#include <QAccessible>
#include <QApplication>

namespace {

class RowListAccessibleTest : public ColumnsTest {
protected:
    static QAccessibleInterface* heard(QWidget& widget) { return QAccessible::queryAccessibleInterface(&widget); }
    QAccessibleInterface* entry(int row) { return heard(entries())->child(row); }
    QAccessibleInterface* group(int row) { return heard(groups())->child(row); }
    static QStringList actions(QAccessibleInterface* row) { return row->actionInterface()->actionNames(); }
    static void act(QAccessibleInterface* row, const QString& name) { row->actionInterface()->doAction(name); }
    void addEntries(std::initializer_list<const char*> titles) {
        state->edit("Adım", [&](KdbxDatabase& database) {
            for (const auto* const title : titles)
                database.root.entries.append(entryTitled(title));
        });
    }
};

TEST_F(RowListAccessibleTest, aRowOffersWhatTheButtonsAtItsEndDo) {
    state->edit("Adım", [](KdbxDatabase& database) {
        auto& first = database.root.entries.mutableAt(0);
        first.username = "ayşe";
        first.autoTypeEnabled = false;
        database.root.entries.mutableAt(1).autoTypeEnabled = true;
    });
    const QString press = QAccessibleActionInterface::pressAction();
    const QString menu = QAccessibleActionInterface::showMenuAction();
    EXPECT_EQ(actions(entry(0)), (QStringList{press, "Kullanıcı adını kopyala", "Parolayı kopyala", menu}));
    EXPECT_EQ(actions(entry(1)),
              (QStringList{press, "Kullanıcı adını kopyala", "Parolayı kopyala", "Otomatik yaz", menu}));

    act(entry(0), "Kullanıcı adını kopyala");
    EXPECT_EQ(pasteboard.text(), "ayşe");
    EXPECT_TRUE(state->selectedEntryIDs().empty()) << "as the button does not select";
    act(entry(0), press);
    EXPECT_TRUE(entry(0)->state().selected);
}

TEST_F(RowListAccessibleTest, aRowsMenuIsOpenedFromItAndFoundAtTheRoot) {
    auto* const list = heard(entries());
    act(list->child(1), QAccessibleActionInterface::showMenuAction());
    auto* const menu = openMenu();
    ASSERT_NE(menu, nullptr);
    auto* const told = QAccessible::queryAccessibleInterface(menu);
    EXPECT_EQ(told->text(QAccessible::Name), list->child(1)->text(QAccessible::Name));
    auto* const above = QAccessible::queryAccessibleInterface(qApp);
    EXPECT_EQ(told->parent(), above);
    const int place = above->indexOfChild(told);
    ASSERT_GE(place, 0);
    EXPECT_EQ(above->child(place), told);
    EXPECT_EQ(place, above->childCount() - 1);

    told->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(openMenu(), nullptr) << "chosen from, it closes";
    EXPECT_EQ(above->childCount(), place);
}

TEST_F(RowListAccessibleTest, aGroupSaysWhetherItIsUnfoldedAndCanBeFolded) {
    EXPECT_TRUE(group(0)->state().expandable);
    EXPECT_TRUE(group(0)->state().expanded);
    EXPECT_FALSE(group(1)->state().expandable);
    act(group(0), "Daralt");
    EXPECT_EQ(heard(groups())->childCount(), 1);
    EXPECT_TRUE(group(0)->state().collapsed);
    EXPECT_FALSE(group(0)->state().expanded);
    act(group(0), "Genişlet");
    EXPECT_TRUE(group(0)->state().expanded);
}

TEST_F(RowListAccessibleTest, onlyAListWithTheKeyboardHasAFocusedRow) {
    groups().setFocus();
    groups().setCurrentIndex(groups().model()->index(0, 0));
    entries().setCurrentIndex(entries().model()->index(1, 0));
    EXPECT_TRUE(group(0)->state().focused);
    EXPECT_FALSE(entry(1)->state().focused);
    EXPECT_EQ(heard(groups())->focusChild(), group(0));
    EXPECT_EQ(heard(entries())->focusChild(), nullptr);
}

TEST_F(RowListAccessibleTest, aRowStaysTheSameOneWhereOthersComeAndGo) {
    addEntries({"Yeni"});
    auto* const list = heard(entries());
    const int last = list->childCount() - 1;
    auto* const row = list->child(last);
    const QString name = row->text(QAccessible::Name);
    EXPECT_EQ(list->indexOfChild(row), last);

    const auto gone = state->root()->entries[0].id;
    state->deleteEntries({gone});
    EXPECT_EQ(list->childCount(), last);
    EXPECT_EQ(list->child(last - 1), row);
    EXPECT_EQ(list->indexOfChild(row), last - 1);
    EXPECT_EQ(row->text(QAccessible::Name), name);
    EXPECT_EQ(list->child(last), nullptr);
}

TEST_F(RowListAccessibleTest, rowsAreSelectedAsThoseOfATable) {
    auto* const table = heard(entries())->tableInterface();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 2);
    EXPECT_TRUE(table->selectRow(0));
    EXPECT_TRUE(table->selectRow(1));
    EXPECT_EQ(table->selectedRows(), (QList<int>{0, 1}));
    EXPECT_EQ(table->selectedCells(), (QList<QAccessibleInterface*>{entry(0), entry(1)}));
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U);
    EXPECT_TRUE(table->unselectRow(0));
    EXPECT_FALSE(table->isRowSelected(0));
    EXPECT_EQ(table->selectedRowCount(), 1);
    EXPECT_FALSE(table->selectRow(2)) << "there is none";

    auto* const tree = heard(groups())->tableInterface();
    EXPECT_TRUE(tree->selectRow(0));
    EXPECT_TRUE(tree->selectRow(1));
    EXPECT_EQ(tree->selectedRows(), QList<int>{1}) << "one group at a time";
}

TEST_F(RowListAccessibleTest, aRowIsFoundWhereItStands) {
    auto* const list = heard(entries());
    const QPoint middle = entry(1)->rect().center();
    EXPECT_EQ(list->childAt(middle.x(), middle.y()), entry(1));
    EXPECT_FALSE(entry(1)->state().invisible);
    state->lock();
    EXPECT_EQ(list->childCount(), 0);
}

}  // namespace
