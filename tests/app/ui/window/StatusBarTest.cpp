// SPDX-License-Identifier: MIT
#include "app/ui/theme/Theme.h"
#include "app/ui/window/StatusBar.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StatusBarTest : public WindowTest {
protected:
    StatusBar bar{*state, clipboard};

    StatusBarTest() {
        bar.resize(1020, bar.height());
        bar.show();
        unlock();
    }

    /// The texts and buttons that show, from left to right.
    std::vector<std::string> shown() const {
        QCoreApplication::processEvents();
        std::vector<std::pair<int, std::string>> found;
        for (auto* const label : bar.findChildren<QLabel*>())
            if (label->isVisibleTo(&bar))
                found.emplace_back(label->x(), label->text().toStdString());
        for (auto* const button : bar.findChildren<QAbstractButton*>())
            if (button->isVisibleTo(&bar))
                found.emplace_back(
                    button->x(), (button->text().isEmpty() ? button->accessibleName() : button->text()).toStdString());
        std::ranges::sort(found);
        std::vector<std::string> texts;
        for (auto& [left, text] : found)
            texts.push_back(std::move(text));
        return texts;
    }
    QColor colourOf(const QString& text) const {
        return find<QLabel>(bar, text)->palette().color(QPalette::WindowText);
    }
};

TEST_F(StatusBarTest, showsNothingWhereThereIsNothingToSay) {
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(StatusBarTest, showsAllThatThereIsInItsOrder) {
    clipboard.copySecret("gizli");
    state->setStatusMessage("Parola kopyalandı");
    state->setLastError("“Ev.kdbx” kaydedilemedi.");
    rename("Bankam");
    EXPECT_THAT(shown(), ElementsAre("Pano 12 sn sonra temizlenecek", "Temizle", "Parola kopyalandı",
                                     "“Ev.kdbx” kaydedilemedi.", "Hatayı kapat", "Kaydedilmemiş değişiklik"));
    EXPECT_EQ(colourOf("Parola kopyalandı"), Palette::success);
    EXPECT_EQ(colourOf("“Ev.kdbx” kaydedilemedi."), Palette::danger);
    EXPECT_EQ(colourOf("Kaydedilmemiş değişiklik"), Palette::textMuted);
    auto* const unsaved = find<QLabel>(bar, "Kaydedilmemiş değişiklik");
    EXPECT_EQ(unsaved->geometry().right(), bar.width() - Metric::m - 1) << "on the right, behind the spacer";
}

TEST_F(StatusBarTest, countsDownOnceASecondAndThenHasNothingToClear) {
    clipboard.copySecret("gizli");
    EXPECT_THAT(shown(), ElementsAre("Pano 12 sn sonra temizlenecek", "Temizle"));
    clock.advance(std::chrono::seconds(1));
    EXPECT_THAT(shown(), ElementsAre("Pano 11 sn sonra temizlenecek", "Temizle"));
    clock.advance(std::chrono::seconds(10));
    EXPECT_THAT(shown(), ElementsAre("Pano 1 sn sonra temizlenecek", "Temizle"));
    clock.advance(std::chrono::seconds(1));
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(StatusBarTest, theCountdownCanBeCutShort) {
    clipboard.copySecret("gizli");
    click(bar, "Temizle");
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(StatusBarTest, aNumberThatChangesMovesNothing) {
    clipboard.copySecret("gizli");
    QCoreApplication::processEvents();
    auto* const button = WindowProbe::button(bar, "Temizle");
    const int left = button->x();
    for (int second = 11; second >= 10; --second) {
        clock.advance(std::chrono::seconds(1));
        QCoreApplication::processEvents();
        EXPECT_EQ(button->x(), left) << second;
    }
}

TEST_F(StatusBarTest, aFailureStandsUntilItIsDismissed) {
    state->setLastError("Olmadı.");
    clock.advance(std::chrono::seconds(60));
    EXPECT_THAT(shown(), ElementsAre("Olmadı.", "Hatayı kapat"));
    EXPECT_EQ(WindowProbe::button(bar, "Hatayı kapat")->toolTip(), "Hatayı kapat");
    click(bar, "Hatayı kapat");
    EXPECT_FALSE(state->lastError());
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(StatusBarTest, whatIsOnlyWorthKnowingDoesNotLookLikeAFailure) {
    state->setNotice("Eski sürüm saklandı.");
    EXPECT_THAT(shown(), ElementsAre("Eski sürüm saklandı.", "Bildirimi kapat"));
    EXPECT_EQ(colourOf("Eski sürüm saklandı."), Palette::text);
    state->setLastError("Olmadı.");
    EXPECT_THAT(shown(), ElementsAre("Olmadı.", "Hatayı kapat"));
    EXPECT_EQ(colourOf("Olmadı."), Palette::danger);
    state->setNotice("Eski sürüm saklandı.");
    click(bar, "Bildirimi kapat");
    EXPECT_FALSE(state->lastError());
    EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(StatusBarTest, aMessageThatIsTooLongIsElidedAndHasItAllAsItsTooltip) {
    clipboard.copySecret("gizli");
    rename("Bankam");
    const std::string failure = "“Ev.kdbx” kaydedilemedi:\n" + std::string(400, 'w');
    state->setLastError(failure);
    bar.resize(720, bar.height());
    QCoreApplication::processEvents();
    bar.grab();

    auto* const label = find<QLabel>(bar, QString::fromStdString(failure));
    EXPECT_EQ(label->toolTip().toStdString(), failure);
    for (const auto* whole : {"Pano 12 sn sonra temizlenecek", "Kaydedilmemiş değişiklik"})
        EXPECT_EQ(find<QLabel>(bar, whole)->toolTip(), "") << whole;
    EXPECT_LE(WindowProbe::button(bar, "Hatayı kapat")->geometry().right(),
              find<QLabel>(bar, "Kaydedilmemiş değişiklik")->x());
    EXPECT_EQ(bar.height(), 30);

    state->setLastError("Olmadı.");
    QCoreApplication::processEvents();
    bar.grab();
    EXPECT_EQ(label->toolTip(), "");
}

TEST_F(StatusBarTest, aLongFailureLeavesTheConfirmationItsRoom) {
    state->setStatusMessage("Parola kopyalandı");
    state->setLastError(std::string(400, 'w'));
    bar.resize(720, bar.height());
    QCoreApplication::processEvents();
    bar.grab();
    EXPECT_EQ(find<QLabel>(bar, "Parola kopyalandı")->toolTip(), "");
}

TEST_F(StatusBarTest, itsControlsAreReachedByKeyboard) {
    clipboard.copySecret("gizli");
    state->setLastError("Olmadı.");
    QCoreApplication::processEvents();
    auto* const clear = WindowProbe::button(bar, "Temizle");
    clear->setFocus();
    QTest::keyClick(clear, Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), WindowProbe::button(bar, "Hatayı kapat"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_FALSE(state->lastError());
    QTest::keyClick(clear, Qt::Key_Space);
    EXPECT_EQ(pasteboard.text(), "");
}

}  // namespace
