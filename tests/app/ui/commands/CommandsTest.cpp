// SPDX-License-Identifier: MIT
#include "app/ui/commands/Commands.h"

#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QListView>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QStyle>
#include <QTemporaryDir>
#include <QTimer>

namespace {

using namespace WindowProbe;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

struct Row {
    std::string text;
    std::string key;
    friend bool operator==(const Row&, const Row&) = default;
    friend void PrintTo(const Row& row, std::ostream* out) { *out << row.text << " [" << row.key << "]"; }
};

const Row line{"—", ""};

class CommandsTest : public WindowTest {
protected:
    MainWindow window{environment};

    CommandsTest() {
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    void open() {
        unlock();
        QCoreApplication::processEvents();
    }

    std::vector<Row> rowsOf(const QString& title) {
        std::vector<Row> rows;
        auto* const found = menu(title);
        for (auto* const action : found ? found->actions() : QList<QAction*>())
            rows.push_back(action->isSeparator()
                               ? line
                               : Row{action->text().toStdString(),
                                     action->shortcut().toString(QKeySequence::PortableText).toStdString()});
        return rows;
    }
    QMenu* menu(const QString& title) {
        for (auto* const action : window.menuBar()->actions())
            if (action->text().remove(QLatin1Char('&')) == title)
                return action->menu();
        return nullptr;
    }
    /// The command of a menu; its text may go on after a dash.
    QAction& command(const QString& title, const QString& text) {
        auto* const found = menu(title);
        for (auto* const action : found ? found->actions() : QList<QAction*>())
            if (action->text() == text)
                return *action;
        ADD_FAILURE() << "no command " << qPrintable(text);
        static QAction none;
        return none;
    }
    bool isEnabled(const QString& title, const QString& text) { return command(title, text).isEnabled(); }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        window.activateWindow();  // a panel has had the keyboard meanwhile
        QCoreApplication::processEvents();
        auto* const focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &window, static_cast<Qt::Key>(key), modifiers);
        QCoreApplication::processEvents();
    }
    void select(const KdbxEntry& entry) { state->setSelectedEntryIDs({entry.id}); }
    void focusList() { find<QListView>(window, "Kayıtlar")->setFocus(); }
    QLineEdit& searchField() { return *field(window, "Kayıtlarda ara"); }

    static void answerPanel(const QString& title, const QString& prompt,
                            const std::optional<std::filesystem::path>& file) {
        auto* const timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, title, prompt, file] {
            auto* const panel = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!panel)
                return;  // not open yet
            timer->stop();
            timer->deleteLater();
            EXPECT_EQ(panel->windowTitle(), title);
            EXPECT_TRUE(prompt.isEmpty() || panel->labelText(QFileDialog::Accept) == prompt)
                << qPrintable(panel->labelText(QFileDialog::Accept));
            if (!file)
                return panel->reject();
            panel->findChild<QLineEdit*>()->setText(QString::fromStdString(file->native()));
            QMetaObject::invokeMethod(panel, "accept");
        });
        timer->start(1);
    }
};

TEST_F(CommandsTest, theMenusStandInTheirOrderAndEachHasALetterOfItsOwn) {
    std::vector<std::string> titles;
    std::set<QString> letters;
    for (auto* const action : window.menuBar()->actions()) {
        const auto mnemonic = QKeySequence::mnemonic(action->text()).toString();
        EXPECT_FALSE(mnemonic.isEmpty());
        EXPECT_TRUE(letters.insert(mnemonic).second) << qPrintable(mnemonic);
        titles.push_back(action->text().remove(QLatin1Char('&')).toStdString());
    }
    EXPECT_THAT(titles, ElementsAre("Dosya", "Düzen", "Kayıt", "Araçlar", "Görünüm", "Yardım"));
}

TEST_F(CommandsTest, everyMenuHasItsCommandsAndKeysInOrder) {
    EXPECT_THAT(rowsOf("Dosya"), ElementsAreArray<Row>({{"Yeni Veritabanı…", "Ctrl+N"},
                                                        {"Veritabanı Aç…", "Ctrl+O"},
                                                        line,
                                                        {"Kaydet", "Ctrl+S"},
                                                        {"Farklı Kaydet…", "Ctrl+Shift+S"},
                                                        line,
                                                        {"Kasayı Kilitle", "Ctrl+L"},
                                                        {"Veritabanını Kapat", "Ctrl+Shift+W"},
                                                        line,
                                                        {"Çık", "Ctrl+Q"}}));
    EXPECT_THAT(rowsOf("Düzen"), ElementsAreArray<Row>({{"Geri Al", "Ctrl+Z"},
                                                        {"Yinele", "Ctrl+Shift+Z"},
                                                        line,
                                                        {"Kes", "Ctrl+X"},
                                                        {"Kopyala", "Ctrl+C"},
                                                        {"Yapıştır", "Ctrl+V"},
                                                        line,
                                                        {"Tümünü Seç", "Ctrl+A"},
                                                        line,
                                                        {"Ayarlar…", "Ctrl+,"}}));
    EXPECT_THAT(rowsOf("Kayıt"), ElementsAreArray<Row>({{"Kullanıcı Adını Kopyala", "Ctrl+B"},
                                                        {"Parolayı Kopyala", "Ctrl+C"},
                                                        {"Adresi Kopyala", "Ctrl+Shift+U"},
                                                        line,
                                                        {"Otomatik Yaz", "Ctrl+Shift+V"},
                                                        {"Adresi Tarayıcıda Aç", "Ctrl+Shift+Enter"},
                                                        line,
                                                        {"Yeni Kayıt…", "Ctrl+I"},
                                                        {"Yeni Grup…", "Ctrl+Shift+G"},
                                                        {"Düzenle…", "Ctrl+E"},
                                                        {"Sil", "Ctrl+Del"},
                                                        line,
                                                        {"Gruba Taşı…", "Ctrl+Shift+M"},
                                                        {"Grubu Taşı…", ""},
                                                        {"Yukarı Taşı", "Alt+Up"},
                                                        {"Aşağı Taşı", "Alt+Down"}}));
    EXPECT_THAT(rowsOf("Araçlar"),
                ElementsAreArray<Row>({{"Parola Üret…", "Ctrl+G"}, {"Panoyu Şimdi Temizle", "Ctrl+Shift+K"}}));
    EXPECT_THAT(rowsOf("Görünüm"),
                ElementsAreArray<Row>(
                    {{"Ara", "Ctrl+F"}, line, {"Yan Sütunu Gizle", "F9"}, {"Sütun Genişliğini Ayarla", "F8"}}));
    EXPECT_THAT(rowsOf("Yardım"), ElementsAreArray<Row>({{"Brenvik Hakkında", ""}}));
}

TEST_F(CommandsTest, noKeyStandsForTwoCommands) {
    std::set<QKeySequence> taken;
    for (auto* const action : window.findChildren<QAction*>()) {
        if (action->shortcutContext() != Qt::WindowShortcut)
            continue;
        for (const auto& key : action->shortcuts())
            EXPECT_TRUE(taken.insert(key).second) << qPrintable(key.toString()) << " of " << qPrintable(action->text());
    }
}

TEST_F(CommandsTest, whileLockedOnlyWhatNeedsNoVaultIsEnabled) {
    std::vector<std::string> enabled;
    for (const auto* title : {"Dosya", "Düzen", "Kayıt", "Araçlar", "Görünüm", "Yardım"})
        for (auto* const action : menu(title)->actions())
            if (!action->isSeparator() && action->isEnabled())
                enabled.push_back(action->text().toStdString());
    EXPECT_THAT(enabled, ElementsAre("Yeni Veritabanı…", "Veritabanı Aç…", "Çık", "Ayarlar…", "Parola Üret…",
                                     "Panoyu Şimdi Temizle", "Brenvik Hakkında"));
}

TEST_F(CommandsTest, whatIsDoneToAnEntryNeedsOneSelected) {
    open();
    const auto commands = {"Kullanıcı Adını Kopyala", "Parolayı Kopyala", "Adresi Kopyala", "Otomatik Yaz",
                           "Adresi Tarayıcıda Aç",    "Düzenle…"};
    for (const auto* text : commands)
        EXPECT_FALSE(isEnabled("Kayıt", text)) << text;
    EXPECT_FALSE(isEnabled("Kayıt", "Sil"));

    select(bank());
    for (const auto* text : commands)
        EXPECT_TRUE(isEnabled("Kayıt", text)) << text;
    EXPECT_TRUE(isEnabled("Kayıt", "Sil"));

    state->setSelectedEntryIDs({bank().id, mail().id});
    for (const auto* text : commands)
        EXPECT_FALSE(isEnabled("Kayıt", text)) << text;
    EXPECT_TRUE(isEnabled("Kayıt", "Sil"));
}

TEST_F(CommandsTest, theEntrysTextsAreCopied) {
    open();
    state->edit("Adım", [](KdbxDatabase& database) {
        auto& entry = database.root.entries.mutableAt(0);
        entry.username = "işıl";
        entry.password = SecureString("gizli");
        entry.url = "ornek.com";
    });
    select(bank());
    focusList();

    press(Qt::Key_B);
    EXPECT_EQ(pasteboard.text(), "işıl");
    press(Qt::Key_C);
    EXPECT_EQ(pasteboard.text(), "gizli");
    press(Qt::Key_U, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(pasteboard.text(), "ornek.com");
    press(Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(workspace.opened, ElementsAre("https://ornek.com"));
}

TEST_F(CommandsTest, anEntryThatNoHotKeyTypesIsTypedByTheCommand) {
    open();
    state->edit("Adım", [](KdbxDatabase& database) { database.root.entries.mutableAt(0).autoTypeEnabled = false; });
    select(bank());
    focusList();
    press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(autoTyping.performed.size(), 1U);
}

TEST_F(CommandsTest, newEntriesAndGroupsGoIntoTheSelectedGroupElseTheRoot) {
    open();
    state->setSelectedGroupID(social().id);
    press(Qt::Key_I);
    EXPECT_EQ(state->route(), Route::newEntry(social().id));
    state->setRoute(std::nullopt);
    press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(state->route(), Route::newGroup(social().id));

    state->setRoute(std::nullopt);
    state->setSelectedGroupID(std::nullopt);
    press(Qt::Key_I);
    EXPECT_EQ(state->route(), Route::newEntry(root().id));
    state->setRoute(std::nullopt);
    press(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(state->route(), Route::newGroup(root().id));
}

TEST_F(CommandsTest, theSelectedEntryIsEdited) {
    open();
    select(mail());
    press(Qt::Key_E);
    EXPECT_EQ(state->route(), Route::editEntry(mail().id));
}

TEST_F(CommandsTest, allSelectedEntriesAreDeletedAtOnceAndComeBack) {
    open();
    focusList();
    press(Qt::Key_A);
    EXPECT_EQ(state->selectedEntryIDs().size(), 2U);
    press(Qt::Key_Delete);
    EXPECT_TRUE(root().entries.empty());
    press(Qt::Key_Z);
    EXPECT_EQ(root().entries.size(), 2U);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(root().entries.empty());
    press(Qt::Key_Z);
    press(Qt::Key_Y);
    EXPECT_TRUE(root().entries.empty()) << "the other usual key of redo";
}

TEST_F(CommandsTest, undoAndRedoNameTheirStep) {
    open();
    EXPECT_FALSE(isEnabled("Düzen", "Geri Al"));
    EXPECT_FALSE(isEnabled("Düzen", "Yinele"));
    rename("Bankam");
    EXPECT_TRUE(isEnabled("Düzen", "Geri Al — Kaydı Düzenle"));
    command("Düzen", "Geri Al — Kaydı Düzenle").trigger();
    EXPECT_EQ(firstTitle(), "Banka");
    EXPECT_FALSE(isEnabled("Düzen", "Geri Al"));
    EXPECT_TRUE(isEnabled("Düzen", "Yinele — Kaydı Düzenle"));
    command("Düzen", "Yinele — Kaydı Düzenle").trigger();
    EXPECT_EQ(firstTitle(), "Bankam");
}

TEST_F(CommandsTest, savingIsForAVaultThatHasChanged) {
    open();
    EXPECT_FALSE(isEnabled("Dosya", "Kaydet"));
    EXPECT_TRUE(isEnabled("Dosya", "Farklı Kaydet…"));
    rename("Bankam");
    EXPECT_TRUE(isEnabled("Dosya", "Kaydet"));
    press(Qt::Key_S);
    EXPECT_EQ(firstTitleIn(vaultFile), "Bankam");
    EXPECT_FALSE(isEnabled("Dosya", "Kaydet"));
}

TEST_F(CommandsTest, aVaultIsSavedElsewhereUnderTheNameThatItHas) {
    open();
    answerPanel("Farklı Kaydet", {}, std::nullopt);
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(state->databaseURL(), vaultFile) << "a panel that is left changes nothing";

    const std::filesystem::path copy = QDir::temp().filePath("brenvik-baska-ad").toStdString();
    answerPanel("Farklı Kaydet", {}, copy);
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(state->databaseURL(), copy) << "the name is taken as it is";
    EXPECT_EQ(firstTitleIn(copy), "Banka");
}

TEST_F(CommandsTest, aNewVaultEndsTheSessionAndAsksForItsPassword) {
    open();
    state->setRoute(Route::generator(std::nullopt));
    const std::filesystem::path file = QDir::temp().filePath("brenvik-yeni-kasa").toStdString();
    answerPanel("Yeni Veritabanı", "Oluştur", file);
    press(Qt::Key_N);
    EXPECT_FALSE(state->route());
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), file.native() + ".kdbx");
    EXPECT_EQ(state->statusMessage(), "Ana parolayı belirleyip kasayı oluşturun.");
    clock.advance(std::chrono::seconds(10));
    EXPECT_EQ(state->statusMessage(), "Ana parolayı belirleyip kasayı oluşturun.") << "no timer clears it";
}

TEST_F(CommandsTest, openingAnotherVaultEndsTheSessionUnsaved) {
    open();
    rename("Bankam");
    const QTemporaryDir folder;
    const std::filesystem::path other = folder.filePath("Öteki.kdbx").toStdString();
    QFile file(folder.filePath("Öteki.kdbx"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("kasa") > 0);
    file.close();
    answerPanel("Veritabanı Aç", "Aç", other);
    press(Qt::Key_O);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), other);
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
}

TEST_F(CommandsTest, lockingKeepsTheFileAndClosingForgetsIt) {
    open();
    press(Qt::Key_L);
    EXPECT_TRUE(state->isLocked());
    EXPECT_EQ(state->databaseURL(), vaultFile);
    EXPECT_FALSE(isEnabled("Dosya", "Veritabanını Kapat")) << "a locked vault is not closed from the menu";

    unlock();
    press(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(state->isLocked());
    EXPECT_FALSE(state->databaseURL());
}

TEST_F(CommandsTest, theGeneratorComesAtAnyTime) {
    press(Qt::Key_G);
    EXPECT_EQ(state->route(), Route::generator(std::nullopt));
    state->setRoute(std::nullopt);
    open();
    press(Qt::Key_G);
    EXPECT_EQ(state->route(), Route::generator(std::nullopt));
}

TEST_F(CommandsTest, theClipboardIsCleared) {
    clipboard.copySecret("gizli");
    press(Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_EQ(clipboard.secondsRemaining(), 0);
}

TEST_F(CommandsTest, searchingTakesTheKeyboard) {
    open();
    focusList();
    press(Qt::Key_F);
    EXPECT_TRUE(searchField().hasFocus());
}

TEST_F(CommandsTest, quittingClosesTheWindowWithoutAQuestionAndWithoutSaving) {
    open();
    rename("Bankam");
    const QSignalSpy closed(&window, &MainWindow::closed);
    press(Qt::Key_Q);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(firstTitleIn(vaultFile), "Banka");
}

TEST_F(CommandsTest, aFieldKeepsTheKeysOfItsText) {
    open();
    rename("Bankam");
    select(bank());
    state->edit("Adım",
                [](KdbxDatabase& database) { database.root.entries.mutableAt(0).password = SecureString("gizli"); });
    searchField().setFocus();
    QTest::keyClicks(&searchField(), "bank hesap");
    select(bank());

    press(Qt::Key_A);
    EXPECT_EQ(searchField().selectedText(), "bank hesap");
    EXPECT_EQ(state->selectedEntryIDs().size(), 1U);
    press(Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), "bank hesap");
    EXPECT_EQ(pasteboard.text(), "") << "the entry's password stays where it is";

    QTest::keyClick(&searchField(), Qt::Key_Home);
    press(Qt::Key_Delete);
    EXPECT_EQ(searchField().text(), "hesap");
    EXPECT_EQ(root().entries.size(), 2U);

    const auto steps = state->undoLabel();
    press(Qt::Key_Z);
    EXPECT_EQ(searchField().text(), "bank hesap");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(searchField().text(), "hesap");
    press(Qt::Key_Z);
    press(Qt::Key_Y);
    EXPECT_EQ(searchField().text(), "hesap");
    EXPECT_EQ(state->undoLabel(), steps) << "the vault's own steps stay";
}

TEST_F(CommandsTest, aTextOfSeveralLinesKeepsItsKeysToo) {
    open();
    select(bank());
    QPlainTextEdit notes(&window);
    notes.show();
    notes.setFocus();
    QTest::keyClicks(&notes, "bir iki");
    QTest::keyClick(&notes, Qt::Key_Home);
    press(Qt::Key_Delete);
    EXPECT_EQ(notes.toPlainText().trimmed(), "iki");
    EXPECT_EQ(root().entries.size(), 2U);
    press(Qt::Key_Z);
    EXPECT_EQ(notes.toPlainText(), "bir iki");
    press(Qt::Key_Y);
    EXPECT_EQ(notes.toPlainText().trimmed(), "iki");
    press(Qt::Key_A);
    press(Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text().trimmed(), "iki");
    EXPECT_EQ(pasteboard.text(), "");
}

TEST_F(CommandsTest, aFieldWithoutSelectionCopiesNothing) {
    open();
    select(bank());
    searchField().setFocus();
    QApplication::clipboard()->setText("eski");
    press(Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), "eski");
    EXPECT_EQ(pasteboard.text(), "");
}

// A screen reader's user chooses from it without opening it.
TEST_F(CommandsTest, aClosedMenuKnowsWhetherATextIsSelected) {
    open();
    searchField().setFocus();
    searchField().setText("bank");
    searchField().deselect();
    EXPECT_FALSE(isEnabled("Düzen", "Kopyala"));
    searchField().selectAll();
    EXPECT_TRUE(isEnabled("Düzen", "Kopyala"));
    searchField().deselect();
    EXPECT_FALSE(isEnabled("Düzen", "Kopyala"));
}

TEST_F(CommandsTest, aMaskedFieldCopiesNothing) {
    state->prepare(vaultFile);
    auto& password = *field(window, "Ana parola");
    password.setFocus();
    QTest::keyClicks(&password, "parola");
    QApplication::clipboard()->setText("eski");
    press(Qt::Key_A);
    press(Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), "eski");
    EXPECT_EQ(pasteboard.text(), "");
    EXPECT_EQ(password.text(), "parola");
    QMetaObject::invokeMethod(menu("Düzen"), "aboutToShow");
    EXPECT_FALSE(isEnabled("Düzen", "Kopyala"));
    EXPECT_FALSE(isEnabled("Düzen", "Kes"));
    EXPECT_TRUE(isEnabled("Düzen", "Yapıştır"));
}

TEST_F(CommandsTest, theEditMenuWorksOnTheFieldThatHasTheKeyboard) {
    open();
    focusList();
    QMetaObject::invokeMethod(menu("Düzen"), "aboutToShow");
    for (const auto* text : {"Kes", "Kopyala", "Yapıştır"})
        EXPECT_FALSE(isEnabled("Düzen", text)) << text;

    searchField().setFocus();
    QTest::keyClicks(&searchField(), "bank");
    command("Düzen", "Tümünü Seç").trigger();
    QMetaObject::invokeMethod(menu("Düzen"), "aboutToShow");
    command("Düzen", "Kes").trigger();
    EXPECT_EQ(searchField().text(), "");
    command("Düzen", "Yapıştır").trigger();
    EXPECT_EQ(searchField().text(), "bank");
}

TEST_F(CommandsTest, theEditMenuStillKnowsTheFieldWhileTheMenuBarHasTheKeyboard) {
    open();
    searchField().setFocus();
    QTest::keyClicks(&searchField(), "bank");
    window.menuBar()->setFocus(Qt::MenuBarFocusReason);
    EXPECT_TRUE(isEnabled("Düzen", "Yapıştır"));
    command("Düzen", "Tümünü Seç").trigger();
    EXPECT_EQ(searchField().selectedText(), "bank");
}

TEST_F(CommandsTest, anEmptyVaultHasTheKeyboardInItsGroupsAndNothingToPasteInto) {
    auto vault = smallVault();
    vault.root.entries.clear();
    putVault(vault);
    state->prepare(vaultFile);
    field(window, "Ana parola")->setFocus();
    state->unlock("parola", std::nullopt);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.focusWidget(), find<QListView>(window, "Gruplar"));
    EXPECT_FALSE(isEnabled("Düzen", "Yapıştır"));
}

TEST_F(CommandsTest, theLettersOfTheMenusAreUnderlinedWhileAltIsHeld) {
    const auto underlines = [this] { return window.style()->styleHint(QStyle::SH_UnderlineShortcut) == 1; };
    EXPECT_FALSE(underlines());
    QTest::keyPress(&window, Qt::Key_Alt);
    EXPECT_TRUE(underlines());
    QTest::keyRelease(&window, Qt::Key_Alt);
    window.setFocus();
    EXPECT_FALSE(underlines());
}

TEST_F(CommandsTest, whatLiesBehindASheetIsOutOfReach) {
    open();
    select(bank());
    state->setRoute(Route::newEntry(root().id));
    for (auto* const action : menu("Kayıt")->actions())
        EXPECT_TRUE(action->isSeparator() || !action->isEnabled()) << qPrintable(action->text());
    EXPECT_FALSE(isEnabled("Görünüm", "Ara"));
    EXPECT_FALSE(isEnabled("Araçlar", "Parola Üret…")) << "it would take the place of what is being typed";
    EXPECT_TRUE(isEnabled("Dosya", "Kasayı Kilitle"));
    EXPECT_TRUE(isEnabled("Araçlar", "Panoyu Şimdi Temizle"));
    press(Qt::Key_Delete);
    EXPECT_EQ(root().entries.size(), 2U);
    press(Qt::Key_I);
    EXPECT_EQ(state->route(), Route::newEntry(root().id));

    state->setRoute(std::nullopt);
    EXPECT_TRUE(isEnabled("Kayıt", "Sil"));
}

TEST_F(CommandsTest, theProgramSaysWhatItIsInASheet) {
    open();
    select(bank());
    command("Yardım", "Brenvik Hakkında").trigger();
    EXPECT_TRUE(shows(window, "Sürüm " BRENVIK_VERSION));
    EXPECT_FALSE(isEnabled("Kayıt", "Sil"));
    press(Qt::Key_Escape, Qt::NoModifier);
    EXPECT_FALSE(shows(window, "Sürüm " BRENVIK_VERSION));
    EXPECT_TRUE(isEnabled("Kayıt", "Sil"));
}

TEST_F(CommandsTest, theWindowHasTheProgramsNameAndWhileItIsOpenTheVaults) {
    EXPECT_EQ(window.windowTitle(), "Brenvik");
    open();
    EXPECT_EQ(window.windowTitle(), "Kasam[*] — Brenvik");
    EXPECT_FALSE(window.isWindowModified());
    state->edit("Adım", [](KdbxDatabase& database) { database.meta.databaseName = "a[*]b"; });
    EXPECT_EQ(window.windowTitle(), "a[*][*]b[*] — Brenvik");
    EXPECT_TRUE(window.isWindowModified());
    state->lock();
    EXPECT_EQ(window.windowTitle(), "Brenvik");
    EXPECT_FALSE(window.isWindowModified());
}

}  // namespace
