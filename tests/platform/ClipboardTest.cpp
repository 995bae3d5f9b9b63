// SPDX-License-Identifier: MIT
#include "platform/qt/DesktopClipboard.h"
#include "platform/qt/SecretMimeData.h"
#include "platform/x11/ClipboardChangeCount.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 2> markers{"org.example.First", "org.example.Second"};

class ClipboardTest : public testing::Test {
protected:
    static const QMimeData& data() { return *QGuiApplication::clipboard()->mimeData(); }

    const bool offscreen = qputenv("QT_QPA_PLATFORM", "offscreen");
    int argumentCount = 1;
    char name[8] = "brenvik";
    char* arguments[2] = {name, nullptr};
    QGuiApplication application{argumentCount, arguments};
    std::unique_ptr<Clipboard> clipboard = desktopClipboard();
};

}  // namespace

TEST_F(ClipboardTest, holdsATextWithoutMarkers) {
    clipboard->setText("açık metin");

    EXPECT_EQ(clipboard->text(), "açık metin");
    EXPECT_EQ(data().formats(), QStringList("text/plain"));
}

TEST_F(ClipboardTest, holdsASecretUnderItsMarkersAndTheHint) {
    clipboard->setSecret("gizli ğ", markers);

    EXPECT_EQ(clipboard->text(), "gizli ğ");
    EXPECT_EQ(data().formats(),
              QStringList({"org.example.First", "org.example.Second", "x-kde-passwordManagerHint", "text/plain"}));
    EXPECT_EQ(data().data("x-kde-passwordManagerHint"), "secret");
    EXPECT_EQ(data().data("text/plain"), "gizli ğ");
    for (const char* marker : {"org.example.First", "org.example.Second"}) {
        EXPECT_TRUE(data().hasFormat(marker));
        EXPECT_TRUE(data().data(marker).isEmpty());
    }
    EXPECT_FALSE(data().hasFormat("text/html"));
    EXPECT_TRUE(data().data("text/html").isEmpty());
}

TEST_F(ClipboardTest, holdsTheEmptyTextUnderTheHintAloneAfterASecret) {
    clipboard->setSecret("gizli", markers);

    clipboard->setText("");

    EXPECT_EQ(clipboard->text(), "");
    EXPECT_EQ(data().formats(), QStringList({"x-kde-passwordManagerHint", "text/plain"}));
    EXPECT_EQ(data().data("x-kde-passwordManagerHint"), "secret");
    EXPECT_TRUE(data().hasText());
    EXPECT_TRUE(data().data("text/plain").isEmpty());
}

TEST_F(ClipboardTest, overwritesASecretThatIsReplaced) {
    clipboard->setSecret("gizli", markers);
    const QByteArray pasted = data().data("text/plain");
    ASSERT_EQ(pasted, "gizli");

    clipboard->setText("");

    EXPECT_EQ(pasted, QByteArray(5, '\0'));
}

TEST_F(ClipboardTest, countsItsOwnWritesAndNoReading) {
    const auto first = clipboard->changeCount();
    clipboard->setSecret("gizli", markers);
    const auto second = clipboard->changeCount();
    EXPECT_GT(second, first);

    EXPECT_EQ(clipboard->text(), "gizli");
    EXPECT_EQ(clipboard->changeCount(), second);

    clipboard->setSecret("gizli", markers);
    EXPECT_GT(clipboard->changeCount(), second);
}

TEST(ClipboardChangeCountTest, isMissingWithoutADisplay) {
    qputenv("DISPLAY", ":65000");

    EXPECT_EQ(ClipboardChangeCount::connected(), nullptr);
}
