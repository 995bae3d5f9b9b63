// SPDX-License-Identifier: MIT
#include "app/ui/components/FilePanels.h"

#include "app/ui/components/FilePanelLook.h"
#include "app/ui/components/ReplaceQuestion.h"
#include "app/ui/components/Texts.h"
#include "core/platform/FileChooser.h"

#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QStandardPaths>
#include <QUrl>

#include <cstdint>
#include <string>
#include <vector>

namespace {

QString lastFolder;  // in which a panel of this run was answered
FileChooser* desktop = nullptr;

std::vector<FileChooser::Filter> vaultFilters() {
    return {{.name = "Parola kasaları", .patterns = {"*.kdbx", "*.KDBX"}}, {.name = "Tüm dosyalar", .patterns = {"*"}}};
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
    std::vector<FileChooser::Filter> filters;
    QString name;  // empty for a panel that opens
};

/// As Qt's panel takes it: "Ad (*.a *.b);;…".
QString filterText(const std::vector<FileChooser::Filter>& filters) {
    QStringList parts;
    for (const auto& filter : filters) {
        QStringList patterns;
        for (const auto& pattern : filter.patterns)
            patterns += qtText(pattern);
        parts += qtText(filter.name) + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
    return parts.join(QStringLiteral(";;"));
}

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

/// Stands for the desktop's panel among our windows: they are held back as by one of ours, and nothing of it shows.
class DesktopPanel final : public QDialog {
public:
    explicit DesktopPanel(QWidget* parent) : QDialog(parent) {
        setAttribute(Qt::WA_DontShowOnScreen);
        setWindowModality(Qt::ApplicationModal);
    }

    FileChooser::Answer ask(const FileChooser::Panel& panel) {
        desktop->ask(panel, [this](const FileChooser::Answer& answer) {
            m_answer = answer;
            accept();
        });
        if (exec() != QDialog::Accepted)
            desktop->takeAway();
        return m_answer;
    }

private:
    FileChooser::Answer m_answer;
};

FileChooser::Answer askDesktop(QWidget* parent, const Panel& panel, const FilePanels::File& vault) {
    const bool isOnX = QGuiApplication::platformName() == QLatin1String("xcb");
    return DesktopPanel(parent).ask(
        {.title = panel.title.toStdString(),
         .prompt = panel.prompt.toStdString(),
         .filters = panel.filters,
         .folder = pathOf(startFolder(vault)),
         .name = panel.name.isEmpty() ? std::nullopt : std::optional(panel.name.toStdString()),
         .window = isOnX ? static_cast<std::uint32_t>(parent->window()->winId()) : 0});
}

FilePanels::File askOurs(QWidget* parent, const Panel& panel, const FilePanels::File& vault) {
    FilePanelLook::keepNothing();
    FilePanel dialog(parent, panel.title, startFolder(vault), filterText(panel.filters));
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
    return pathOf(dialog.selectedFiles().constFirst());
}

/// A desktop whose panel fails is no reason to choose nothing.
FilePanels::File ask(QWidget* parent, const Panel& panel, const FilePanels::File& vault) {
    FilePanels::File file;
    const auto answer =
        desktop != nullptr && desktop->isThere() ? askDesktop(parent, panel, vault) : FileChooser::Answer();
    if (answer.outcome == FileChooser::Outcome::chosen)
        file = answer.file;
    else if (answer.outcome == FileChooser::Outcome::failed)
        file = askOurs(parent, panel, vault);
    if (file)
        lastFolder = qtPath(file->parent_path());
    return file;
}

}  // namespace

void FilePanels::setDesktop(FileChooser* chooser) {
    desktop = chooser;
}

FilePanels::File FilePanels::chooseDatabase(QWidget* parent, const File& vault) {
    return ask(parent,
               {.title = QStringLiteral("Veritabanı Aç"),
                .prompt = QStringLiteral("Aç"),
                .filters = vaultFilters(),
                .name = {}},
               vault);
}

FilePanels::File FilePanels::chooseKeyFile(QWidget* parent, const File& vault) {
    return ask(
        parent,
        {.title = QStringLiteral("Anahtar Dosyası Seç"), .prompt = QStringLiteral("Seç"), .filters = {}, .name = {}},
        vault);
}

std::optional<FilePanels::Destination> FilePanels::newDatabaseDestination(QWidget* parent, const File& vault) {
    const auto file = ask(parent,
                          {.title = QStringLiteral("Yeni Veritabanı"),
                           .prompt = QStringLiteral("Oluştur"),
                           .filters = vaultFilters(),
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
               {.title = QStringLiteral("Farklı Kaydet"), .prompt = {}, .filters = vaultFilters(), .name = suggested},
               vault);
}

std::filesystem::path FilePanels::withVaultExtension(std::filesystem::path file) {
    if (qtPath(file.extension()).toLower() != QStringLiteral(".kdbx"))
        file += ".kdbx";
    return file;
}
