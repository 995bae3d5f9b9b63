// SPDX-License-Identifier: MIT
#include "platform/posix/PrivateFolder.h"

#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class PrivateFolderTest : public ::testing::Test {
protected:
    ~PrivateFolderTest() override { ::umask(usual); }

    static std::filesystem::perms modeOf(const std::filesystem::path& path) {
        return std::filesystem::status(path).permissions();
    }

    const mode_t usual = ::umask(0);
    TemporaryFolder folder;
};

TEST_F(PrivateFolderTest, eachOneOnTheWayIsItsOwnersAlone) {
    EXPECT_TRUE(PrivateFolder::make(folder / "a/b/c"));

    for (const auto* made : {"a", "a/b", "a/b/c"})
        EXPECT_EQ(modeOf(folder / made), std::filesystem::perms::owner_all) << made;
}

TEST_F(PrivateFolderTest, whatIsThereStaysAsItIs) {
    std::filesystem::create_directory(folder / "a");
    const auto before = modeOf(folder / "a");

    EXPECT_FALSE(PrivateFolder::make(folder / "a"));
    EXPECT_TRUE(PrivateFolder::make(folder / "a/b"));

    EXPECT_EQ(modeOf(folder / "a"), before);
}

TEST_F(PrivateFolderTest, whereNoneCanBeMadeThereIsNone) {
    writeFile(folder / "a", "");
    EXPECT_FALSE(PrivateFolder::make(folder / "a/b"));
    EXPECT_FALSE(PrivateFolder::make("/proc/none/of/these"));
    EXPECT_FALSE(PrivateFolder::make(""));
}

}  // namespace
