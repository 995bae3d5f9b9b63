// SPDX-License-Identifier: MIT
#include "app/ui/components/FilePanels.h"

#include "app/ui/components/Texts.h"
#include "tests/platform/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

namespace {

/// What a panel showed while it was open.
struct Seen {
    QString title;
    QString prompt;
    QString name;
    QString folder;
    QStringList filters;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    QFileDialog::FileMode files = QFileDialog::AnyFile;
};

class FilePanelsTest : public ::testing::Test {
protected:
    TemporaryFolder folder;
    const FilePanels::File vault = folder / "Kasa.kdbx";
    Seen seen;
    bool isAskedToReplace = false;

    FilePanelsTest() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(1);
    }

    /// Answers the next panel with a file, or cancels it; a question about replacing is answered with `replaces`.
    void answer(const FilePanels::File& file, bool replaces = false) {
        seen = {};
        m_file = file;
        m_replaces = replaces;
    }

    /// The place of a new vault; whether it replaces a file is left in `replacesFile`.
    FilePanels::File newDatabase() {
        const auto chosen = FilePanels::newDatabaseDestination(nullptr, vault);
        replacesFile = chosen && chosen->replaces;
        return chosen ? FilePanels::File(chosen->file) : std::nullopt;
    }

    bool replacesFile = false;

private:
    void look() {
        auto* const modal = QApplication::activeModalWidget();
        if (auto* const panel = qobject_cast<QFileDialog*>(modal))
            answerPanel(*panel);
        else if (auto* const question = qobject_cast<QMessageBox*>(modal))
            answerQuestion(*question);
    }
    void answerPanel(QFileDialog& panel) {
        if (!seen.title.isEmpty())
            return;  // answered, and about to close
        auto* const name = panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        seen = {.title = panel.windowTitle(),
                .prompt = panel.labelText(QFileDialog::Accept),
                .name = name->text(),
                .folder = panel.directory().absolutePath(),
                .filters = panel.nameFilters(),
                .mode = panel.acceptMode(),
                .files = panel.fileMode()};
        if (!m_file)
            return panel.reject();
        name->setText(qtPath(*m_file));
        QMetaObject::invokeMethod(&panel, "accept", Qt::QueuedConnection);
    }
    void answerQuestion(QMessageBox& question) {
        isAskedToReplace = true;
        question.button(m_replaces ? QMessageBox::Yes : QMessageBox::No)->click();
    }

    QTimer m_timer;
    FilePanels::File m_file;
    bool m_replaces = false;
};

TEST_F(FilePanelsTest, aVaultIsChosenAmongVaults) {
    writeFile(*vault, "kasa");
    answer(vault);
    EXPECT_EQ(FilePanels::chooseDatabase(nullptr, std::nullopt), vault);
    EXPECT_EQ(seen.title, "Veritabanı Aç");
    EXPECT_EQ(seen.prompt, "Aç");
    EXPECT_EQ(seen.mode, QFileDialog::AcceptOpen);
    EXPECT_EQ(seen.files, QFileDialog::ExistingFile);
    EXPECT_TRUE(seen.filters.constFirst().contains("*.kdbx"));
}

TEST_F(FilePanelsTest, aKeyFileIsAnyFile) {
    writeFile(folder / "anahtar.bin", "anahtar");
    answer(folder / "anahtar.bin");
    EXPECT_EQ(FilePanels::chooseKeyFile(nullptr, vault), folder / "anahtar.bin");
    EXPECT_EQ(seen.title, "Anahtar Dosyası Seç");
    EXPECT_EQ(seen.prompt, "Seç");
    EXPECT_EQ(seen.files, QFileDialog::ExistingFile);
    EXPECT_FALSE(seen.filters.join(' ').contains("kdbx"));
}

TEST_F(FilePanelsTest, aNewVaultHasANameAlready) {
    answer(std::nullopt);
    EXPECT_FALSE(FilePanels::newDatabaseDestination(nullptr, vault));
    EXPECT_EQ(seen.title, "Yeni Veritabanı");
    EXPECT_EQ(seen.prompt, "Oluştur");
    EXPECT_EQ(seen.name, "Kasam.kdbx");
    EXPECT_EQ(seen.mode, QFileDialog::AcceptSave);
}

TEST_F(FilePanelsTest, aNewVaultsNameGetsTheExtensionUnlessItHasItInWhateverCase) {
    answer(folder / "Kasa");
    EXPECT_EQ(newDatabase(), folder / "Kasa.kdbx");
    EXPECT_FALSE(replacesFile);
    answer(folder / "Kasa.KDBX");
    EXPECT_EQ(newDatabase(), folder / "Kasa.KDBX");
    answer(folder / "Kasa.yedek");
    EXPECT_EQ(newDatabase(), folder / "Kasa.yedek.kdbx");
    EXPECT_FALSE(isAskedToReplace);
}

TEST_F(FilePanelsTest, aNameThatBecomesAnotherVaultsIsAskedAbout) {
    writeFile(folder / "Kasa.kdbx", "eski kasa");
    answer(folder / "Kasa", false);
    EXPECT_FALSE(FilePanels::newDatabaseDestination(nullptr, vault));
    EXPECT_TRUE(isAskedToReplace);

    answer(folder / "Kasa", true);
    EXPECT_EQ(newDatabase(), folder / "Kasa.kdbx");
    EXPECT_TRUE(replacesFile);
}

TEST_F(FilePanelsTest, aFileThatThePanelWasAskedToReplaceIsReportedAsOne) {
    writeFile(*vault, "eski kasa");
    answer(vault, true);
    EXPECT_EQ(newDatabase(), vault);
    EXPECT_TRUE(isAskedToReplace);
    EXPECT_TRUE(replacesFile);
}

TEST_F(FilePanelsTest, aCopyTakesItsNameAsItIs) {
    answer(folder / "Kopya.yedek");
    EXPECT_EQ(FilePanels::saveAsDestination(nullptr, "Ev.kdbx", vault), folder / "Kopya.yedek");
    EXPECT_EQ(seen.title, "Farklı Kaydet");
    EXPECT_EQ(seen.name, "Ev.kdbx");
    EXPECT_EQ(seen.mode, QFileDialog::AcceptSave);
}

TEST_F(FilePanelsTest, aPanelOpensBesideTheVaultAndThenWhereOneWasAnsweredLast) {
    std::filesystem::create_directory(folder / "kasalar");
    std::filesystem::create_directory(folder / "anahtarlar");
    {
        // A folder that is gone is not gone back to.
        const TemporaryFolder gone;
        writeFile(gone / "k", "anahtar");
        answer(gone / "k");
        EXPECT_TRUE(FilePanels::chooseKeyFile(nullptr, vault));
    }
    answer(std::nullopt);
    EXPECT_FALSE(FilePanels::chooseDatabase(nullptr, folder / "kasalar/Kasa.kdbx"));
    EXPECT_EQ(seen.folder, qtPath(folder / "kasalar"));

    writeFile(folder / "anahtarlar/k", "anahtar");
    answer(folder / "anahtarlar/k");
    EXPECT_TRUE(FilePanels::chooseKeyFile(nullptr, folder / "kasalar/Kasa.kdbx"));
    answer(std::nullopt);
    EXPECT_FALSE(FilePanels::chooseKeyFile(nullptr, folder / "kasalar/Kasa.kdbx"));
    EXPECT_EQ(seen.folder, qtPath(folder / "anahtarlar"));
}

}  // namespace
