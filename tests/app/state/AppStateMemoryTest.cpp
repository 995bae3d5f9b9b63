// SPDX-License-Identifier: MIT
#include "core/container/KdbxFile.h"
#include "core/container/KdbxKeys.h"
#include "tests/app/state/StateFakes.h"
#include "tests/support/MemoryScan.h"

namespace {

using namespace std::chrono_literals;

/// A clipboard that knows nothing but how long its text is: what lies there is not this process's to wipe.
class BlindClipboard final : public Clipboard {
public:
    std::size_t length = 0;

    std::int64_t changeCount() override { return m_changes; }
    void setText(std::string_view text) override {
        length = text.size();
        ++m_changes;
    }
    void setSecret(std::string_view text, std::span<const std::string_view>) override { setText(text); }
    std::string text() override { return {}; }

private:
    std::int64_t m_changes = 0;
};

/// Typing that drops what it is given, as it does at its end.
class DroppingAutoTyping final : public AutoTyping {
public:
    std::size_t actions = 0;

    void perform(std::vector<AutoTypeAction> list, Done done) override {
        actions += list.size();
        done(nullptr);
    }
    void stop() override {}
};

/// A session with the real vault code, whose secrets nobody else in the process holds.
class AppStateMemoryTest : public ::testing::Test {
protected:
    const std::filesystem::path file = "/kasa/Ev.kdbx";
    const MaskedSecret masterPassword = MaskedSecret::text();
    const MaskedSecret entryPassword = MaskedSecret::text();
    const MaskedSecret laterPassword = MaskedSecret::text();
    const MaskedSecret protectedField = MaskedSecret::text();

    FakeSettings settings;
    FakeFiles files;
    FakeBookmarks bookmarks;
    FakeScheduler clock;
    FakeBackgroundWork background;
    BlindClipboard pasteboard;
    ClipboardService clipboard{pasteboard, clock};
    Preferences preferences{settings, clipboard};
    FakeWorkspace workspace;
    DroppingAutoTyping autoTyping;
    AppState state{{.preferences = preferences,
                    .files = files,
                    .bookmarks = bookmarks,
                    .scheduler = clock,
                    .background = background,
                    .clipboard = clipboard,
                    .codec = {.load = KdbxFile::load, .save = KdbxFile::save},
                    .workspace = workspace,
                    .autoTyping = autoTyping}};
    MemoryScan memory;

    static SecureString secureString(const MaskedSecret& secret) {
        auto text = secret.clear();
        SecureString secure(text);
        wipe(text);
        return secure;
    }

    KdbxKey key() const { return {masterPassword.clear(), std::nullopt}; }

    void writeVault() {
        auto database = smallVault();
        database.kdf = {KdfSettings::AesKdf{.rounds = 10}};
        auto& entry = database.root.entries.mutableAt(0);
        entry.password = secureString(entryPassword);
        entry.customFields["PIN"] = protectedField.clear();
        entry.protectedCustomFields = {"PIN"};
        files.contents[file] = KdbxFile::save(database, key());
    }

    void unlock() {
        state.prepare(file);
        state.unlock(masterPassword.clear(), std::nullopt);
        ASSERT_FALSE(state.isLocked()) << state.lastError().value_or("");
    }

    const KdbxEntry& bank() const { return state.root()->entries[0]; }

    void useEverything() {
        state.setSearchText("ban");
        EXPECT_EQ(state.visibleEntries().size(), 1U);
        state.clearSearch();
        state.setSelectedEntryIDs({bank().id});
        state.copyPassword();
        state.performAutoType();
        clock.advance(1s);
        state.duplicateEntries({bank().id});
        {
            auto entry = bank();
            entry.password = secureString(laterPassword);
            entry.notes = "değişti";
            state.updateEntry(std::move(entry));
        }
        state.save();
        state.undo();
        state.redo();
        state.moveEntriesToEnd({bank().id});
        state.deleteEntries({state.root()->entries[1].id});
        state.undo();
    }

    /// The keys of the file that was written last.
    std::vector<MaskedSecret> keysOfTheFile() const {
        std::vector<MaskedSecret> keys;
        const auto composite = KdbxKeys::compositeKey(key());
        const auto derived = KdbxKeys::derive(composite, KdbxHeader::parse(files.contents.at(file)));
        for (const auto& bytes : {composite, derived.master, derived.transformed, derived.hmac.value()})
            keys.push_back(MaskedSecret::of(bytes));
        return keys;
    }

    void expectNothingLeft() {
        EXPECT_EQ(memory.occurrences(masterPassword), 0) << "the master password";
        EXPECT_EQ(memory.occurrences(entryPassword), 0) << "an entry's password";
        EXPECT_EQ(memory.occurrences(laterPassword), 0) << "an entry's later password";
        EXPECT_EQ(memory.occurrences(protectedField), 0) << "a protected field";
        for (const auto& secret : keysOfTheFile())
            EXPECT_EQ(memory.occurrences(secret), 0) << "a key";
    }
};

TEST_F(AppStateMemoryTest, theScanFindsWhatIsThere) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    EXPECT_EQ(memory.occurrences(entryPassword), 0);

    auto text = entryPassword.clear();
    EXPECT_EQ(memory.occurrences(entryPassword), 1);
    wipe(text);

    writeVault();
    unlock();
    EXPECT_GE(memory.occurrences(masterPassword), 1) << "an open session saves under it";
    EXPECT_GE(memory.occurrences(protectedField), 1);
}

TEST_F(AppStateMemoryTest, anOpenSessionHoldsAnEntrysPasswordMasked) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    unlock();

    useEverything();

    EXPECT_GT(pasteboard.length, 0U);
    EXPECT_EQ(autoTyping.actions, 3U);  // without a user name
    EXPECT_EQ(memory.occurrences(entryPassword), 0);
    EXPECT_EQ(memory.occurrences(laterPassword), 0);
}

TEST_F(AppStateMemoryTest, aLockedSessionLeavesNoSecretInMemory) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    unlock();
    useEverything();

    state.lock();

    expectNothingLeft();
}

TEST_F(AppStateMemoryTest, aFailedUnlockLeavesNoSecretInMemory) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    state.prepare(file);
    state.unlock(laterPassword.clear(), std::nullopt);
    EXPECT_EQ(state.lastError(), "Ana parola veya anahtar dosyası hatalı.");

    files.unreadable[file] = "okunamıyor";
    state.unlock(masterPassword.clear(), std::nullopt);

    expectNothingLeft();
}

TEST_F(AppStateMemoryTest, aSessionThatIsDroppedForAnotherFileLeavesNoSecretInMemory) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    unlock();
    state.setSearchText("ban");
    EXPECT_EQ(state.visibleEntries().size(), 1U);

    state.prepare("/kasa/İş.kdbx");

    expectNothingLeft();
}

TEST_F(AppStateMemoryTest, theStepsOfADroppedSessionLeaveNoSecretInMemory) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    unlock();
    useEverything();

    state.prepare("/kasa/İş.kdbx");

    EXPECT_TRUE(state.canUndo());
    expectNothingLeft();
}

TEST_F(AppStateMemoryTest, aNewVaultLeavesNoSecretOfTheOldOneInMemory) {
    if (!BRENVIK_MEMORY_IS_SCANNABLE)
        GTEST_SKIP() << "the sanitizer keeps what is freed";
    writeVault();
    unlock();
    useEverything();

    state.createDatabase("/kasa/İş.kdbx", "parola", std::nullopt);

    ASSERT_EQ(state.databaseName(), "İş");
    expectNothingLeft();
}

}  // namespace
