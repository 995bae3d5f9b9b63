// SPDX-License-Identifier: MIT
#include "platform/qt/SettingsFile.h"

#include "platform/posix/PosixFileStore.h"
#include "tests/platform/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>

namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class SettingsFileTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    PosixFileSystemCalls calls;
    PosixFileStore files{calls};
    const std::filesystem::path file = folder / "brenvik/settings.json";

    SettingsFile settings() { return {files, file}; }
    void putFile(const std::string& content) {
        std::filesystem::create_directories(file.parent_path());
        writeFile(file, content);
    }
    std::set<std::string> names() const {
        std::set<std::string> names;
        for (const auto& item : std::filesystem::directory_iterator(file.parent_path()))
            names.insert(item.path().filename());
        return names;
    }
    static mode_t modeOf(const std::filesystem::path& path) {
        struct stat status;
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_mode & 0777U;
    }
};

TEST_F(SettingsFileTest, everyKindComesBackAfterARestart) {
    const SettingsDictionary dictionary{{"length", std::int64_t{20}}, {"upper", true}, {"name", "ş"}};
    {
        auto store = settings();
        store.setValue("boolean", false);
        store.setValue("integer", std::int64_t{4294967295});
        store.setValue("double", 12.5);
        store.setValue("text", "Türkçe \"metin\"\n");
        store.setValue("bytes", copyOf(bytesOf(std::string("\0\xFF/", 3))));
        store.setValue("noBytes", Bytes());
        store.setValue("dictionary", dictionary);
    }
    const auto store = settings();
    EXPECT_EQ(store.value("boolean"), SettingsValue(false));
    EXPECT_EQ(store.value("integer"), SettingsValue(std::int64_t{4294967295}));
    EXPECT_EQ(store.value("double"), SettingsValue(12.5));
    EXPECT_EQ(store.value("text"), SettingsValue("Türkçe \"metin\"\n"));
    EXPECT_EQ(store.value("bytes"), SettingsValue(copyOf(bytesOf(std::string("\0\xFF/", 3)))));
    EXPECT_EQ(store.value("noBytes"), SettingsValue(Bytes()));
    EXPECT_EQ(store.value("dictionary"), SettingsValue(dictionary));
    EXPECT_EQ(store.value("absent"), std::nullopt);
}

TEST_F(SettingsFileTest, aNumberWithoutAFractionIsAnInteger) {
    auto store = settings();
    store.setValue("number", 12.0);
    EXPECT_EQ(store.value("number"), SettingsValue(std::int64_t{12}));
    store.setValue("number", 1e300);
    EXPECT_EQ(store.value("number"), SettingsValue(1e300));
    store.setValue("number", -0.5);
    EXPECT_EQ(store.value("number"), SettingsValue(-0.5));
}

TEST_F(SettingsFileTest, aChangeIsOnTheDiskAtOnce) {
    auto store = settings();
    store.setValue("text", "bir");
    EXPECT_EQ(settings().value("text"), SettingsValue("bir"));
    store.setValue("text", "iki");
    EXPECT_EQ(settings().value("text"), SettingsValue("iki"));
}

TEST_F(SettingsFileTest, nothingStoredRemovesTheKey) {
    auto store = settings();
    store.setValue("text", "bir");
    store.setValue("text", std::nullopt);
    EXPECT_EQ(store.value("text"), std::nullopt);
    EXPECT_EQ(settings().value("text"), std::nullopt);
    EXPECT_EQ(contentOf(file).find("text"), std::string::npos);
}

TEST_F(SettingsFileTest, readingWritesNothing) {
    settings();
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(SettingsFileTest, folderAndFileAreTheirUsersAlone) {
    const auto oldMask = umask(0);
    auto store = settings();
    store.setValue("text", "bir");
    umask(oldMask);
    EXPECT_EQ(modeOf(file.parent_path()), 0700U);
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(SettingsFileTest, aFileThatOthersCouldReadIsClosedToThem) {
    putFile("{}");
    ASSERT_EQ(chmod(file.c_str(), 0644), 0);
    auto store = settings();
    store.setValue("text", "bir");
    EXPECT_EQ(modeOf(file), 0600U);
}

TEST_F(SettingsFileTest, aDamagedFileIsPutAsideAndTheDefaultsHold) {
    for (const std::string damaged : {"{\"text\": \"bi", "", "[1, 2]", "\"text\"", "{\"a\":\"\xFF\"}", "\0\0\0"}) {
        std::filesystem::remove_all(file.parent_path());
        putFile(damaged);
        auto store = settings();
        EXPECT_EQ(store.value("text"), std::nullopt) << damaged;
        EXPECT_EQ(contentOf(file.native() + ".damaged"), damaged);
        store.setValue("text", "yeni");
        EXPECT_EQ(settings().value("text"), SettingsValue("yeni")) << damaged;
        EXPECT_EQ(contentOf(file.native() + ".damaged"), damaged);
    }
}

TEST_F(SettingsFileTest, aSecondDamagedFileDoesNotReplaceTheFirst) {
    putFile("bir");
    settings();
    putFile("iki");
    settings();
    EXPECT_EQ(contentOf(file.native() + ".damaged"), "bir");
    EXPECT_EQ(contentOf(file.native() + ".damaged-2"), "iki");
}

TEST_F(SettingsFileTest, aFileThatCannotBeReadIsLeftAlone) {
    std::filesystem::create_directories(file);
    auto store = settings();
    EXPECT_EQ(store.value("text"), std::nullopt);
    store.setValue("text", "bir");
    EXPECT_EQ(store.value("text"), std::nullopt) << "what cannot be stored stays as it was";
    EXPECT_TRUE(std::filesystem::is_directory(file));
}

TEST_F(SettingsFileTest, aFolderThatCannotBeMadeLeavesTheDefaults) {
    writeFile(folder / "brenvik", "bir dosya");
    auto store = settings();
    store.setValue("text", "bir");
    EXPECT_EQ(store.value("text"), std::nullopt);
    EXPECT_EQ(contentOf(folder / "brenvik"), "bir dosya");
}

TEST_F(SettingsFileTest, valuesOfKindsThatAreNotStoredAreCarriedAlong) {
    putFile(R"({"list": [1, {"a": null}], "null": null, "text": "bir", "odd": {"a": [1], "b": true}})");
    auto store = settings();
    EXPECT_EQ(store.value("list"), std::nullopt);
    EXPECT_EQ(store.value("null"), std::nullopt);
    EXPECT_EQ(store.value("odd"), SettingsValue(SettingsDictionary{{"b", true}}));
    store.setValue("text", "iki");
    const auto content = contentOf(file);
    EXPECT_NE(content.find("\"list\""), std::string::npos);
    EXPECT_NE(content.find("\"null\""), std::string::npos);
}

TEST_F(SettingsFileTest, bytesThatAreNoBase64AreNotRead) {
    putFile(R"({"bytes": {"base64": "?"}})");
    EXPECT_EQ(settings().value("bytes"), SettingsValue(SettingsDictionary{{"base64", "?"}}));
}

TEST_F(SettingsFileTest, twoProgramsKeepEachOthersChanges) {
    auto one = settings();
    auto two = settings();
    one.setValue("one", true);
    two.setValue("two", true);
    one.setValue("one", false);
    const auto both = settings();
    EXPECT_EQ(both.value("one"), SettingsValue(false));
    EXPECT_EQ(both.value("two"), SettingsValue(true));
}

TEST_F(SettingsFileTest, programsThatWriteAtOnceLoseNothing) {
    constexpr int programs = 4;
    constexpr int changes = 25;
    std::vector<pid_t> children;
    for (int program = 0; program < programs; ++program) {
        children.push_back(fork());
        if (children.back() == 0) {
            auto store = settings();
            for (int change = 0; change < changes; ++change)
                store.setValue("key" + std::to_string(program) + "-" + std::to_string(change), std::int64_t{change});
            _exit(0);
        }
    }
    for (const auto child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const auto store = settings();
    for (int program = 0; program < programs; ++program)
        for (int change = 0; change < changes; ++change)
            EXPECT_EQ(store.value("key" + std::to_string(program) + "-" + std::to_string(change)),
                      SettingsValue(std::int64_t{change}));
    EXPECT_THAT(names(), UnorderedElementsAre("settings.json", "settings.json.lock"));
}

TEST_F(SettingsFileTest, aDiskWithoutLocksStoresAllTheSame) {
    for (const int code : {ENOLCK, ENOTSUP, EINVAL, ENOSYS, EIO}) {
        SettingsFile store(files, file, [code](int) {
            errno = code;
            return -1;
        });
        EXPECT_TRUE(store.setValue("code", std::int64_t{code}));
        EXPECT_EQ(settings().value("code"), SettingsValue(std::int64_t{code}));
    }
}

TEST_F(SettingsFileTest, aLockWhoseFileCannotBeMadeIsGoneWithout) {
    std::filesystem::create_directories(file.native() + ".lock");
    EXPECT_TRUE(settings().setValue("text", "bir"));
    EXPECT_EQ(settings().value("text"), SettingsValue("bir"));
}

TEST_F(SettingsFileTest, waitsForAnotherProgramsLock) {
    int refusals = 5;
    SettingsFile store(files, file, [&](int) {
        errno = EWOULDBLOCK;
        return refusals-- > 0 ? -1 : 0;
    });
    EXPECT_TRUE(store.setValue("text", "bir"));
    EXPECT_EQ(settings().value("text"), SettingsValue("bir"));
}

TEST_F(SettingsFileTest, aProgramThatNeverLetsGoIsWaitedForOnce) {
    int asked = 0;
    bool isHeld = true;
    SettingsFile store(files, file, [&](int) {
        ++asked;
        errno = EWOULDBLOCK;
        return isHeld ? -1 : 0;
    });
    EXPECT_FALSE(store.setValue("text", "bir"));
    EXPECT_GT(asked, 2);

    asked = 0;
    EXPECT_FALSE(store.setValue("text", "iki"));
    EXPECT_EQ(asked, 1);

    isHeld = false;
    EXPECT_TRUE(store.setValue("text", "üç"));
    EXPECT_EQ(settings().value("text"), SettingsValue("üç"));
}

TEST_F(SettingsFileTest, saysWhetherAValueIsStored) {
    EXPECT_TRUE(settings().setValue("text", "bir"));
    std::filesystem::remove_all(file.parent_path());
    writeFile(folder / "brenvik", "bir dosya");
    EXPECT_FALSE(settings().setValue("text", "bir"));
    std::filesystem::remove(folder / "brenvik");
    std::filesystem::create_directories(file);
    EXPECT_FALSE(settings().setValue("text", "bir"));
}

TEST(SettingsPathTest, followsTheUsersConfigurationFolder) {
    setenv("HOME", "/home/deniz", 1);
    setenv("XDG_CONFIG_HOME", "/ayarlar", 1);
    EXPECT_EQ(SettingsFile::usualPath(), "/ayarlar/brenvik/settings.json");
    setenv("XDG_CONFIG_HOME", "göreli", 1);
    EXPECT_EQ(SettingsFile::usualPath(), "/home/deniz/.config/brenvik/settings.json");
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(SettingsFile::usualPath(), "/home/deniz/.config/brenvik/settings.json");
}

}  // namespace
