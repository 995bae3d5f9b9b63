// SPDX-License-Identifier: MIT
#include "app/ui/components/FilePanels.h"

#include "app/ui/components/FilePanelLook.h"
#include "app/ui/components/ReplaceQuestion.h"
#include "app/ui/components/Texts.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>

namespace {

QString lastFolder;  // in which a panel of this run was answered

QString vaultFilter() {
    return QStringLiteral("Parola kasaları (*.kdbx *.KDBX)") + QStringLiteral(";;") +
           QStringLiteral("Tüm dosyalar (*)");
}

QString documents() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(folder).exists() ? folder : QDir::homePath();
}

/// Where the user looks first.
QString startFolder(const FilePanels::File& vault) {
    if (!lastFolder.isEmpty() && QDir(lastFolder).exists())
        return lastFolder;
    const auto beside = vault ? qtPath(vault->parent_path()) : QString();
    return !beside.isEmpty() && QDir(beside).exists() ? beside : documents();
}

/// The folders beside the files: those that a home usually has, as far as this one has them.
QList<QUrl> places() {
    QList<QUrl> places{QUrl::fromLocalFile(QDir::homePath())};
    for (const auto place :
         {QStandardPaths::DocumentsLocation, QStandardPaths::DesktopLocation, QStandardPaths::DownloadLocation}) {
        const auto folder = QUrl::fromLocalFile(QStandardPaths::writableLocation(place));
        if (QDir(folder.toLocalFile()).exists() && !places.contains(folder))
            places += folder;
    }
    return places += QUrl(QStringLiteral("file:"));  // the computer itself
}

struct Panel {
    QString title;
    QString prompt;  // empty takes the platform's
    QString filter;
    QString name;  // empty for a panel that opens
};

/// Asks in our own words before a file that exists is chosen for something new; a no leads back to the panel.
class FilePanel final : public QFileDialog {
public:
    using QFileDialog::QFileDialog;

protected:
    void accept() override {
        const auto chosen = acceptMode() == AcceptSave ? selectedFiles() : QStringList();
        const QFileInfo file(chosen.isEmpty() ? QString() : chosen.constFirst());
        if (!file.exists() || file.isDir() || ReplaceQuestion::isAllowed(this, windowTitle(), file.fileName()))
            QFileDialog::accept();
    }
};

FilePanels::File ask(QWidget* parent, const Panel& panel, const FilePanels::File& vault) {
    FilePanelLook::keepNothing();
    FilePanel dialog(parent, panel.title, startFolder(vault), panel.filter);
    const bool isSaving = !panel.name.isEmpty();
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);  // it asks itself
    dialog.setAcceptMode(isSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(isSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setSidebarUrls(places());
    if (isSaving)
        dialog.selectFile(panel.name);
    if (!panel.prompt.isEmpty())
        dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    FilePanelLook::apply(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const auto chosen = dialog.selectedFiles().constFirst();
    lastFolder = QFileInfo(chosen).absolutePath();
    return pathOf(chosen);
}

}  // namespace

FilePanels::File FilePanels::chooseDatabase(QWidget* parent, const File& vault) {
    return ask(
        parent,
        {.title = QStringLiteral("Veritabanı Aç"), .prompt = QStringLiteral("Aç"), .filter = vaultFilter(), .name = {}},
        vault);
}

FilePanels::File FilePanels::chooseKeyFile(QWidget* parent, const File& vault) {
    return ask(
        parent,
        {.title = QStringLiteral("Anahtar Dosyası Seç"), .prompt = QStringLiteral("Seç"), .filter = {}, .name = {}},
        vault);
}

std::optional<FilePanels::Destination> FilePanels::newDatabaseDestination(QWidget* parent, const File& vault) {
    const auto file = ask(parent,
                          {.title = QStringLiteral("Yeni Veritabanı"),
                           .prompt = QStringLiteral("Oluştur"),
                           .filter = vaultFilter(),
                           .name = QStringLiteral("Kasam.kdbx")},
                          vault);
    if (!file)
        return std::nullopt;
    const auto vaultFile = withVaultExtension(*file);
    const bool replaces = QFileInfo::exists(qtPath(vaultFile));
    // The panel has asked about the name that was typed, not about the one that it becomes.
    if (vaultFile != *file && replaces &&
        !ReplaceQuestion::isAllowed(parent, QStringLiteral("Yeni Veritabanı"), qtPath(vaultFile.filename())))
        return std::nullopt;
    return Destination{.file = vaultFile, .replaces = replaces};
}

FilePanels::File FilePanels::saveAsDestination(QWidget* parent, const QString& suggested, const File& vault) {
    return ask(parent,
               {.title = QStringLiteral("Farklı Kaydet"), .prompt = {}, .filter = vaultFilter(), .name = suggested},
               vault);
}

std::filesystem::path FilePanels::withVaultExtension(std::filesystem::path file) {
    if (qtPath(file.extension()).toLower() != QStringLiteral(".kdbx"))
        file += ".kdbx";
    return file;
}
