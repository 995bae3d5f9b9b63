// SPDX-License-Identifier: MIT
#include "tests/app/ui/editor/EntryEditFixture.h"

namespace {

using Route = AppState::Route;

class IconPickerTest : public EntryEditFixture {};

TEST_F(IconPickerTest, anIconIsChosenFromTheGridWithTheArrowKeys) {
    open(Route::editEntry(bank().id));
    click("Simge seç");
    EXPECT_EQ(focusName(), "Anahtar");
    press(Qt::Key_Right);
    EXPECT_EQ(focusName(), "Dünya");
    press(Qt::Key_Down);
    EXPECT_EQ(focusName(), "Not") << "six in a row";
    press(Qt::Key_Up);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(focusName(), "Anahtar") << "nothing lies before the first";
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_FALSE(has("Dünya"));
    EXPECT_EQ(focusName(), "Simge seç");
    EXPECT_EQ(button("Simge seç").accessibleDescription(), "Dünya");
    EXPECT_NE(state->route(), std::nullopt) << "Return was the icon's";
    click("Kaydet");
    EXPECT_EQ(bank().iconID, 1);
}

TEST_F(IconPickerTest, everyIconHasAButtonAndANameOfItsOwn) {
    open(Route::editEntry(bank().id));
    click("Simge seç");
    const auto* const grid = QApplication::focusWidget()->parentWidget();
    QStringList names;
    for (const auto* const choice : grid->findChildren<QAbstractButton*>()) {
        EXPECT_EQ(choice->size(), QSize(32, 32));
        EXPECT_EQ(choice->toolTip(), choice->accessibleName());
        names.append(choice->accessibleName());
    }
    EXPECT_EQ(names.size(), 37) << "the key, and those of the table";
    EXPECT_FALSE(names.contains(QString()));
    EXPECT_EQ(names.removeDuplicates(), 0);
    EXPECT_EQ(grid->width(), 6 * 32 + 5 * 8);
}

TEST_F(IconPickerTest, theIconGridGoesWithTheVault) {
    open(Route::editEntry(bank().id));
    click("Simge seç");
    state->lock();
    QCoreApplication::processEvents();
    EXPECT_FALSE(has("Dünya"));
    EXPECT_EQ(focusName(), "Ana parola");
}

TEST_F(IconPickerTest, theIconGridOpensAtTheCurrentIconAndClosesWithEscape) {
    auto entry = fullEntry();
    entry.iconID = 68;
    editThis(entry);
    button("Simge seç").setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(focusName(), "Araba");
    EXPECT_EQ(QApplication::focusWidget()->accessibleDescription(), "Seçili");
    press(Qt::Key_Escape);
    EXPECT_FALSE(has("Araba"));
    EXPECT_EQ(focusName(), "Simge seç");
    EXPECT_NE(state->route(), std::nullopt);
}

TEST_F(IconPickerTest, anIconNumberWithoutADrawingSurvivesAnEdit) {
    auto entry = fullEntry();
    entry.iconID = -7;
    editThis(entry);
    click("Simge seç");
    EXPECT_EQ(focusName(), "Anahtar");
    press(Qt::Key_Escape);
    click("Kaydet");
    EXPECT_EQ(edited().iconID, -7);
}

}  // namespace
