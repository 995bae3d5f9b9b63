// SPDX-License-Identifier: MIT
#include "app/ui/components/Labels.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/StrengthMeter.h"
#include "app/ui/components/TextField.h"
#include "app/ui/theme/Theme.h"
#include "tests/app/ui/WindowProbe.h"

#include <gtest/gtest.h>

#include <QTest>

namespace {

/// The columns of a picture that have ink of a label's colour, as runs: the letters, from left to right.
std::vector<std::pair<int, int>> lettersIn(QWidget& label) {
    const QImage picture = label.grab().toImage();
    std::vector<std::pair<int, int>> letters;
    const QRgb ground = picture.pixel(0, 0);
    for (int x = 0; x < picture.width(); ++x) {
        bool hasInk = false;
        for (int y = 0; y < picture.height(); ++y)
            hasInk |= picture.pixel(x, y) != ground;
        if (hasInk && (letters.empty() || letters.back().second != x - 1))
            letters.emplace_back(x, x);
        else if (hasInk)
            letters.back().second = x;
    }
    return letters;
}

TEST(FiguresTest, aCountHasItsThousandsApart) {
    EXPECT_EQ(Numbers::grouped(0), "0");
    EXPECT_EQ(Numbers::grouped(999), "999");
    EXPECT_EQ(Numbers::grouped(1234), "1.234");
    EXPECT_EQ(Numbers::grouped(std::size_t{100000}), "100.000");
}

TEST(FiguresTest, aNumberThatChangesInPlaceMovesNothingAndIsNotTornApart) {
    TextLabel usual("11", BrandFont::body(40), Qt::black);
    usual.resize(usual.sizeHint());
    const auto together = lettersIn(usual);
    ASSERT_EQ(together.size(), 2U);

    TextLabel label("11 sn", BrandFont::body(40), Qt::black);
    label.setTabularFigures(true);
    const QSize size = label.sizeHint();
    label.resize(size);
    const auto letters = lettersIn(label);
    ASSERT_GE(letters.size(), 4U);
    EXPECT_LE(letters[1].first - letters[0].second, together[1].first - together[0].second + 1);

    const int end = letters.back().second;
    label.setText("48 sn");
    EXPECT_EQ(label.sizeHint(), size);
    EXPECT_EQ(lettersIn(label).back().second, end);
}

TEST(FiguresTest, nothingIsWarnedOfBeforeTheFirstKey) {
    StrengthMeter meter;
    meter.resize(300, 40);
    meter.show();
    const auto colour = [&] {
        return WindowProbe::find<QLabel>(meter, "Çok zayıf")->palette().color(QPalette::WindowText);
    };
    meter.showStrengthOf(QString());
    EXPECT_EQ(colour(), QColor(Palette::textSoft));
    meter.showStrengthOf(QStringLiteral("a"));
    EXPECT_EQ(colour(), QColor(Palette::danger));
}

TEST(FiguresTest, aPlaceholderBeginsBehindTheCaret) {
    QWidget window;
    TextField field("Ad", &window);
    field.resize(300, 30);
    field.setPlaceholderText("Işık");  // whose first letter is a stroke as the caret is
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    field.clearFocus();  // without the caret itself
    const QImage picture = field.grab().toImage();
    const int caretEnd = field.inputMethodQuery(Qt::ImCursorRectangle).toRectF().toRect().left() + 6;
    int firstInk = 0;
    const int middle = picture.height() / 2;
    for (int x = 3; x < picture.width() && firstInk == 0; ++x)
        if (qGray(picture.pixel(x, middle)) > 60)
            firstInk = x;
    EXPECT_GT(firstInk, caretEnd);
    EXPECT_LT(firstInk, caretEnd + 8) << "and not far behind it";
}

}  // namespace
