// SPDX-License-Identifier: MIT
// The vault's file as others leave it: what a new vault may replace, and what was changed, taken away or brought back.
#include "app/state/AppState.h"
#include "app/state/WipedAtEnd.h"
#include "core/text/Text.h"

#include <cerrno>

namespace {

std::string quotedName(const std::filesystem::path& file) {
    return "“" + Text::repairingUTF8(bytesOf(file.filename().native())) + "”";
}

std::string messageOf(const VaultFile::Kept& kept) {
    const auto name = quotedName(kept.file);
    switch (kept.reason) {
        case VaultFile::Kept::Reason::changedElsewhere:
            return "Dosya diskte değişmişti; oradaki sürüm " + name + " adıyla saklandı.";
        case VaultFile::Kept::Reason::oldFormat:
            return "Ekler yeni biçime taşınmadı; eski dosya " + name + " adıyla saklandı.";
    }
    return {};
}

}  // namespace

void AppState::prepareNew(const std::filesystem::path& url, Replacing replacing) {
    if (m_derivation)
        return;
    const Step step(m_signals);
    prepare(url);
    if (replacing == Replacing::yes)
        if (const auto status = m_services.files.status(url))
            m_replaceable = {url, *status};
    m_signals.send(&AppState::offersCreationChanged);
}

void AppState::prepareExpected(const std::filesystem::path& url) {
    if (m_derivation)
        return;
    const Step step(m_signals);
    turnTo(url);
    m_expected = url;
    if (m_services.files.exists(url))
        storeBookmark(url);
    m_signals.send(&AppState::offersCreationChanged);
}

void AppState::awaitRecentDatabase() {
    if (m_databaseURL)
        return;
    const Step step(m_signals);
    m_expected = recentDatabase();
    if (m_expected)
        assign(m_databaseURL, m_expected, &AppState::databaseURLChanged);
}

bool AppState::isAway() const {
    return m_databaseURL && m_expected == m_databaseURL && !m_services.files.exists(*m_databaseURL);
}

bool AppState::offersCreation() const {
    if (!m_databaseURL || isAway())
        return false;
    const auto status = m_services.files.status(*m_databaseURL);
    return !status || status->size == 0 || (m_replaceable && m_replaceable->status == status);
}

// The permission is for what the user was asked about: another file in its place, or another content, is not that.
void AppState::checkReplaceable(const std::filesystem::path& url) const {
    const auto status = m_services.files.status(url);
    const bool isEmpty = !status || status->size == 0;
    const bool isAllowed = m_replaceable && m_replaceable->file == url && m_replaceable->status == status;
    if (!isEmpty && !isAllowed)
        throw FileError(EEXIST,
                        quotedName(url) + " boş değil; üzerine yeni bir kasa yazılmadı. Ana parolanla açabilirsin.");
}

void AppState::sealDatabase(const std::filesystem::path& url, std::string password,
                            const std::optional<std::filesystem::path>& keyFileURL) {
    const WipedAtEnd passwordEnd(password);
    if (m_derivation)
        return;
    const Step step(m_signals);
    std::optional<Bytes> keyFileData;
    try {
        if (keyFileURL)
            keyFileData = m_services.files.read(*keyFileURL);
    } catch (const FileError&) {
        // The vault is made without it.
    }
    // An empty file is what a cloud's stand-in holds: once its content is there, the vault would not open any more.
    if (keyFileData && keyFileData->empty())
        keyFileData.reset();
    const bool isWithout = keyFileURL && !keyFileData;
    createDatabase(url, password, std::move(keyFileData));
    if (isWithout && !m_isLocked && m_databaseURL == url)
        setStatusMessage("Anahtar dosyası okunamadı; kasa anahtar dosyası olmadan oluşturuldu.");
}

bool AppState::isCurrentFile(const std::filesystem::path& url) const {
    const auto status = m_services.files.status(url);
    return url == m_databaseURL || (status && m_databaseURL && status == m_services.files.status(*m_databaseURL));
}

void AppState::reportKept() {
    m_statusLine.takeBackNotice();
    if (const auto kept = m_vaultFile.takeKept())
        setNotice(messageOf(*kept));
}

void AppState::lookAtFile() {
    const Step step(m_signals);
    if (m_database && m_databaseURL)
        reportChangeOfFile();
    m_signals.send(&AppState::databaseFileLookedAt);
}

void AppState::reportChangeOfFile() {
    const auto name = quotedName(*m_databaseURL);
    switch (m_vaultFile.look(*m_databaseURL)) {
        case VaultFile::Change::none:
            return;
        case VaultFile::Change::undone:
            return m_statusLine.takeBackNotice();
        case VaultFile::Change::gone:
            return m_statusLine.setPassingNotice(name + " artık yerinde değil. Kaydedersen yeniden yazılır.");
        case VaultFile::Change::changed:
            return m_statusLine.setPassingNotice(
                name + (m_isDirty ? " diskte değişti. Kaydedersen oradaki sürüm ayrıca saklanır."
                                  : " diskte değişti. Yeni hâli için kasayı kilitleyip yeniden aç."));
    }
}
