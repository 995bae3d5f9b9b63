// SPDX-License-Identifier: MIT
#include "platform/qt/QtFileWatcher.h"

#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <utility>

namespace {

using namespace std::chrono_literals;

class QtFileWatcherTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    const std::filesystem::path vault = folder / "Kasam.kdbx";
    int argumentCount = 1;
    char name[8] = "brenvik";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    QtFileWatcher watcher;
    int notices = 0;

    void watch(const std::filesystem::path& file) {
        watcher.watch(file, [this] { ++notices; });
    }

    /// Does something to the file, and whether it is noticed within a generous time.
    bool isNoticed(const std::function<void()>& change) {
        QCoreApplication::processEvents();  // what came before
        notices = 0;
        change();
        const QDeadlineTimer deadline(30s);
        while (notices == 0 && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
        return notices > 0;
    }

    void replaceVault(const std::string& content) {
        writeFile(folder / "yeni", content);
        std::filesystem::rename(folder / "yeni", vault);
    }
};

TEST_F(QtFileWatcherTest, aFileThatIsWrittenReplacedTakenAwayAndBroughtBackIsNoticedEachTime) {
    writeFile(vault, "bir");
    watch(vault);
    EXPECT_TRUE(isNoticed([&] { writeFile(vault, "iki"); }));
    for (int time = 0; time < 3; ++time) {
        EXPECT_TRUE(isNoticed([&] { replaceVault("üç"); })) << time;
        EXPECT_TRUE(isNoticed([&] { writeFile(vault, "dört"); })) << "the new file is watched as the old one was";
    }
    EXPECT_TRUE(isNoticed([&] { std::filesystem::remove(vault); }));
    EXPECT_TRUE(isNoticed([&] { writeFile(vault, "beş"); }));
    EXPECT_TRUE(isNoticed([&] { writeFile(vault, "altı"); }));
}

TEST_F(QtFileWatcherTest, aFolderThatComesWithItsFileIsNoticed) {
    watch(folder / "disk/kasalar/Kasam.kdbx");
    EXPECT_TRUE(isNoticed([&] { std::filesystem::create_directory(folder / "disk"); }));
    EXPECT_TRUE(isNoticed([&] { std::filesystem::create_directory(folder / "disk/kasalar"); }));
    EXPECT_TRUE(isNoticed([&] { writeFile(folder / "disk/kasalar/Kasam.kdbx", "kasa"); }));
    EXPECT_TRUE(isNoticed([&] { std::filesystem::remove_all(folder / "disk"); }));
    EXPECT_TRUE(isNoticed([&] { std::filesystem::create_directory(folder / "disk"); }));
}

// In a process of its own, which alone sees the disk.
TEST(QtFileWatcherMountTest, aDiskThatComesIsNoticedThoughItReportsNoFolder) {
    constexpr int cannotMount = 99;
    const TemporaryFolder folder;
    const auto child = fork();
    if (child == 0) {
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            _exit(cannotMount);
        int argumentCount = 1;
        char name[] = "brenvik";
        char* arguments[] = {name, nullptr};
        const QCoreApplication application(argumentCount, arguments);
        QtFileWatcher watcher;
        int notices = 0;
        watcher.watch(folder / "Kasam.kdbx", [&] { ++notices; });
        if (mount("tmpfs", folder.path().c_str(), "tmpfs", 0, "size=28k") != 0)
            _exit(cannotMount);
        const auto isNoticed = [&] {
            const QDeadlineTimer deadline(30s);
            while (notices == 0 && !deadline.hasExpired())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
            return std::exchange(notices, 0) > 0;
        };
        const bool isDiskNoticed = isNoticed();
        writeFile(folder / "Kasam.kdbx", "kasa");
        _exit(isDiskNoticed && isNoticed() ? 7 : 8);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == cannotMount)
        GTEST_SKIP() << "no right to mount a disk";
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

TEST_F(QtFileWatcherTest, behindALinkTheFileItselfIsWatched) {
    std::filesystem::create_directory(folder / "gercek");
    writeFile(folder / "gercek/hedef", "bir");
    std::filesystem::create_symlink("gercek/hedef", vault);
    watch(vault);
    EXPECT_TRUE(isNoticed([&] { writeFile(folder / "gercek/hedef", "iki"); }));
    EXPECT_TRUE(isNoticed([&] {
        writeFile(folder / "gercek/yeni", "üç");
        std::filesystem::rename(folder / "gercek/yeni", folder / "gercek/hedef");
    }));
}

TEST_F(QtFileWatcherTest, anotherFileTakesItsPlaceAndNoneEndsIt) {
    std::filesystem::create_directory(folder / "baska");
    writeFile(vault, "bir");
    watch(folder / "baska/Kasam.kdbx");
    watch(vault);
    EXPECT_TRUE(isNoticed([&] { writeFile(vault, "iki"); }));

    bool isHeard = false;
    watcher.watch(std::nullopt, [&] { isHeard = true; });
    writeFile(vault, "üç");
    QtFileWatcher other;  // what it hears, the first one would have heard too
    EXPECT_TRUE(isNoticed([&] {
        other.watch(vault, [&] { notices = 1; });
        writeFile(vault, "dört");
    }));
    EXPECT_FALSE(isHeard);
}

}  // namespace
