// SPDX-License-Identifier: MIT
#include "tests/core/autotype/AutoTypeFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct TargetTrackingTest : testing::Test, AutoTypeFixture {
    std::shared_ptr<FakeApplication> browser = desktop.applications.start(200, "Banka - Giriş", "Gezgin");
};

}  // namespace

TEST_F(TargetTrackingTest, beginsWithTheApplicationInFront) {
    EXPECT_EQ(service->targetApplication(), editor);
}

TEST_F(TargetTrackingTest, hasNoTargetBeforeItBegins) {
    const AutoTypeService untracked({desktop.keyboard, desktop.layout, desktop.applications, clock});

    EXPECT_EQ(untracked.targetApplication(), nullptr);
}

TEST_F(TargetTrackingTest, followsTheFront) {
    desktop.applications.bringToFront(browser);

    EXPECT_EQ(service->targetApplication(), browser);
}

TEST_F(TargetTrackingTest, keepsTheTargetWhileWeAreInFront) {
    desktop.applications.bringOurselvesToFront();

    EXPECT_EQ(service->targetApplication(), editor);
    EXPECT_EQ(service->captureTarget(), editor);
}

TEST_F(TargetTrackingTest, keepsTheTargetWhileNothingIsInFront) {
    desktop.applications.bringToFront(nullptr);

    EXPECT_EQ(service->targetApplication(), editor);
    EXPECT_EQ(service->captureTarget(), editor);
}

TEST_F(TargetTrackingTest, capturesNothingAnewWhenItIsBegunAgain) {
    service->clearTarget();

    service->startTrackingFrontmostApplication();

    EXPECT_EQ(service->targetApplication(), nullptr);
    EXPECT_EQ(service->captureTarget(), editor);
}

TEST_F(TargetTrackingTest, failsWithoutATarget) {
    service->clearTarget();

    EXPECT_EQ(type({Action::text("a")}), noTarget);

    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(TargetTrackingTest, failsWhenTheTargetHasQuit) {
    editor->terminated = true;

    EXPECT_EQ(type({Action::text("a")}), noTarget);

    EXPECT_EQ(editor->activations, 0);
}

TEST_F(TargetTrackingTest, asksForNothingWhenTheTargetIsInFront) {
    EXPECT_EQ(type({Action::text("a")}), std::nullopt);

    EXPECT_EQ(editor->activations, 0);
    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0"));
}

TEST_F(TargetTrackingTest, knowsTheTargetByItsProcess) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    const auto outcome = begin({Action::text("a")});
    clock.advance(50ms);
    desktop.applications.bringToFront(desktop.applications.start(100, "ikinci pencere", "Notlar"));

    clock.advance(1s);

    EXPECT_TRUE(outcome->ended);
    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_THAT(typed(), ElementsAre("180 down 0", "180 up 0"));
}

TEST_F(TargetTrackingTest, bringsTheTargetToTheFrontOnce) {
    desktop.applications.bringOurselvesToFront();

    EXPECT_EQ(type({Action::text("a")}), std::nullopt);

    EXPECT_EQ(editor->activations, 1);
    EXPECT_EQ(desktop.applications.frontmost(), editor);
    EXPECT_THAT(typed(), ElementsAre("120 down 0", "120 up 0"));
}

TEST_F(TargetTrackingTest, looksEveryTwentyMillisecondsForTheTargetToComeToTheFront) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    begin({Action::text("a")});
    clock.advance(505ms);
    desktop.applications.bringToFront(editor);

    clock.advance(1s);

    EXPECT_EQ(editor->activations, 1);
    EXPECT_THAT(typed(), ElementsAre("640 down 0", "640 up 0"));
}

TEST_F(TargetTrackingTest, typesIntoATargetThatComesToTheFrontJustInTime) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    const auto outcome = begin({Action::text("a")});
    clock.advance(1975ms);
    desktop.applications.bringToFront(editor);

    clock.advance(1s);

    EXPECT_EQ(outcome->failure, std::nullopt);
    EXPECT_THAT(typed(), ElementsAre("2100 down 0", "2100 up 0"));
}

TEST_F(TargetTrackingTest, failsWhenTheTargetDoesNotComeToTheFrontInTime) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    const auto outcome = begin({Action::text("a")});
    clock.advance(1999ms);
    EXPECT_FALSE(outcome->ended);

    clock.advance(1ms);

    EXPECT_EQ(outcome->failure, "Notlar uygulaması ön plana getirilemedi.");
    EXPECT_EQ(editor->activations, 1);
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(TargetTrackingTest, callsATargetWithoutANameAnApplication) {
    editor->comesToFront = false;
    editor->name.reset();
    desktop.applications.bringOurselvesToFront();

    EXPECT_EQ(type({Action::text("a")}), "Uygulama uygulaması ön plana getirilemedi.");
}

TEST_F(TargetTrackingTest, waitsForTheTargetThatItAskedForThoughAnotherComesToTheFront) {
    editor->comesToFront = false;
    desktop.applications.bringOurselvesToFront();
    const auto outcome = begin({Action::text("a")});
    clock.advance(100ms);
    desktop.applications.bringToFront(browser);

    clock.advance(10s);

    EXPECT_EQ(outcome->failure, "Notlar uygulaması ön plana getirilemedi.");
    EXPECT_THAT(typed(), IsEmpty());
}

TEST_F(TargetTrackingTest, readsTheTitleOfTheTargetWhileWeAreInFront) {
    desktop.applications.bringOurselvesToFront();

    EXPECT_EQ(service->frontmostWindowTitle(), "mektup.txt - Notlar");
}

TEST_F(TargetTrackingTest, readsTheTitleOfTheFrontWithoutATarget) {
    service->clearTarget();

    EXPECT_EQ(service->frontmostWindowTitle(), "mektup.txt - Notlar");
    desktop.applications.bringOurselvesToFront();
    EXPECT_EQ(service->frontmostWindowTitle(), "Brenvik");
}

TEST_F(TargetTrackingTest, readsNoTitleWithNeither) {
    desktop.applications.bringToFront(nullptr);
    service->clearTarget();

    EXPECT_EQ(service->frontmostWindowTitle(), std::nullopt);
}

TEST_F(TargetTrackingTest, takesTheApplicationsNameForATitleThatIsEmptyOrUnknown) {
    editor->title = "";
    EXPECT_EQ(service->frontmostWindowTitle(), "Notlar");

    editor->title.reset();
    EXPECT_EQ(service->frontmostWindowTitle(), "Notlar");

    editor->name.reset();
    EXPECT_EQ(service->frontmostWindowTitle(), std::nullopt);
}

TEST_F(TargetTrackingTest, takesTheApplicationsNameWithoutPermission) {
    desktop.keyboard.permission = false;

    EXPECT_EQ(service->frontmostWindowTitle(), "Notlar");
}
