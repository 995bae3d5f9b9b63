// SPDX-License-Identifier: MIT
#include "app/state/StatusLine.h"

#include "tests/support/FakeScheduler.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class StatusLineTest : public ::testing::Test {
protected:
    FakeScheduler clock;
    std::optional<StatusLine> line;
    int messageChanges = 0;
    int errorChanges = 0;

    StatusLineTest() {
        line.emplace(clock);
        QObject::connect(&*line, &StatusLine::messageChanged, [this] { ++messageChanges; });
        QObject::connect(&*line, &StatusLine::errorChanged, [this] { ++errorChanges; });
    }
};

TEST_F(StatusLineTest, startsEmpty) {
    EXPECT_EQ(line->message(), std::nullopt);
    EXPECT_EQ(line->error(), std::nullopt);
}

TEST_F(StatusLineTest, showsAConfirmationForTwoSeconds) {
    line->flash("Kaydedildi");
    clock.advance(1999ms);
    EXPECT_EQ(line->message(), "Kaydedildi");
    clock.advance(1ms);
    EXPECT_EQ(line->message(), std::nullopt);
}

TEST_F(StatusLineTest, clearsAMessageWithTheTimerOfTheOneBeforeIt) {
    line->flash("Kaydedildi");
    clock.advance(1500ms);
    line->flash("Parola kopyalandı");
    clock.advance(500ms);
    EXPECT_EQ(line->message(), std::nullopt);
}

TEST_F(StatusLineTest, keepsAMessageThatIsSetWithoutATimer) {
    line->setMessage("Hazır");
    clock.advance(1h);
    EXPECT_EQ(line->message(), "Hazır");
}

TEST_F(StatusLineTest, isOutlivedByItsTimers) {
    line->flash("Kaydedildi");
    line.reset();
    clock.advance(2s);
}

TEST_F(StatusLineTest, keepsAFailureUntilItIsDismissed) {
    line->setError("Disk dolu");
    clock.advance(1h);
    EXPECT_EQ(line->error(), "Disk dolu");
    line->setError(std::nullopt);
    EXPECT_EQ(line->error(), std::nullopt);
}

TEST_F(StatusLineTest, takesBackANoticeThatStillShows) {
    line->setPassingNotice("Dosya yok");
    EXPECT_EQ(line->error(), "Dosya yok");
    line->takeBackNotice();
    EXPECT_EQ(line->error(), std::nullopt);
}

TEST_F(StatusLineTest, takesBackNoFailureButTheNotice) {
    line->setPassingNotice("Dosya yok");
    line->setError("Disk dolu");
    line->takeBackNotice();
    EXPECT_EQ(line->error(), "Disk dolu");
}

TEST_F(StatusLineTest, takesANoticeBackOnce) {
    line->setPassingNotice("Dosya yok");
    line->takeBackNotice();
    line->setError("Dosya yok");
    line->takeBackNotice();
    EXPECT_EQ(line->error(), "Dosya yok");
}

TEST_F(StatusLineTest, reportsEachChangeOnce) {
    line->setMessage("Hazır");
    line->setMessage("Hazır");
    line->setError("Disk dolu");
    line->setError("Disk dolu");
    EXPECT_EQ(messageChanges, 1);
    EXPECT_EQ(errorChanges, 1);
}

}  // namespace
