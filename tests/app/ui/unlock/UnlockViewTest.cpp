// SPDX-License-Identifier: MIT
#include "app/ui/unlock/UnlockView.h"

#include "app/ui/components/StrengthMeter.h"
#include "tests/app/state/StateFakes.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/platform/TemporaryFolder.h"

#include <QApplication>
#include <QFileDialog>
#include <QSignalSpy>
#include <QTimer>

#include <algorithm>

namespace {

using namespace WindowProbe;

class UnlockViewTest : public StateTest {
protected:
    TemporaryFolder folder;
    const std::filesystem::path existing = folder / "Ev.kdbx";
    const std::filesystem::path missing = folder / "Yeni.kdbx";
    UnlockView view{*state};

    UnlockViewTest() {
        writeFile(existing, "vault");  // for the panels, which show the disk itself
        files.contents[existing] = files.contents.at(vaultFile);
        view.resize(480, 600);
        view.show();
    }

    bool canSubmit(const QString& name = "Kilidi aç") {
        auto* const submit = button(view, name);
        return submit && submit->isEnabled();
    }

    /// Answers the next panel with a file, or cancels it.
    static void answerPanel(const std::optional<std::filesystem::path>& file) {
        auto* const timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, file] {
            auto* const panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!panel)
                return;  // not open yet
            timer->stop();
            timer->deleteLater();
            if (!file)
                return panel->reject();
            panel->findChild<QLineEdit*>()->setText(QString::fromStdString(file->native()));
            QMetaObject::invokeMethod(panel, "accept");
        });
        timer->start(1);
    }

    void chooseKeyFile() {
        writeFile(folder / "kasam.keyx", "anahtar");
        files.contents[folder / "kasam.keyx"] = copyOf(bytesOf("anahtar"));
        answerPanel(folder / "kasam.keyx");
        click(view, "Dosya seç…");
    }
};

TEST_F(UnlockViewTest, withoutAVaultItOffersToChooseOrMakeOne) {
    EXPECT_TRUE(shows(view, "Henüz bir kasa yok"));
    EXPECT_TRUE(shows(view, "Var olan bir .kdbx dosyasını aç ya da sıfırdan yeni bir kasa oluştur."));
    EXPECT_TRUE(shows(view, "Parolaların yerel, şifreli ve sende."));
    EXPECT_NE(button(view, "Veritabanı aç…"), nullptr);
    EXPECT_NE(button(view, "Yeni kasa…"), nullptr);
    EXPECT_EQ(field(view, "Ana parola"), nullptr);
}

TEST_F(UnlockViewTest, aChosenVaultShowsItsNameAndItsFolder) {
    answerPanel(existing);
    click(view, "Veritabanı aç…");

    EXPECT_EQ(state->databaseURL(), existing);
    EXPECT_TRUE(shows(view, "Ev.kdbx"));
    EXPECT_TRUE(shows(view, QString::fromStdString(folder.path())));
    EXPECT_EQ(field(view, "Ana parola")->placeholderText(), "Ana parolan");
    EXPECT_TRUE(shows(view, "İsteğe bağlı — ikinci bir faktör."));
    EXPECT_FALSE(shows(view, "Henüz bir kasa yok"));
}

TEST_F(UnlockViewTest, aCancelledPanelChangesNothing) {
    answerPanel(std::nullopt);
    click(view, "Veritabanı aç…");
    EXPECT_FALSE(state->databaseURL());
}

TEST_F(UnlockViewTest, opensWithThePasswordAndForgetsIt) {
    state->prepare(existing);
    EXPECT_FALSE(canSubmit());
    type(view, "Ana parola", "parola");
    EXPECT_TRUE(canSubmit());

    click(view, "Kilidi aç");

    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(codec.lastKey->password, "parola");
    EXPECT_EQ(field(view, "Ana parola")->text(), "");
}

TEST_F(UnlockViewTest, returnInThePasswordFieldOpens) {
    state->prepare(existing);
    type(view, "Ana parola", "parola");
    QTest::keyClick(field(view, "Ana parola"), Qt::Key_Return);
    EXPECT_FALSE(state->isLocked());
}

TEST_F(UnlockViewTest, aKeyFileAloneIsEnoughToOpen) {
    state->prepare(existing);
    chooseKeyFile();

    EXPECT_TRUE(shows(view, "kasam.keyx"));
    EXPECT_FALSE(shows(view, "İsteğe bağlı — ikinci bir faktör."));
    EXPECT_TRUE(canSubmit());
    click(view, "Kilidi aç");
    EXPECT_FALSE(codec.lastKey->password);
    EXPECT_EQ(codec.lastKey->keyFileData, copyOf(bytesOf("anahtar")));
}

TEST_F(UnlockViewTest, aKeyFileCanBeTakenAway) {
    state->prepare(existing);
    chooseKeyFile();
    click(view, "Kaldır");
    EXPECT_FALSE(shows(view, "kasam.keyx"));
    EXPECT_FALSE(canSubmit());
}

TEST_F(UnlockViewTest, aWrongPasswordIsTakenBackAndTheKeyFileStays) {
    state->prepare(existing);
    chooseKeyFile();
    type(view, "Ana parola", "yanlış");

    click(view, "Kilidi aç");

    EXPECT_TRUE(shows(view, "Ana parola veya anahtar dosyası hatalı."));
    EXPECT_EQ(field(view, "Ana parola")->text(), "");
    EXPECT_TRUE(shows(view, "kasam.keyx"));
    EXPECT_EQ(view.focusWidget(), field(view, "Ana parola"));
}

TEST_F(UnlockViewTest, dismissingTheBannerKeepsWhatWasTyped) {
    state->prepare(existing);
    state->setLastError("bir hata");
    type(view, "Ana parola", "yarım");
    click(view, "Kapat");
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(shows(view, "bir hata"));
    EXPECT_EQ(field(view, "Ana parola")->text(), "yarım");
}

TEST_F(UnlockViewTest, anotherVaultThrowsAwayWhatWasTypedForTheOldOne) {
    state->prepare(existing);
    chooseKeyFile();
    type(view, "Ana parola", "eski");
    files.contents[folder / "Diger.kdbx"] = copyOf(bytesOf("vault"));

    state->prepare(folder / "Diger.kdbx");

    EXPECT_EQ(field(view, "Ana parola")->text(), "");
    EXPECT_FALSE(shows(view, "kasam.keyx"));
}

TEST_F(UnlockViewTest, aMissingVaultIsOneToSeal) {
    state->prepare(missing);
    EXPECT_TRUE(shows(view, "Ana parolanı belirle, kasayı mühürleyelim."));
    EXPECT_EQ(field(view, "Ana parola")->placeholderText(), "Güçlü bir parola seç");
    EXPECT_EQ(field(view, "Parolayı doğrula")->placeholderText(), "Tekrar yaz");
    EXPECT_NE(button(view, "Kasayı oluştur"), nullptr);
    EXPECT_EQ(button(view, "Kilidi aç"), nullptr);
}

TEST_F(UnlockViewTest, anEmptyFileIsAVaultToSealUnderItsName) {
    files.contents[missing] = {};
    state->prepare(missing);
    EXPECT_NE(button(view, "Kasayı oluştur"), nullptr);
    EXPECT_TRUE(shows(view, "Yeni.kdbx"));
}

TEST_F(UnlockViewTest, aNewVaultNeedsItsPasswordTwice) {
    state->prepare(missing);
    chooseKeyFile();
    EXPECT_FALSE(canSubmit("Kasayı oluştur")) << "a key file alone seals nothing";

    type(view, "Ana parola", "uzun parola");
    type(view, "Parolayı doğrula", "uzun");
    EXPECT_TRUE(shows(view, "Parolalar eşleşmiyor."));
    EXPECT_FALSE(canSubmit("Kasayı oluştur"));

    type(view, "Parolayı doğrula", "uzun parola");
    EXPECT_FALSE(shows(view, "Parolalar eşleşmiyor."));
    click(view, "Kasayı oluştur");

    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), missing);
    EXPECT_EQ(codec.lastKey->password, "uzun parola");
    EXPECT_EQ(codec.lastKey->keyFileData, copyOf(bytesOf("anahtar")));
}

TEST_F(UnlockViewTest, bothPasswordFieldsShowTheirTextTogether) {
    state->prepare(missing);
    click(*field(view, "Ana parola"), "Göster");
    EXPECT_EQ(field(view, "Parolayı doğrula")->echoMode(), QLineEdit::Normal);
    click(*field(view, "Parolayı doğrula"), "Gizle");
    EXPECT_EQ(field(view, "Ana parola")->echoMode(), QLineEdit::Password);
}

TEST_F(UnlockViewTest, choosingAnExistingVaultLeavesTheSealing) {
    state->prepare(missing);
    answerPanel(existing);
    click(view, "Başka bir veritabanı aç");
    EXPECT_NE(button(view, "Kilidi aç"), nullptr);
    EXPECT_EQ(field(view, "Parolayı doğrula"), nullptr);
}

TEST_F(UnlockViewTest, aNewNameGetsTheVaultsExtension) {
    answerPanel(folder / "Taze");
    click(view, "Yeni kasa…");
    EXPECT_EQ(state->databaseURL(), folder / "Taze.kdbx");
    EXPECT_NE(button(view, "Kasayı oluştur"), nullptr);
}

TEST_F(UnlockViewTest, theCardGrowsWithWhatItShows) {
    state->prepare(existing);
    QCoreApplication::processEvents();
    const int before = view.cardHeight();
    state->setLastError("bir hata");
    QCoreApplication::processEvents();
    EXPECT_GT(view.cardHeight(), before);
}

TEST_F(UnlockViewTest, returnIsTheWayOnFromWhereverOnTheCard) {
    state->prepare(existing);
    chooseKeyFile();
    QTest::keyClick(button(view, "Kaldır"), Qt::Key_Return);
    EXPECT_FALSE(state->lastError().value_or("").empty()) << "the key file alone was tried";
    EXPECT_TRUE(shows(view, "kasam.keyx"));
}

TEST_F(UnlockViewTest, returnPressesTheButtonThatHasTheFocusWhereThereIsNothingToSubmit) {
    QStringList titles;
    QTimer panels;
    QObject::connect(&panels, &QTimer::timeout, &panels, [&] {
        auto* const panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!panel)
            return;
        titles += panel->windowTitle();
        panel->reject();
    });
    panels.start(1);
    for (const auto* name : {"Veritabanı aç…", "Yeni kasa…"}) {
        view.activateWindow();  // again after a panel
        ASSERT_TRUE(QTest::qWaitFor([&] { return view.isActiveWindow(); }));
        button(view, name)->setFocus();
        QTest::keyClick(button(view, name), Qt::Key_Return);
    }
    EXPECT_EQ(titles, QStringList({"Veritabanı Aç", "Yeni Veritabanı"}));
}

TEST_F(UnlockViewTest, returnInThePasswordFieldWithAKeyFileSubmitsOnce) {
    state->prepare(existing);
    chooseKeyFile();
    type(view, "Ana parola", "yanlış");
    QSignalSpy failures(&*state, &AppState::lastErrorChanged);
    QTest::keyClick(field(view, "Ana parola"), Qt::Key_Return);
    EXPECT_EQ(failures.count(), 1);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(codec.lastKey->password, "yanlış");
}

TEST_F(UnlockViewTest, returnWithNothingToSubmitDoesNothing) {
    state->prepare(existing);
    QTest::keyClick(field(view, "Ana parola"), Qt::Key_Return);
    EXPECT_FALSE(state->lastError());
}

TEST_F(UnlockViewTest, theSameFailureAgainIsNoNews) {
    state->prepare(existing);
    for (const auto* password : {"yanlış", "yine yanlış"}) {
        type(view, "Ana parola", password);
        click(view, "Kilidi aç");
    }
    EXPECT_EQ(field(view, "Ana parola")->text(), "yine yanlış");

    click(view, "Kapat");
    click(view, "Kilidi aç");
    EXPECT_EQ(field(view, "Ana parola")->text(), "") << "a dismissed failure that comes back is news";
}

TEST_F(UnlockViewTest, theStrengthShowsBetweenTheFieldAndTheMismatch) {
    state->prepare(missing);
    EXPECT_EQ(find<StrengthMeter>(view, "Parola gücü"), nullptr);
    type(view, "Ana parola", "uzun parola");
    EXPECT_TRUE(shows(view, "11 karakter"));
    EXPECT_FALSE(shows(view, "Parolalar eşleşmiyor.")) << "nothing repeated yet";
    type(view, "Parolayı doğrula", "kısa");
    const auto yOf = [this](QWidget* widget) { return widget->mapTo(&view, QPoint()).y(); };
    EXPECT_LT(yOf(field(view, "Parolayı doğrula")), yOf(find<QLabel>(view, "11 karakter")));
    EXPECT_LT(yOf(find<QLabel>(view, "11 karakter")), yOf(find<QLabel>(view, "Parolalar eşleşmiyor.")));
}

TEST_F(UnlockViewTest, theStrengthIsForANewVaultAlone) {
    state->prepare(existing);
    type(view, "Ana parola", "uzun parola");
    EXPECT_FALSE(shows(view, "11 karakter"));
}

TEST_F(UnlockViewTest, anotherChoiceOfKeyFileThatIsLeftTakesItAway) {
    state->prepare(existing);
    chooseKeyFile();
    click(view, "Kaldır");
    answerPanel(std::nullopt);
    click(view, "Dosya seç…");
    EXPECT_TRUE(shows(view, "İsteğe bağlı — ikinci bir faktör."));
}

TEST_F(UnlockViewTest, aKeyFileThatCannotBeReadIsNoneForANewVault) {
    state->prepare(missing);
    chooseKeyFile();
    files.unreadable[folder / "kasam.keyx"] = "okunamadı";
    type(view, "Ana parola", "uzun parola");
    type(view, "Parolayı doğrula", "uzun parola");
    click(view, "Kasayı oluştur");
    EXPECT_FALSE(state->isLocked());
    EXPECT_FALSE(codec.lastKey->keyFileData);
    EXPECT_FALSE(state->lastError());
    EXPECT_EQ(state->statusMessage(), "Anahtar dosyası okunamadı; kasa anahtar dosyası olmadan oluşturuldu.");
}

TEST_F(UnlockViewTest, aVaultThatIsBackIsNotSealedOverAndIsThereToBeOpened) {
    state->prepare(missing);
    type(view, "Ana parola", "uzun parola");
    type(view, "Parolayı doğrula", "uzun parola");
    files.contents[missing] = files.contents.at(vaultFile);

    click(view, "Kasayı oluştur");

    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(files.contents[missing], files.contents.at(vaultFile));
    EXPECT_TRUE(shows(view, "“Yeni.kdbx” boş değil; üzerine yeni bir kasa yazılmadı. Ana parolanla açabilirsin."));
    EXPECT_NE(button(view, "Kilidi aç"), nullptr);
    EXPECT_EQ(field(view, "Parolayı doğrula"), nullptr);
    EXPECT_EQ(field(view, "Ana parola")->text(), "");

    type(view, "Ana parola", "parola");
    click(view, "Kilidi aç");
    EXPECT_FALSE(state->isLocked());
}

TEST_F(UnlockViewTest, theCardNoticesByItselfThatTheVaultIsBack) {
    state->prepare(missing);
    type(view, "Ana parola", "uzun parola");
    state->lookAtFile();
    EXPECT_NE(button(view, "Kasayı oluştur"), nullptr) << "nothing has come";
    EXPECT_EQ(field(view, "Ana parola")->text(), "uzun parola");

    files.contents[missing] = files.contents.at(vaultFile);
    state->lookAtFile();

    EXPECT_TRUE(shows(view, "“Yeni.kdbx” yeniden yerinde. Ana parolanla açabilirsin."));
    EXPECT_NE(button(view, "Kilidi aç"), nullptr);
    EXPECT_EQ(field(view, "Ana parola")->text(), "") << "it was for a new vault";
}

TEST_F(UnlockViewTest, aVaultThatGoesAwayIsStillOneToOpen) {
    state->prepare(existing);
    files.contents.erase(existing);
    state->lookAtFile();
    EXPECT_NE(button(view, "Kilidi aç"), nullptr);
}

TEST_F(UnlockViewTest, aFileThatMayBeReplacedIsSealed) {
    state->prepareNew(existing, AppState::Replacing::yes);
    EXPECT_TRUE(shows(view, "Ana parolanı belirle, kasayı mühürleyelim."));
    state->lookAtFile();
    type(view, "Ana parola", "uzun parola");
    type(view, "Parolayı doğrula", "uzun parola");
    click(view, "Kasayı oluştur");
    EXPECT_FALSE(state->isLocked());
    EXPECT_EQ(codec.lastKey->password, "uzun parola");
}

TEST_F(UnlockViewTest, theFormOfTheVaultAtHandTurnsToSealingWhenItMayBeReplaced) {
    state->prepare(existing);
    EXPECT_NE(button(view, "Kilidi aç"), nullptr);
    state->prepareNew(existing, AppState::Replacing::yes);
    EXPECT_NE(button(view, "Kasayı oluştur"), nullptr);
}

TEST_F(UnlockViewTest, aChangeOfTheOpenVaultsFileIsNotTheCards) {
    state->prepare(missing);
    state->createDatabase(missing, "parola", std::nullopt);
    files.contents[missing] = copyOf(bytesOf("başkası"));
    state->lookAtFile();
    EXPECT_EQ(state->lastError(), "“Yeni.kdbx” diskte değişti. Yeni hâli için kasayı kilitleyip yeniden aç.");
}

TEST_F(UnlockViewTest, theFirstScreenShowsWhatThereIsToSayUntilItIsDismissed) {
    ASSERT_TRUE(shows(view, "Henüz bir kasa yok"));
    state->setNotice("Oradaki sürüm saklandı.");
    EXPECT_TRUE(shows(view, "Oradaki sürüm saklandı."));
    click(view, "Kapat");
    EXPECT_FALSE(state->lastError());
    EXPECT_FALSE(shows(view, "Oradaki sürüm saklandı."));
    state->setLastError("Olmadı.");
    EXPECT_TRUE(shows(view, "Olmadı."));
}

TEST_F(UnlockViewTest, aMessageShowsOnceOnTheFormToo) {
    state->prepare(existing);
    state->setLastError("Olmadı.");
    QCoreApplication::processEvents();
    const auto labels = view.findChildren<QLabel*>();
    EXPECT_EQ(std::ranges::count_if(
                  labels, [&](const auto* label) { return label->isVisible() && label->text() == "Olmadı."; }),
              1);
}

TEST_F(UnlockViewTest, whatIsOnlyWorthKnowingLeavesTheFormAlone) {
    state->prepare(existing);
    type(view, "Ana parola", "yarım");
    state->setNotice("Oradaki sürüm saklandı.");
    EXPECT_TRUE(shows(view, "Oradaki sürüm saklandı."));
    EXPECT_EQ(field(view, "Ana parola")->text(), "yarım");
    state->setLastError("Olmadı.");
    EXPECT_EQ(field(view, "Ana parola")->text(), "");
}

TEST_F(UnlockViewTest, afterALockTheFormStartsOver) {
    state->prepare(existing);
    click(*field(view, "Ana parola"), "Göster");
    chooseKeyFile();
    view.startOver();
    EXPECT_EQ(field(view, "Ana parola")->echoMode(), QLineEdit::Password);
    EXPECT_TRUE(shows(view, "İsteğe bağlı — ikinci bir faktör."));
    EXPECT_EQ(view.focusWidget(), field(view, "Ana parola"));
}

TEST_F(UnlockViewTest, theFootIsTheSameForEveryVault) {
    for (const auto* word : {"KDBX 4.x", "Argon2id", "Yerel"})
        EXPECT_NE(find<QWidget>(view, word), nullptr) << word;
}

TEST_F(UnlockViewTest, theButtonsSayWhatTheyDo) {
    state->prepare(existing);
    for (const auto* tip : {"Başka bir veritabanı aç", "Yeni veritabanı oluştur"})
        EXPECT_EQ(button(view, tip)->toolTip(), tip);
    EXPECT_NE(button(view, "Değiştir"), nullptr);
}

}  // namespace
