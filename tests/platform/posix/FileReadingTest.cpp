// SPDX-License-Identifier: MIT
#include "platform/posix/PosixFileStore.h"
#include "tests/platform/TemporaryFolder.h"
#include "tests/platform/posix/TroubledCalls.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

class FileReadingTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    TroubledCalls calls;
    PosixFileStore store{calls};

    std::string read(const std::filesystem::path& file) {
        const auto content = store.read(file);
        return std::string(textOf(content));
    }

    std::string failureOf(const std::filesystem::path& file, int code) {
        try {
            static_cast<void>(store.read(file));
        } catch (const FileError& error) {
            EXPECT_EQ(error.code(), code);
            return error.errorDescription();
        }
        return "read";
    }
};

TEST_F(FileReadingTest, givesTheWholeContent) {
    const std::string content(200'000, 'x');
    writeFile(folder / "Kasam.kdbx", content);
    EXPECT_EQ(read(folder / "Kasam.kdbx"), content);
}

TEST_F(FileReadingTest, givesNothingForAnEmptyFile) {
    writeFile(folder / "bos", "");
    EXPECT_EQ(read(folder / "bos"), "");
}

TEST_F(FileReadingTest, followsASymbolicLink) {
    writeFile(folder / "Kasam.kdbx", "kasa");
    std::filesystem::create_symlink("Kasam.kdbx", folder / "bag");
    EXPECT_EQ(read(folder / "bag"), "kasa");
}

TEST_F(FileReadingTest, readsAFileThatReportsNoSize) {
    EXPECT_FALSE(read("/proc/self/status").empty());
}

TEST_F(FileReadingTest, takesShortReadsAndInterruptionsAsTheyCome) {
    writeFile(folder / "Kasam.kdbx", "uzunca bir kasa");
    calls.mostWritten = 3;
    calls.trouble = [interrupted = false](const std::string& call, int) mutable {
        interrupted = !interrupted && (call == "read" || call == "open");
        return interrupted ? EINTR : 0;
    };
    EXPECT_EQ(read(folder / "Kasam.kdbx"), "uzunca bir kasa");
}

TEST_F(FileReadingTest, aMissingFileIsNotFound) {
    EXPECT_EQ(failureOf(folder / "Kasam.kdbx", ENOENT), "“Kasam.kdbx” okunamadı: dosya ya da klasör bulunamadı.");
}

TEST_F(FileReadingTest, aFolderIsRefused) {
    std::filesystem::create_directory(folder / "Kasam.kdbx");
    EXPECT_EQ(failureOf(folder / "Kasam.kdbx", EISDIR), "“Kasam.kdbx” okunamadı: bu bir klasör.");
}

TEST_F(FileReadingTest, aPipeIsRefusedWithoutWaitingForAWriter) {
    ASSERT_EQ(mkfifo((folder / "boru").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(folder / "boru", EINVAL), "“boru” okunamadı: bu bir dosya değil, adlandırılmış boru.");
}

TEST_F(FileReadingTest, aSocketIsRefused) {
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (folder / "soket").native().copy(address.sun_path, sizeof(address.sun_path) - 1);
    ASSERT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_EQ(failureOf(folder / "soket", EINVAL), "“soket” okunamadı: bu bir dosya değil, soket.");
    close(socket);
}

TEST_F(FileReadingTest, aDeviceIsRefusedUnopened) {
    EXPECT_EQ(failureOf("/dev/zero", EINVAL), "“zero” okunamadı: bu bir dosya değil, aygıt.");
    EXPECT_EQ(calls.record, std::vector<std::string>{"stat"});
}

TEST_F(FileReadingTest, aFileLargerThanMemoryServesIsRefusedBeforeItIsRead) {
    PosixFileStore small(calls, 10);
    writeFile(folder / "film", "12345678901");
    try {
        static_cast<void>(small.read(folder / "film"));
        FAIL();
    } catch (const FileError& error) {
        EXPECT_EQ(error.code(), EFBIG);
        EXPECT_EQ(error.errorDescription(), "“film” okunamadı: dosya çok büyük.");
    }
    EXPECT_EQ(std::count(calls.record.begin(), calls.record.end(), "read"), 0);
    writeFile(folder / "film", "1234567890");
    EXPECT_EQ(small.read(folder / "film").size(), 10U);
}

TEST_F(FileReadingTest, aFileThatReportsNoSizeIsMeasuredAsItIsRead) {
    PosixFileStore small(calls, 10);
    EXPECT_THROW(static_cast<void>(small.read("/proc/self/status")), FileError);
}

TEST_F(FileReadingTest, aFileThatGrowsMeanwhileIsReadAgain) {
    const auto file = folder / "Kasam.kdbx";
    writeFile(file, "eski");
    calls.trouble = [&, hasGrown = false](const std::string& call, int) mutable {
        if (call == "read" && !std::exchange(hasGrown, true))
            writeFile(file, "yeni ve daha uzun");
        return 0;
    };
    EXPECT_EQ(read(file), "yeni ve daha uzun");
}

TEST_F(FileReadingTest, aFileThatShrinksMeanwhileIsReadAgain) {
    const auto file = folder / "Kasam.kdbx";
    writeFile(file, "eski ve uzun");
    calls.trouble = [&, hasShrunk = false](const std::string& call, int) mutable {
        if (call == "read" && !std::exchange(hasShrunk, true))
            writeFile(file, "yeni");
        return 0;
    };
    EXPECT_EQ(read(file), "yeni");
}

TEST_F(FileReadingTest, aFileThatNeverRestsIsRefused) {
    const auto file = folder / "Kasam.kdbx";
    writeFile(file, "x");
    calls.trouble = [&, content = std::string()](const std::string& call, int) mutable {
        if (call == "read")
            writeFile(file, content += "x");
        return 0;
    };
    EXPECT_EQ(failureOf(file, EAGAIN), "“Kasam.kdbx” okunamadı: dosya okunurken değişti.");
}

TEST_F(FileReadingTest, everyFailingCallIsAFileErrorWithItsCode) {
    writeFile(folder / "Kasam.kdbx", "kasa");
    read(folder / "Kasam.kdbx");
    const auto callsOfARead = calls.record;
    ASSERT_GE(callsOfARead.size(), 5U);
    for (std::size_t failing = 0; failing < callsOfARead.size(); ++failing) {
        calls.record.clear();
        calls.trouble = [&](const std::string&, int number) {
            return static_cast<std::size_t>(number) == failing ? EIO : 0;
        };
        EXPECT_EQ(failureOf(folder / "Kasam.kdbx", EIO),
                  "“Kasam.kdbx” okunamadı: diskte okuma ya da yazma hatası oluştu.")
            << callsOfARead[failing];
    }
}

TEST_F(FileReadingTest, reportsWhatExists) {
    writeFile(folder / "var", "");
    std::filesystem::create_symlink("yok", folder / "bosta");
    EXPECT_TRUE(store.exists(folder / "var"));
    EXPECT_TRUE(store.exists(folder.path()));
    EXPECT_FALSE(store.exists(folder / "yok"));
    EXPECT_FALSE(store.exists(folder / "bosta"));
}

}  // namespace
