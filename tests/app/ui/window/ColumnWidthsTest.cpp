// SPDX-License-Identifier: MIT
#include "app/state/Preferences.h"
#include "app/ui/components/SearchField.h"
#include "app/ui/entries/EntryListView.h"
#include "app/ui/window/Columns.h"
#include "tests/app/ui/window/ColumnsTest.h"

#include <QAccessible>
#include <QSplitterHandle>

namespace {

class ColumnWidthsTest : public ColumnsTest {
protected:
    Columns& columns() { return *window.findChild<Columns*>(); }
    std::vector<int> widths() {
        QCoreApplication::processEvents();
        const auto sizes = columns().sizes();
        return {sizes.begin(), sizes.end()};
    }
    void resizeTo(int width) {
        window.resize(width, 680);
        QCoreApplication::processEvents();
    }
    void pressAtFocus(Qt::Key key) {
        QTest::keyClick(window.focusWidget(), key);
        QCoreApplication::processEvents();
    }
    void drag(int divider, int by) {
        auto* const handle = columns().handle(divider);
        const QPoint start = handle->rect().center();
        QTest::mousePress(handle, Qt::LeftButton, {}, start);
        QTest::mouseMove(handle, start + QPoint(by, 0));
        QTest::mouseRelease(handle, Qt::LeftButton, {}, start + QPoint(by, 0));
    }
};

TEST_F(ColumnWidthsTest, theUsualWindowHasTheIdealWidths) {
    EXPECT_EQ(widths()[0], 210);
    EXPECT_EQ(widths()[1], 340);
}

TEST_F(ColumnWidthsTest, inTheSmallestWindowEachHasItsLeastOrMore) {
    resizeTo(720);
    EXPECT_GE(widths()[0], 168);
    EXPECT_GE(widths()[1], 250);
    EXPECT_GE(widths()[2], 260);
}

TEST_F(ColumnWidthsTest, aWideWindowGivesAllOfThemMoreUpToTheirMost) {
    resizeTo(1900);
    EXPECT_GT(widths()[0], 210);
    EXPECT_GT(widths()[1], 340);
    EXPECT_GT(widths()[2], 468);
    resizeTo(3840);
    EXPECT_LE(widths()[0], 320);
    EXPECT_EQ(widths()[1], 560);
}

TEST_F(ColumnWidthsTest, whatTheUserDragsIsKeptAndADoubleClickGivesItUp) {
    const auto usual = widths();
    drag(1, 50);
    EXPECT_TRUE(QTest::qWaitFor([&] { return preferences->columnWidths().has_value(); }));
    EXPECT_NEAR(preferences->columnWidths()->groups, usual[0] + 50, 4);  // the divider is grabbed beside its line
    const auto dragged = widths();
    resizeTo(720);
    resizeTo(1020);
    EXPECT_EQ(widths(), dragged) << "a narrow window is no wish of the user's";

    QTest::mouseDClick(columns().handle(1), Qt::LeftButton);
    EXPECT_FALSE(preferences->columnWidths());
    EXPECT_EQ(widths(), usual);
}

TEST_F(ColumnWidthsTest, theSearchBeginsWhereTheListDoes) {
    auto* const search = window.findChild<SearchField*>();
    const auto start = [&](const QWidget& widget) { return widget.mapTo(&window, QPoint()).x(); };
    for (const int width : {1020, 1900, 3840, 720}) {
        resizeTo(width);
        EXPECT_EQ(start(*search), start(*window.findChild<EntryListView*>())) << width;
    }
    drag(1, 50);
    QCoreApplication::processEvents();
    EXPECT_EQ(start(*search), start(*window.findChild<EntryListView*>()));
    const int before = start(*search);
    QTest::keyClick(&window, Qt::Key_F9);
    QCoreApplication::processEvents();
    EXPECT_EQ(start(*search), before) << "it stays as the groups hide";
}

TEST_F(ColumnWidthsTest, theKeyboardGoesFromDividerToDividerAndBack) {
    entries().setFocus();
    pressAtFocus(Qt::Key_F8);
    EXPECT_EQ(window.focusWidget(), columns().handle(1));
    pressAtFocus(Qt::Key_F8);
    EXPECT_EQ(window.focusWidget(), columns().handle(2));
    pressAtFocus(Qt::Key_F8);
    EXPECT_EQ(window.focusWidget(), &entries());
    QTest::keyClick(&window, Qt::Key_F9);
    pressAtFocus(Qt::Key_F8);
    EXPECT_EQ(window.focusWidget(), columns().handle(2)) << "the first is hidden with the groups";
}

TEST_F(ColumnWidthsTest, theKeysMoveADividerAndItsPlaceIsKept) {
    const auto usual = widths();
    pressAtFocus(Qt::Key_F8);
    pressAtFocus(Qt::Key_Right);
    pressAtFocus(Qt::Key_Right);
    pressAtFocus(Qt::Key_Left);
    EXPECT_EQ(widths()[0], usual[0] + 10);
    pressAtFocus(Qt::Key_End);
    EXPECT_EQ(widths()[0], 320);
    pressAtFocus(Qt::Key_Right);
    EXPECT_EQ(widths()[0], 320) << "no further";
    pressAtFocus(Qt::Key_Home);
    EXPECT_EQ(widths()[0], 168);
    pressAtFocus(Qt::Key_F8);
    const int before = widths()[1];
    pressAtFocus(Qt::Key_Left);
    EXPECT_EQ(widths()[1], before - 10);
    const auto wanted = widths();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto& kept = preferences->columnWidths();
        return kept && kept->groups == wanted[0] && kept->entries == wanted[1];
    }));
    pressAtFocus(Qt::Key_Backspace);
    EXPECT_FALSE(preferences->columnWidths());
    EXPECT_EQ(widths(), usual);
}

TEST_F(ColumnWidthsTest, returnLeavesADividerWhereItIsAndEscapeTakesItBack) {
    const auto usual = widths();
    entries().setFocus();
    pressAtFocus(Qt::Key_F8);
    pressAtFocus(Qt::Key_Right);
    pressAtFocus(Qt::Key_Return);
    EXPECT_EQ(window.focusWidget(), &entries());
    EXPECT_EQ(widths()[0], usual[0] + 10);
    EXPECT_TRUE(QTest::qWaitFor([&] { return preferences->columnWidths().has_value(); }));

    pressAtFocus(Qt::Key_F8);
    pressAtFocus(Qt::Key_End);
    pressAtFocus(Qt::Key_Escape);
    EXPECT_EQ(window.focusWidget(), &entries());
    EXPECT_EQ(widths()[0], usual[0] + 10);
    EXPECT_EQ(preferences->columnWidths()->groups, usual[0] + 10);
}

TEST_F(ColumnWidthsTest, aScreenReaderHearsAndSetsTheWidth) {
    auto* const heard = QAccessible::queryAccessibleInterface(columns().handle(1));
    EXPECT_EQ(heard->role(), QAccessible::Separator);
    EXPECT_EQ(heard->text(QAccessible::Name), "Grup sütununun genişliği");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(columns().handle(2))->text(QAccessible::Name),
              "Kayıt sütununun genişliği");
    EXPECT_TRUE(heard->state().focusable);
    auto* const value = heard->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue(), 210);
    EXPECT_EQ(value->minimumValue(), 168);
    EXPECT_EQ(value->maximumValue(), 320);
    value->setCurrentValue(250);
    EXPECT_EQ(widths()[0], 250);
    EXPECT_EQ(value->currentValue(), 250);
    value->setCurrentValue(9000);
    EXPECT_EQ(widths()[0], 320);
}

TEST_F(ColumnWidthsTest, aDividerIsNoStopOfTab) {
    for (const int divider : {1, 2})
        EXPECT_EQ(columns().handle(divider)->focusPolicy() & Qt::TabFocus, 0);
}

TEST_F(ColumnWidthsTest, aStoredWidthBeyondTheLimitsIsBroughtIntoThem) {
    preferences->setColumnWidths(ColumnWidths{.groups = 1, .entries = 30000});
    resizeTo(1400);
    EXPECT_EQ(widths()[0], 168);
    EXPECT_EQ(widths()[1], 560);
}

TEST_F(ColumnWidthsTest, theGroupsAreHiddenShownAgainAndThereAfterTheNextUnlock) {
    const auto& tree = groups();
    QTest::keyClick(&window, Qt::Key_F9);
    EXPECT_FALSE(tree.isVisible());
    EXPECT_EQ(widths()[1], 340) << "the entries keep their width";
    QTest::keyClick(&window, Qt::Key_F9);
    EXPECT_TRUE(tree.isVisible());
    QTest::keyClick(&window, Qt::Key_F9);
    state->lock();
    state->unlock("parola", std::nullopt);
    QCoreApplication::processEvents();
    EXPECT_TRUE(tree.isVisible());
}

TEST_F(ColumnWidthsTest, aWindowTooNarrowForThreeColumnsHasTwo) {
    const auto& tree = groups();
    window.setMinimumSize(0, 0);
    resizeTo(560);
    EXPECT_FALSE(tree.isVisible());
    EXPECT_TRUE(entries().isVisible());
    resizeTo(720);
    EXPECT_TRUE(tree.isVisible());
}

TEST_F(ColumnWidthsTest, theHeadersLinesMeet) {
    const auto lineBelow = [this](const QListView& list) { return list.mapTo(&window, QPoint()).y(); };
    EXPECT_EQ(lineBelow(groups()), lineBelow(entries()));
}

TEST_F(ColumnWidthsTest, theEmptyPlacesOfTwoColumnsStandAtOneHeight) {
    state->edit("Adım", [](KdbxDatabase& database) { database.root.groups.mutableAt(0).entries.clear(); });
    click(groups(), 1);
    QCoreApplication::processEvents();
    const auto top = [this](const QString& title) {
        auto* const heading = WindowProbe::find<QLabel>(window, title);
        EXPECT_NE(heading, nullptr) << qPrintable(title);
        return heading == nullptr ? -1 : heading->mapTo(&window, QPoint()).y();
    };
    EXPECT_EQ(top("Bu grup boş"), top("Kayıt seçilmedi"));
    resizeTo(760);
    EXPECT_EQ(top("Bu grup boş"), top("Kayıt seçilmedi"));
}

}  // namespace
