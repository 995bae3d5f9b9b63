// SPDX-License-Identifier: MIT
#include "app/ui/components/RowText.h"
#include "app/ui/entries/EntryRowActions.h"
#include "app/ui/entries/EntryRowDelegate.h"
#include "app/ui/theme/Theme.h"
#include "tests/app/ui/window/ColumnsTest.h"

#include <QPainter>

namespace {

using namespace WindowProbe;

/// Rows as they are painted, in the widths that a column can have.
class EntryRowTest : public ColumnsTest {
protected:
    static constexpr int narrowest = 250;

    QImage painted(int width, QStyle::State state, Qt::LayoutDirection direction = Qt::LeftToRight) {
        QImage image(width, 52, QImage::Format_ARGB32_Premultiplied);
        image.fill(Palette::canvas);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        option.state = state;
        option.direction = direction;
        EntryRowDelegate().paint(&painter, option, entries().model()->index(0, 0));
        return image;
    }
    static bool isPlain(const QImage& image, const QRect& area) {
        for (int y = area.top(); y <= area.bottom(); ++y)
            for (int x = area.left(); x <= area.right(); ++x)
                if (image.pixel(x, y) != image.pixel(area.left(), area.top()))
                    return false;
        return true;
    }
    static std::string repeated(const std::string& text, int times) {
        std::string all;
        for (int time = 0; time < times; ++time)
            all += text;
        return all;
    }
    void give(const std::string& title, bool isExpired) {
        state->edit("Adım", [&](KdbxDatabase& database) {
            auto entry = entryTitled(title);
            entry.username = title;
            entry.expires = isExpired;
            entry.expiryTime = Timestamp{0};
            database.root.entries = {entry};
        });
    }
};

TEST_F(EntryRowTest, noTextReachesUnderTheActionsOrTheEdge) {
    for (const auto& title :
         {repeated("Ş", 300), repeated("W", 300), repeated("שלום ", 20), repeated("👩‍👩‍👧‍👦🔐", 20)})
        for (const bool isExpired : {false, true})
            for (const int width : {narrowest, 340, 560}) {
                give(title, isExpired);
                const int actions = EntryRowActions::widthFor(true);
                const QRect end(width - 16 - actions, 4, actions, 44);
                EXPECT_TRUE(isPlain(painted(width, QStyle::State_Enabled | QStyle::State_MouseOver), end))
                    << title << width << isExpired;
                EXPECT_TRUE(isPlain(painted(width, QStyle::State_Enabled | QStyle::State_MouseOver, Qt::RightToLeft),
                                    {16, 4, actions, 44}))
                    << title << width << isExpired;
                EXPECT_TRUE(isPlain(painted(width, QStyle::State_Enabled), {width - 16, 4, 16, 44}))
                    << title << width << isExpired;
            }
}

TEST_F(EntryRowTest, lineBreaksInATitleStayOnTheLine) {
    give("bir\niki", false);
    const auto broken = painted(narrowest, QStyle::State_Enabled);
    give("bir iki", false);
    EXPECT_EQ(broken, painted(narrowest, QStyle::State_Enabled));
}

TEST_F(EntryRowTest, aTextOfMegabytesIsCutBeforeItIsMeasured) {
    give(std::string(8 << 20, 'a'), false);
    EXPECT_LT(textsOf(entries())[0].size(), 5000U);
    EXPECT_LT(RowText::line(QString(8 << 20, 'a')).size(), 500);
}

TEST_F(EntryRowTest, theSelectedRowAndTheRowUnderThePointerStandOut) {
    give("Banka", false);
    const auto ground = [&](QStyle::State state) { return painted(340, state).pixelColor(330, 26); };
    EXPECT_EQ(ground(QStyle::State_Enabled), QColor(Palette::canvas));
    EXPECT_EQ(ground(QStyle::State_MouseOver), QColor(Palette::hover));
    const auto selected = ground(QStyle::State_Selected);
    EXPECT_GT(selected.red(), ground(QStyle::State_MouseOver).red());
    EXPECT_EQ(ground(QStyle::State_Selected | QStyle::State_MouseOver), selected);
}

}  // namespace
