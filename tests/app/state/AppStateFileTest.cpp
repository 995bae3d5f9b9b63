// SPDX-License-Identifier: MIT
// The vault's file while others write to it too.
#include "tests/app/state/StateFakes.h"

#include <gmock/gmock.h>

#include <QDateTime>

namespace {

using ::testing::Optional;
using ::testing::StrEq;

constexpr auto none = std::nullopt;

class AppStateFileTest : public StateTest {
protected:
    const Bytes foreign = copyOf(bytesOf("başkasının kasası"));

    /// The name of the version that is kept at the clock's present time.
    std::filesystem::path conflict(const std::string& count = "", const std::string& name = "Ev") const {
        const auto time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(clock.now().seconds));
        return "/kasa/" + name + " (çakışma " + time.toString("yyyy-MM-dd HH.mm.ss").toStdString() + ")" + count +
               ".kdbx";
    }
    std::string keptMessage(const std::filesystem::path& file) const {
        return "Dosya diskte değişmişti; oradaki sürüm “" + file.filename().native() + "” adıyla saklandı.";
    }
    bool isKept(const std::filesystem::path& file) const {
        const auto found = files.contents.find(file);
        return found != files.contents.end() && found->second == foreign;
    }

    /// A vault of the old format, whose attachments lie in the document.
    void putOldVault(const std::string& pool = "<Binary ID=\"0\">AAEC</Binary>") {
        auto old = smallVault();
        old.formatVersion = {.major = 3, .minor = 1};
        old.root.unknownXML = {"<BrenvikPreservedMeta><Binaries>" + pool + "</Binaries></BrenvikPreservedMeta>"};
        putVault(old);
    }
};

TEST_F(AppStateFileTest, anothersChangeIsKeptBesideTheVaultBeforeASave) {
    unlock();
    rename("Yeni ad");
    files.contents[vaultFile] = foreign;

    state->save();

    EXPECT_TRUE(isKept(conflict()));
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
    EXPECT_FALSE(state->isDirty());
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    EXPECT_THAT(state->lastError(), Optional(keptMessage(conflict())));
}

TEST_F(AppStateFileTest, whatThisSessionReadOrWroteItselfIsNotKept) {
    unlock();
    for (const auto* title : {"bir", "iki", "üç"}) {
        rename(title);
        state->save();
    }
    EXPECT_EQ(files.contents.size(), 1U);
    EXPECT_FALSE(state->lastError());
}

TEST_F(AppStateFileTest, aNewVaultIsThisSessionsOwn) {
    state->createDatabase(otherFile, "parola", none);
    state->save();
    EXPECT_EQ(files.contents.size(), 2U);
    files.contents[otherFile] = foreign;
    state->save();
    EXPECT_TRUE(isKept(conflict("", "İş")));
}

TEST_F(AppStateFileTest, nothingIsKeptOfAFileThatIsGoneOrEmpty) {
    unlock();
    files.contents.erase(vaultFile);
    state->save();
    EXPECT_EQ(files.contents.size(), 1U);

    files.contents[vaultFile] = {};
    state->save();
    EXPECT_EQ(files.contents.size(), 1U);
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
    EXPECT_FALSE(state->lastError());
}

TEST_F(AppStateFileTest, aNameThatIsTakenIsLeftAlone) {
    unlock();
    files.contents[conflict()] = copyOf(bytesOf("ilki"));
    files.contents[conflict(" 2")] = copyOf(bytesOf("ikincisi"));
    files.contents[vaultFile] = foreign;

    state->save();

    EXPECT_EQ(files.contents[conflict()], copyOf(bytesOf("ilki")));
    EXPECT_EQ(files.contents[conflict(" 2")], copyOf(bytesOf("ikincisi")));
    EXPECT_TRUE(isKept(conflict(" 3")));
    EXPECT_THAT(state->lastError(), Optional(keptMessage(conflict(" 3"))));
}

TEST_F(AppStateFileTest, aLongNameIsCutSoThatTheDiskTakesIt) {
    std::string name;
    while (name.size() < 248)
        name += "ğ";
    const std::filesystem::path longFile = "/kasa/" + name + ".kdbx";
    files.contents[longFile] = files.contents[vaultFile];
    state->prepare(longFile);
    state->unlock("parola", none);
    files.contents[longFile] = foreign;

    state->save();

    ASSERT_EQ(files.contents.size(), 3U);
    for (const auto& [file, content] : files.contents)
        if (content == foreign) {
            EXPECT_LE(file.filename().native().size(), 255U);
            EXPECT_TRUE(Text::isValidUTF8(bytesOf(file.native())));
            EXPECT_TRUE(file.native().ends_with(conflict().filename().native().substr(2)));
        }
}

TEST_F(AppStateFileTest, aVersionThatCannotBeKeptIsNotReplaced) {
    unlock();
    rename("Yeni ad");
    files.contents[vaultFile] = foreign;
    files.unwritable[conflict()] = "saklanamadı";

    state->save();

    EXPECT_EQ(files.contents[vaultFile], foreign);
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->lastError(), Optional(StrEq("saklanamadı")));
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateFileTest, aVersionThatCannotBeReadIsNotReplaced) {
    unlock();
    rename("Yeni ad");
    files.contents[vaultFile] = foreign;
    files.unreadable[vaultFile] = "okunamadı";

    state->save();

    EXPECT_EQ(files.contents[vaultFile], foreign);
    EXPECT_TRUE(state->isDirty());
    EXPECT_THAT(state->lastError(), Optional(StrEq("okunamadı")));
}

TEST_F(AppStateFileTest, aLockKeepsAnothersChangeTooAndSaysSo) {
    unlock();
    rename("Yeni ad");
    files.contents[vaultFile] = foreign;

    state->lock();

    EXPECT_TRUE(state->isLocked());
    EXPECT_TRUE(isKept(conflict()));
    EXPECT_EQ(firstTitleIn(vaultFile), "Yeni ad");
    EXPECT_THAT(state->lastError(), Optional(keptMessage(conflict())));
}

TEST_F(AppStateFileTest, savingUnderTheSameNameKeepsAnothersChange) {
    unlock();
    files.contents[vaultFile] = foreign;
    state->saveAs(vaultFile);
    EXPECT_TRUE(isKept(conflict()));
}

TEST_F(AppStateFileTest, savingElsewhereReplacesWhatThePanelAskedAboutAndGoesOnFromThere) {
    unlock();
    files.contents[otherFile] = foreign;
    state->saveAs(otherFile);
    EXPECT_EQ(files.contents.size(), 2U);
    EXPECT_FALSE(state->lastError());

    rename("Yeni ad");
    state->save();
    EXPECT_EQ(files.contents.size(), 2U);
    files.contents[otherFile] = foreign;
    state->save();
    EXPECT_TRUE(isKept(conflict("", "İş")));
}

TEST_F(AppStateFileTest, theFirstSaveOfAnOldVaultKeepsItsAttachments) {
    putOldVault();
    const auto old = files.contents[vaultFile];
    unlock();

    state->save();

    EXPECT_EQ(files.contents["/kasa/Ev (KDBX 3).kdbx"], old);
    EXPECT_THAT(state->lastError(),
                Optional(StrEq("Ekler yeni biçime taşınmadı; eski dosya “Ev (KDBX 3).kdbx” adıyla saklandı.")));
    EXPECT_THAT(state->statusMessage(), Optional(StrEq("Kaydedildi")));
    state->save();
    EXPECT_EQ(files.contents.size(), 2U) << "only the first save loses something";
}

TEST_F(AppStateFileTest, anOldVaultIsKeptUnderAFreeName) {
    putOldVault();
    unlock();
    rename("Yeni ad");
    files.contents["/kasa/Ev (KDBX 3).kdbx"] = foreign;
    state->lock();
    EXPECT_EQ(files.contents["/kasa/Ev (KDBX 3).kdbx"], foreign);
    EXPECT_TRUE(files.contents.contains("/kasa/Ev (KDBX 3) 2.kdbx"));
}

TEST_F(AppStateFileTest, anOldVaultThatLosesNothingIsNotKept) {
    putOldVault("");
    unlock();
    state->save();
    EXPECT_EQ(files.contents.size(), 1U);
    EXPECT_FALSE(state->lastError());
}

TEST_F(AppStateFileTest, anOldVaultThatIsSavedElsewhereStaysAsItIs) {
    putOldVault();
    const auto old = files.contents[vaultFile];
    unlock();
    state->saveAs(otherFile);
    state->save();
    EXPECT_EQ(files.contents[vaultFile], old);
    EXPECT_EQ(files.contents.size(), 2U);
}

TEST_F(AppStateFileTest, aChangeOnTheDiskIsReportedOnce) {
    unlock();
    state->lookAtFile();
    EXPECT_FALSE(state->lastError());

    files.contents[vaultFile] = foreign;
    state->lookAtFile();
    EXPECT_THAT(state->lastError(),
                Optional(StrEq("“Ev.kdbx” diskte değişti. Yeni hâli için kasayı kilitleyip yeniden aç.")));

    state->setLastError(none);
    state->lookAtFile();
    EXPECT_FALSE(state->lastError());

    rename("Yeni ad");
    files.contents[vaultFile] = copyOf(bytesOf("yine başka"));
    state->lookAtFile();
    EXPECT_THAT(state->lastError(),
                Optional(StrEq("“Ev.kdbx” diskte değişti. Kaydedersen oradaki sürüm ayrıca saklanır.")));
}

TEST_F(AppStateFileTest, whatIsOnlyWorthKnowingIsNoFailure) {
    unlock();
    files.contents[vaultFile] = foreign;
    state->lookAtFile();
    EXPECT_TRUE(state->isNotice()) << "the file changed";

    rename("Yeni ad");
    state->save();
    ASSERT_TRUE(state->lastError());
    EXPECT_TRUE(state->isNotice()) << "a version was kept";

    state->setLastError("Olmadı.");
    EXPECT_FALSE(state->isNotice());
}

TEST_F(AppStateFileTest, whatThisSessionWritesIsNoChange) {
    unlock();
    rename("Yeni ad");
    state->save();
    state->lookAtFile();
    EXPECT_FALSE(state->lastError());
}

TEST_F(AppStateFileTest, aFileThatIsGoneIsReportedAndWrittenAgain) {
    unlock();
    files.contents.erase(vaultFile);
    state->lookAtFile();
    EXPECT_THAT(state->lastError(), Optional(StrEq("“Ev.kdbx” artık yerinde değil. Kaydedersen yeniden yazılır.")));
    state->save();
    EXPECT_FALSE(state->lastError()) << "it is in its place again";
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
}

TEST_F(AppStateFileTest, aReportThatIsNoLongerTrueIsTakenBack) {
    unlock();
    const auto own = files.contents[vaultFile];
    files.contents.erase(vaultFile);
    state->lookAtFile();
    EXPECT_TRUE(state->lastError());
    files.contents[vaultFile] = own;
    state->lookAtFile();
    EXPECT_FALSE(state->lastError()) << "the stick is back";

    files.contents[vaultFile] = foreign;
    state->lookAtFile();
    EXPECT_TRUE(state->lastError());
    state->lock();
    EXPECT_FALSE(state->lastError()) << "it is opened anew";
}

TEST_F(AppStateFileTest, whatElseIsReportedStays) {
    unlock();
    const auto own = files.contents[vaultFile];
    files.contents[vaultFile] = foreign;
    state->lookAtFile();
    state->setLastError("başka bir hata");
    files.contents[vaultFile] = own;
    state->lookAtFile();
    state->lock();
    EXPECT_THAT(state->lastError(), Optional(StrEq("başka bir hata")));
}

TEST_F(AppStateFileTest, whileLockedNothingIsReported) {
    state->prepare(vaultFile);
    files.contents[vaultFile] = foreign;
    state->lookAtFile();
    EXPECT_FALSE(state->lastError());
}

TEST_F(AppStateFileTest, aVaultThatIsThereIsNotReplacedByANewOne) {
    const auto content = files.contents[vaultFile];
    state->createDatabase(vaultFile, "yeni", none);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(files.contents[vaultFile], content);
    EXPECT_FALSE(state->databaseURL());
    EXPECT_THAT(state->lastError(),
                Optional(StrEq("“Ev.kdbx” boş değil; üzerine yeni bir kasa yazılmadı. Ana parolanla açabilirsin.")));
}

TEST_F(AppStateFileTest, anEmptyFileBecomesAVault) {
    files.contents[otherFile] = {};
    state->createDatabase(otherFile, "yeni", none);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(AppStateFileTest, whatThePanelAskedAboutIsReplaced) {
    state->prepareNew(vaultFile, AppState::Replacing::yes);
    EXPECT_TRUE(state->offersCreation());
    state->createDatabase(vaultFile, "yeni", none);
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(codec.lastKey->password, "yeni");
    EXPECT_EQ(files.contents.size(), 1U);

    state->createDatabase(vaultFile, "yine", none);
    EXPECT_THAT(state->lastError(), Optional(::testing::HasSubstr("boş değil"))) << "asked once, replaced once";
}

TEST_F(AppStateFileTest, thePermissionEndsWithAnythingElse) {
    state->prepareNew(vaultFile, AppState::Replacing::yes);
    files.contents[vaultFile] = foreign;
    EXPECT_FALSE(state->offersCreation()) << "nobody was asked about this content";
    state->createDatabase(vaultFile, "yeni", none);
    EXPECT_EQ(files.contents[vaultFile], foreign);

    state->prepareNew(vaultFile, AppState::Replacing::yes);
    state->prepare(vaultFile);
    EXPECT_FALSE(state->offersCreation());

    state->prepareNew(vaultFile, AppState::Replacing::no);
    EXPECT_FALSE(state->offersCreation());

    files.contents[otherFile] = foreign;
    state->prepareNew(vaultFile, AppState::Replacing::yes);
    state->createDatabase(otherFile, "yeni", none);
    EXPECT_EQ(files.contents[otherFile], foreign) << "another file";
}

TEST_F(AppStateFileTest, aFileThatComesWhileTheVaultIsMadeIsNotReplaced) {
    files.whileWriting = [this] { files.contents[otherFile] = foreign; };
    state->createDatabase(otherFile, "yeni", none);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(files.contents[otherFile], foreign);
}

TEST_F(AppStateFileTest, aKeyFileThatCannotBeReadCountsAsNoneAndTheStatusLineSaysSo) {
    files.unreadable["/kasa/anahtar"] = "okunamadı";
    files.contents["/kasa/bos"] = {};
    for (const auto* keyFile : {"/kasa/anahtar", "/kasa/yok", "/kasa/bos"}) {
        files.contents.erase(otherFile);
        state->setStatusMessage(none);
        state->sealDatabase(otherFile, "yeni", keyFile);
        EXPECT_FALSE(state->isLocked()) << keyFile;
        EXPECT_FALSE(codec.lastKey->keyFileData) << keyFile;
        EXPECT_FALSE(state->lastError());
        EXPECT_THAT(state->statusMessage(),
                    Optional(StrEq("Anahtar dosyası okunamadı; kasa anahtar dosyası olmadan oluşturuldu.")));
        clock.advance(std::chrono::seconds(10));
        EXPECT_TRUE(state->statusMessage()) << "it stays until it is read";
        state->closeDatabase();
    }
}

TEST_F(AppStateFileTest, aKeyFileThatIsReadIsPartOfTheKey) {
    files.contents["/kasa/anahtar"] = copyOf(bytesOf("anahtar"));
    state->sealDatabase(otherFile, "yeni", "/kasa/anahtar");
    EXPECT_EQ(codec.lastKey->keyFileData, copyOf(bytesOf("anahtar")));
    EXPECT_FALSE(state->statusMessage());

    state->closeDatabase();
    files.contents.erase(otherFile);
    state->sealDatabase(otherFile, "yeni", none);
    EXPECT_FALSE(codec.lastKey->keyFileData);
    EXPECT_FALSE(state->statusMessage());
}

TEST_F(AppStateFileTest, aVaultThatIsNotMadeSaysNothingOfItsKeyFile) {
    state->sealDatabase(vaultFile, "yeni", "/kasa/yok");
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->statusMessage());
}

}  // namespace
