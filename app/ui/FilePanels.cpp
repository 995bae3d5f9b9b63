// SPDX-License-Identifier: MIT
#include "app/ui/FilePanels.h"

#include "app/ui/FilePanelLook.h"
#include "app/ui/Texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("FilePanels", text);
}

QString vaultFilter() {
    return tr("Parola kasaları (*.kdbx *.KDBX)") + QStringLiteral(";;") + tr("Tüm dosyalar (*)");
}

/// Where the user looks first: where he was last, else among his documents.
QString startFolder() {
    const auto documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

struct Panel {
    QString title;
    QString prompt;  // empty takes the platform's
    QString filter;
    QString name;  // empty for a panel that opens
};

std::optional<std::filesystem::path> ask(QWidget* parent, const Panel& panel) {
    QFileDialog dialog(parent, panel.title, startFolder(), panel.filter);
    const bool isSaving = !panel.name.isEmpty();
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(isSaving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(isSaving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (isSaving)
        dialog.selectFile(panel.name);
    if (!panel.prompt.isEmpty())
        dialog.setLabelText(QFileDialog::Accept, panel.prompt);
    FilePanelLook::apply(dialog);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return pathOf(dialog.selectedFiles().constFirst());
}

}  // namespace

std::optional<std::filesystem::path> FilePanels::chooseDatabase(QWidget* parent) {
    return ask(parent, {.title = tr("Veritabanı Aç"), .prompt = tr("Aç"), .filter = vaultFilter(), .name = {}});
}

std::optional<std::filesystem::path> FilePanels::chooseKeyFile(QWidget* parent) {
    return ask(parent, {.title = tr("Anahtar Dosyası Seç"), .prompt = tr("Seç"), .filter = {}, .name = {}});
}

std::optional<std::filesystem::path> FilePanels::newDatabaseDestination(QWidget* parent) {
    auto file = ask(parent, {.title = tr("Yeni Veritabanı"),
                             .prompt = tr("Oluştur"),
                             .filter = vaultFilter(),
                             .name = QStringLiteral("Kasam.kdbx")});
    return file ? std::optional(withVaultExtension(std::move(*file))) : std::nullopt;
}

std::optional<std::filesystem::path> FilePanels::saveAsDestination(QWidget* parent, const QString& suggested) {
    return ask(parent, {.title = tr("Farklı Kaydet"), .prompt = {}, .filter = vaultFilter(), .name = suggested});
}

std::filesystem::path FilePanels::withVaultExtension(std::filesystem::path file) {
    if (qtPath(file.extension()).toLower() != QStringLiteral(".kdbx"))
        file += ".kdbx";
    return file;
}
