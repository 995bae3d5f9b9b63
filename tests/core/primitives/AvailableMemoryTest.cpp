// SPDX-License-Identifier: MIT
#include "core/primitives/AvailableMemory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>

namespace {

namespace fs = std::filesystem;

constexpr auto boundless = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t mebibyte = 1 << 20;

/// Files as a kernel would show them, in a folder of the test's own.
class AvailableMemoryTest : public testing::Test {
protected:
    AvailableMemoryTest() {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder);
    }
    ~AvailableMemoryTest() override { fs::remove_all(m_folder); }

    void machineHas(std::uint64_t availableKiB, std::uint64_t swapFreeKiB) {
        write(
            "proc/meminfo",
            "MemTotal:       99999999 kB\nMemFree:          1234 kB\nMemAvailable:   " + std::to_string(availableKiB) +
                " kB\nSwapTotal:       8888888 kB\nSwapFree:   " + std::to_string(swapFreeKiB) + " kB\n");
    }
    void write(const fs::path& file, const std::string& text) {
        fs::create_directories((m_folder / file).parent_path());
        std::ofstream(m_folder / file) << text;
    }
    std::uint64_t available() const {
        return availableMemory({.processes = m_folder / "proc", .controlGroups = m_folder / "cgroup"});
    }

private:
    fs::path m_folder = fs::path(testing::TempDir()) / (std::string("available-memory-") +
                                                        testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(AvailableMemoryTest, isBoundlessWhereNothingLimitsIt) {
    EXPECT_EQ(available(), boundless);
}

TEST_F(AvailableMemoryTest, isWhatTheMachineCanFreeAndItsFreeSwap) {
    machineHas(1000, 24);
    EXPECT_EQ(available(), 1024 * 1024U);
}

TEST_F(AvailableMemoryTest, isWhatAMachineWithoutSwapCanFree) {
    write("proc/meminfo", "MemAvailable: 2048 kB\n");
    EXPECT_EQ(available(), 2 * mebibyte);
}

TEST_F(AvailableMemoryTest, isBoundedByTheControlGroup) {
    machineHas(1'000'000, 0);
    write("proc/self/cgroup", "0::/user.slice/app\n");
    write("cgroup/user.slice/app/memory.max", "10485760\n");
    write("cgroup/user.slice/app/memory.current", "4194304\n");
    EXPECT_EQ(available(), 6 * mebibyte);
}

TEST_F(AvailableMemoryTest, isBoundedByTheGroupsAboveAndTheRoot) {
    machineHas(1'000'000, 0);
    write("proc/self/cgroup", "0::/user.slice/app\n");
    write("cgroup/user.slice/app/memory.max", "max\n");
    write("cgroup/user.slice/app/memory.current", "4194304\n");
    write("cgroup/user.slice/memory.max", "10485760\n");
    write("cgroup/user.slice/memory.current", "5242880\n");
    EXPECT_EQ(available(), 5 * mebibyte);

    write("cgroup/memory.max", "3145728\n");
    write("cgroup/memory.current", "1048576\n");
    EXPECT_EQ(available(), 2 * mebibyte);
}

TEST_F(AvailableMemoryTest, countsTheGroupsCachedFilesAsRoom) {
    machineHas(1'000'000, 0);
    write("proc/self/cgroup", "0::/app\n");
    write("cgroup/app/memory.max", "10485760\n");
    write("cgroup/app/memory.current", "10485760\n");
    write("cgroup/app/memory.stat", "anon 7340032\nfile 3145728\ninactive_file 1048576\nactive_file 2097152\n");
    EXPECT_EQ(available(), 3 * mebibyte);
}

TEST_F(AvailableMemoryTest, isNothingInAGroupBeyondItsLimit) {
    machineHas(1'000'000, 0);
    write("proc/self/cgroup", "0::/app\n");
    write("cgroup/app/memory.max", "1048576\n");
    write("cgroup/app/memory.current", "2097152\n");
    EXPECT_EQ(available(), 0U);
}

TEST_F(AvailableMemoryTest, readsTheOlderHierarchyOfTheMemoryController) {
    machineHas(1'000'000, 0);
    write("proc/self/cgroup", "9:cpu,cpuacct:/elsewhere\n4:memory:/app\n0::/\n");
    write("cgroup/memory/app/memory.limit_in_bytes", "10485760\n");
    write("cgroup/memory/app/memory.usage_in_bytes", "8388608\n");
    write("cgroup/memory/app/memory.stat", "cache 1048576\ntotal_inactive_file 1048576\n");
    EXPECT_EQ(available(), 3 * mebibyte);
}

TEST_F(AvailableMemoryTest, passesOverLinesThatAreNone) {
    machineHas(1, 0);
    write("proc/self/cgroup", "nothing\n\n0:\n::\n");
    EXPECT_EQ(available(), 1024U);
}

TEST(AvailableMemoryOfThisMachineTest, isSomethingAndNotBoundless) {
    EXPECT_GT(availableMemory(), mebibyte);
    EXPECT_LT(availableMemory(), boundless);
}

}  // namespace
