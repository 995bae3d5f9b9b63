// SPDX-License-Identifier: MIT
#include "core/autotype/HotKeyHandler.h"

#include "tests/core/autotype/AutoTypeFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct FakeSession final : HotKeySession {
    [[nodiscard]] bool isLocked() const override { return locked; }
    [[nodiscard]] const KdbxDatabase* database() const override { return vault ? &*vault : nullptr; }
    void performAutoType(const KdbxEntry& entry) override {
        // Its own: the verb changes the vault while it still reads the entry.
        EXPECT_NE(&entry, &vault->root.entries.back());
        typedEntries.push_back(entry.title);
    }
    void setLastError(std::string_view message) override { errors.emplace_back(message); }

    bool locked = false;
    std::optional<KdbxDatabase> vault = KdbxDatabase();
    std::vector<std::string> typedEntries;
    std::vector<std::string> errors;
};

struct HotKeyHandlerTest : testing::Test, AutoTypeFixture {
    HotKeyHandlerTest() { desktop.applications.bringToFront(browser); }

    void add(const std::string& title, bool autoTypeEnabled = true) {
        KdbxEntry entry;
        entry.title = title;
        entry.autoTypeEnabled = autoTypeEnabled;
        session.vault->root.entries.append(entry);
    }

    std::shared_ptr<FakeApplication> browser = desktop.applications.start(200, "Banka - Giriş", "Gezgin");
    FakeSession session;
    HotKeyHandler handler{*service, session};
};

constexpr auto noMatch = "Ön plandaki pencereyle eşleşen bir kayıt bulunamadı.";

}  // namespace

TEST_F(HotKeyHandlerTest, typesTheEntryThatTheFrontWindowSpeaksOf) {
    add("posta");
    add("banka");

    handler.press();

    EXPECT_THAT(session.typedEntries, ElementsAre("banka"));
    EXPECT_THAT(session.errors, IsEmpty());
}

TEST_F(HotKeyHandlerTest, typesTheFirstOfSeveralMatches) {
    add("giriş");
    add("banka - giriş");

    handler.press();

    EXPECT_THAT(session.typedEntries, ElementsAre("giriş"));
}

TEST_F(HotKeyHandlerTest, passesOverEntriesThatWantNoAutoType) {
    add("banka", false);
    add("giriş");

    handler.press();

    EXPECT_THAT(session.typedEntries, ElementsAre("giriş"));
}

TEST_F(HotKeyHandlerTest, tellsThatNothingMatches) {
    add("posta");

    handler.press();

    EXPECT_THAT(session.typedEntries, IsEmpty());
    EXPECT_THAT(session.errors, ElementsAre(noMatch));
}

TEST_F(HotKeyHandlerTest, findsNoMatchWithoutATitle) {
    browser->title.reset();
    browser->name.reset();
    add("");

    handler.press();

    EXPECT_THAT(session.errors, ElementsAre(noMatch));
}

TEST_F(HotKeyHandlerTest, matchesTheApplicationsNameWithoutPermission) {
    desktop.keyboard.permission = false;
    add("banka");
    add("gezgin");

    handler.press();

    EXPECT_THAT(session.typedEntries, ElementsAre("gezgin"));
}

TEST_F(HotKeyHandlerTest, readsThePreviousApplicationsWindowWhileWeAreInFront) {
    desktop.applications.bringOurselvesToFront();
    add("brenvik");
    add("banka");

    handler.press();

    EXPECT_THAT(session.typedEntries, ElementsAre("banka"));
}

TEST_F(HotKeyHandlerTest, capturesTheTargetThatIsInFrontNow) {
    service->clearTarget();
    add("banka");

    handler.press();

    EXPECT_EQ(service->targetApplication(), browser);
}

TEST_F(HotKeyHandlerTest, isSilentWhileLockedAndYetCapturesTheTarget) {
    service->clearTarget();
    add("banka");
    session.locked = true;

    handler.press();

    EXPECT_THAT(session.typedEntries, IsEmpty());
    EXPECT_THAT(session.errors, IsEmpty());
    EXPECT_EQ(service->targetApplication(), browser);
}

TEST_F(HotKeyHandlerTest, isSilentWithoutAVault) {
    session.vault.reset();

    handler.press();

    EXPECT_THAT(session.errors, IsEmpty());
}

TEST_F(HotKeyHandlerTest, isSilentDuringARun) {
    begin({Action::text("a")});
    desktop.applications.bringToFront(editor);
    service->clearTarget();
    add("notlar");

    handler.press();

    EXPECT_THAT(session.typedEntries, IsEmpty());
    EXPECT_THAT(session.errors, IsEmpty());
    EXPECT_EQ(service->targetApplication(), nullptr);
}
