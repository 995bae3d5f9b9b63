// SPDX-License-Identifier: MIT
#include "app/state/VaultWatch.h"

#include "core/platform/FileWatcher.h"
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Optional;

/// Notices when a test says so.
class FakeFileWatcher final : public FileWatcher {
public:
    std::optional<std::filesystem::path> file;
    Noticed noticed;

    void watch(const std::optional<std::filesystem::path>& watched, Noticed whenNoticed) override {
        file = watched;
        noticed = std::move(whenNoticed);
    }
};

class VaultWatchTest : public StateTest {
protected:
    FakeFileWatcher watcher;
    std::optional<VaultWatch> watch{VaultWatch::Services{.watcher = watcher, .scheduler = clock, .state = *state}};
    int looks = 0;

    VaultWatchTest() {
        QObject::connect(&*state, &AppState::databaseFileLookedAt, &*state, [this] { ++looks; });
    }
};

TEST_F(VaultWatchTest, theFileInUseIsWatched) {
    EXPECT_FALSE(watcher.file);
    state->prepare(vaultFile);
    EXPECT_EQ(watcher.file, vaultFile);
    state->unlock("parola", std::nullopt);
    state->saveAs(otherFile);
    EXPECT_EQ(watcher.file, otherFile);
    state->closeDatabase();
    EXPECT_FALSE(watcher.file);
}

TEST_F(VaultWatchTest, manyNoticesAreOneLookOnceTheChangeRests) {
    unlock();
    files.contents[vaultFile] = copyOf(bytesOf("başkası"));
    for (int piece = 0; piece < 5; ++piece)
        watcher.noticed();
    EXPECT_EQ(looks, 0);
    clock.advance(1s);
    EXPECT_EQ(looks, 1);
    EXPECT_THAT(state->lastError(), Optional(HasSubstr("diskte değişti")));

    watcher.noticed();
    clock.advance(1s);
    EXPECT_EQ(looks, 2);
}

TEST_F(VaultWatchTest, aNoticeThatOutlivesTheWatchIsPassedOver) {
    unlock();
    watcher.noticed();
    watch.reset();
    watcher.noticed();
    clock.advance(1s);
    EXPECT_EQ(looks, 0);
}

}  // namespace
