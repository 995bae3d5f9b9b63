// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "core/autotype/AutoTyping.h"
#include "core/clipboard/ClipboardService.h"
#include "core/model/KdbxError.h"
#include "core/platform/RescueStore.h"
#include "core/platform/WorkQueue.h"
#include "core/platform/Workspace.h"
#include "tests/support/Entries.h"
#include "tests/support/FakeBackgroundWork.h"
#include "tests/support/FakeClipboard.h"
#include "tests/support/FakeScheduler.h"
#include "tests/support/FakeSettings.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <string>

/// A disk in memory. A path in `unreadable` or `unwritable` fails with the words given there.
class FakeFiles final : public FileStore {
public:
    std::map<std::filesystem::path, Bytes> contents;
    std::map<std::filesystem::path, std::string> unreadable;
    std::map<std::filesystem::path, std::string> unwritable;
    int writes = 0;
    std::function<void()> whileWriting;  // what another program does meanwhile

    Bytes read(const std::filesystem::path& file) override {
        if (const auto reason = unreadable.find(file); reason != unreadable.end())
            throw FileError(EACCES, reason->second);
        const auto found = contents.find(file);
        if (found == contents.end())
            throw FileError(ENOENT, "yok");
        return found->second;
    }
    void writeAtomically(const std::filesystem::path& file, ByteView content,
                         const BeforeReplacing& beforeReplacing) override {
        checkWritable(file);
        if (whileWriting)
            whileWriting();
        beforeReplacing();
        contents[file] = copyOf(content);
        ++writes;
    }
    using FileStore::writeAtomically;
    std::optional<std::filesystem::path> keepBeside(const std::filesystem::path& file,
                                                    const std::filesystem::path& name, ByteView content) override {
        const auto kept = file.parent_path() / name;
        checkWritable(kept);
        return contents.try_emplace(kept, copyOf(content)).second ? std::optional(kept) : std::nullopt;
    }
    bool exists(const std::filesystem::path& file) override { return contents.contains(file); }
    std::optional<FileStatus> status(const std::filesystem::path& file) override {
        const auto found = contents.find(file);
        if (found == contents.end())
            return std::nullopt;
        const auto text = std::string(textOf(found->second));
        return FileStatus{.size = text.size(), .inode = std::hash<std::string>()(text)};
    }

private:
    void checkWritable(const std::filesystem::path& file) const {
        if (const auto reason = unwritable.find(file); reason != unwritable.end())
            throw FileError(ENOSPC, reason->second);
    }
};

/// A bookmark is the path's own bytes. Paths in `unmarkable` get none.
class FakeBookmarks final : public Bookmarks {
public:
    std::set<std::filesystem::path> unmarkable;
    bool resolves = true;

    std::optional<Bytes> bookmark(const std::filesystem::path& file) override {
        if (unmarkable.contains(file))
            return std::nullopt;
        return copyOf(bytesOf(file.native()));
    }
    std::optional<std::filesystem::path> resolve(ByteView token) override {
        if (!resolves)
            return std::nullopt;
        return std::filesystem::path(textOf(token));
    }
};

/// A desktop that remembers what it was to open.
class FakeWorkspace final : public Workspace {
public:
    std::vector<std::string> opened;

    void openURL(std::string_view url) override { opened.emplace_back(url); }
};

/// Typing that ends when a test says so, and how.
class FakeAutoTyping final : public AutoTyping {
public:
    std::vector<std::vector<AutoTypeAction>> performed;
    Done done;      // of the last call
    int stops = 0;  // how often all was ended
    std::function<void()> stopped = [] {};

    void perform(std::vector<AutoTypeAction> actions, Done whenDone) override {
        performed.push_back(std::move(actions));
        done = std::move(whenDone);
    }
    void stop() override {
        ++stops;
        stopped();
    }
};

/// A folder of copies in memory. A copy is as old as its place in the order of writing; one that is held is not left.
class FakeRescues final : public RescueStore {
public:
    std::map<std::string, Bytes> contents;
    std::map<std::string, Timestamp> times;
    std::set<std::string> held;
    std::optional<std::string> failure;  // of each write
    int writes = 0;
    const Scheduler* clock = nullptr;

    std::vector<Copy> copiesOf(const std::filesystem::path& vault) override {
        std::vector<Copy> copies;
        for (const auto& [name, content] : contents)
            if (name.starts_with(vault.native() + "#") && !held.contains(name))
                copies.push_back({name, times.at(name)});
        return copies;
    }
    std::string newName(const std::filesystem::path& vault) override {
        return vault.native() + "#" + std::to_string(++m_names);
    }
    Bytes read(const std::string& name) override {
        const auto found = contents.find(name);
        if (found == contents.end())
            throw FileError(ENOENT, "yok");
        return found->second;
    }
    void write(const std::string& name, ByteView content) override {
        if (failure)
            throw FileError(ENOSPC, *failure);
        contents[name] = copyOf(content);
        times[name] = clock->now();
        held.insert(name);
        ++writes;
    }
    void release(const std::string& name) override { held.erase(name); }
    void remove(const std::string& name) override {
        contents.erase(name);
        held.erase(name);
    }

private:
    int m_names = 0;
};

/// Work that is done at once, or when a test says so.
class FakeWorkQueue final : public WorkQueue {
public:
    bool waits = false;

    void start(std::function<void()> work) override {
        m_waiting.push_back(std::move(work));
        if (!waits)
            finish();
    }
    void finish() override {
        for (const auto& work : std::exchange(m_waiting, {}))
            work();
    }

private:
    std::vector<std::function<void()>> m_waiting;
};

/// Vault files that are a number; what each holds is remembered here, with the key that opens it and the header that
/// asks for its derivation.
class FakeCodec {
public:
    std::exception_ptr failure;  // of the next call
    std::optional<KdbxKey> lastKey;
    std::uint64_t rounds = 1;  // of the key derivation

    AppState::VaultCodec doors() {
        return {
            .load = [this](ByteView file, const KdbxKey& key,
                           const KdbxKeys::Transformation& transformation) { return load(file, key, transformation); },
            .save = [this](
                        const KdbxDatabase& database, const KdbxKey& key,
                        const KdbxKeys::Transformation& transformation) { return save(database, key, transformation); },
            .saveUnder = [this](const KdbxDatabase& database,
                                const KdbxTransformedKey& key) { return saveUnder(database, key); }};
    }

    Bytes save(const KdbxDatabase& database, const KdbxKey& key,
               const KdbxKeys::Transformation& transformation = KdbxKeys::transform) {
        fail();
        lastKey = key;
        const auto header = headerNumber(m_vaults.size());
        return add({database, header, transformed(key, header, transformation)});
    }

    Bytes saveUnder(const KdbxDatabase& database, const KdbxTransformedKey& key) {
        auto header = headerNumber(0);
        header.kdfParameters = key.parameters;
        return add({database, header, key.key});
    }

    KdbxDatabase load(ByteView file, const KdbxKey& key,
                      const KdbxKeys::Transformation& transformation = KdbxKeys::transform) {
        fail();
        lastKey = key;
        const auto& vault = vaultIn(file);
        if (transformed(key, vault.header, transformation) != vault.transformedKey)
            throw KdbxError::invalidCredentials();
        return vault.database;
    }

    const KdbxDatabase& databaseIn(ByteView file) const { return vaultIn(file).database; }

private:
    struct Vault {
        KdbxDatabase database;
        KdbxHeader header;
        Bytes transformedKey;
    };

    /// A derivation of as many rounds, and nothing else.
    void derive(const KdbxKeys::Transformation& transformation) const {
        KdbxHeader header;
        header.major = 3;
        header.transformSeed = Bytes(32, 7);
        header.transformRounds = rounds;
        (void)transformation(Bytes(32, 1), header);
    }
    /// A header that asks for a derivation of one round with a seed of its own.
    static KdbxHeader headerNumber(std::size_t number) {
        KdbxHeader header;
        header.kdfParameters =
            KdbxHeader::kdfParametersFor({KdfSettings::AesKdf{1}}, Bytes(32, static_cast<std::uint8_t>(number)));
        return header;
    }
    /// No credentials at all are for a codec to refuse.
    [[nodiscard]] Bytes transformed(const KdbxKey& key, const KdbxHeader& header,
                                    const KdbxKeys::Transformation& transformation) const {
        const bool isEmpty = !key.password && !key.keyFileData;
        const auto compositeKey = isEmpty ? Bytes(32, 0) : KdbxKeys::compositeKey(key);
        if (rounds == 1)
            return transformation(compositeKey, header);
        derive(transformation);
        return KdbxKeys::transform(compositeKey, header);
    }
    Bytes add(Vault vault) {
        m_vaults.push_back(std::move(vault));
        return copyOf(bytesOf("vault " + std::to_string(m_vaults.size() - 1)));
    }

    void fail() {
        if (failure)
            std::rethrow_exception(std::exchange(failure, nullptr));
    }
    const Vault& vaultIn(ByteView file) const {
        if (!textOf(file).starts_with("vault "))
            throw KdbxError::notAKdbxFile();
        return m_vaults.at(std::stoul(std::string(textOf(file).substr(6))));
    }

    std::vector<Vault> m_vaults;
};

/// A vault with the entries "Banka" and "Posta" in the root, and in its one subgroup "Sosyal" the entry "Forum".
inline KdbxDatabase smallVault(const std::string& name = "Kasam") {
    auto root = groupNamed("Kök");
    root.entries = {entryTitled("Banka"), entryTitled("Posta")};
    auto social = groupNamed("Sosyal");
    social.entries = {entryTitled("Forum")};
    root.groups = {social};
    return {.meta = {.databaseName = name},
            .root = root,
            .cipher = KdbxCipher::aes256,
            .kdf = KdfSettings::recommended(),
            .compressed = true,
            .formatVersion = {.major = 4, .minor = 1}};
}

/// A state in a world of fakes, with a vault at "/kasa/Ev.kdbx" that "parola" opens.
class StateTest : public ::testing::Test {
protected:
    const std::filesystem::path vaultFile = "/kasa/Ev.kdbx";
    const std::filesystem::path otherFile = "/kasa/İş.kdbx";

    FakeSettings settings;
    FakeFiles files;
    FakeBookmarks bookmarks;
    FakeScheduler clock;
    FakeBackgroundWork background;
    FakeCodec codec;
    FakeClipboard pasteboard;
    ClipboardService clipboard{pasteboard, clock};
    FakeWorkspace workspace;
    FakeAutoTyping autoTyping;
    FakeRescues rescues;
    FakeWorkQueue rescueWork;
    std::optional<Preferences> preferences;
    std::optional<AppState> state;

    StateTest() {
        rescues.clock = &clock;
        putVault(smallVault());
        launch();
    }

    /// Starts the state anew on the same settings, as the next launch does.
    void launch() {
        state.reset();
        preferences.emplace(settings, clipboard);
        state.emplace(services(autoTyping));
    }

    /// The world of fakes, with one that types in it.
    AppState::Services services(AutoTyping& typing) {
        return {.preferences = *preferences,
                .files = files,
                .bookmarks = bookmarks,
                .scheduler = clock,
                .background = background,
                .clipboard = clipboard,
                .codec = codec.doors(),
                .workspace = workspace,
                .autoTyping = typing,
                .rescues = &rescues,
                .rescueWork = &rescueWork};
    }

    void putVault(const KdbxDatabase& database) {
        files.contents[vaultFile] = codec.save(database, KdbxKey("parola", std::nullopt));
    }

    void unlock() {
        state->prepare(vaultFile);
        state->unlock("parola", std::nullopt);
        ASSERT_FALSE(state->isLocked()) << state->lastError().value_or("");
    }

    void rename(const std::string& title) {
        state->edit("Kaydı Düzenle", [&](KdbxDatabase& database) { database.root.entries.mutableAt(0).title = title; });
    }

    const KdbxGroup& root() const { return *state->root(); }
    const KdbxEntry& bank() const { return root().entries[0]; }
    const KdbxEntry& mail() const { return root().entries[1]; }
    const KdbxGroup& social() const { return root().groups[0]; }
    const KdbxEntry& forum() const { return social().entries[0]; }

    std::string firstTitle() const { return state->database()->root.entries[0].title; }
    std::string firstTitleIn(const std::filesystem::path& file) const {
        return codec.databaseIn(files.contents.at(file)).root.entries[0].title;
    }
    std::optional<std::string> storedBookmark() const {
        const auto& bookmark = preferences->recentDatabaseBookmark();
        return bookmark ? std::optional(std::string(textOf(*bookmark))) : std::nullopt;
    }
};
