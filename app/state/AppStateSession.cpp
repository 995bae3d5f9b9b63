// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"
#include "app/state/NewVault.h"
#include "app/state/Preferences.h"
#include "app/state/WipedAtEnd.h"
#include "core/autotype/AutoTyping.h"
#include "core/clipboard/ClipboardService.h"
#include "core/document/KdbxXML.h"

namespace {

/// The attachments of an old vault are not carried over into the format in which it is saved.
VaultFile::LosesByASave losesByASave(const KdbxDatabase& database) {
    const bool isOld = database.formatVersion.major < 4;
    return VaultFile::LosesByASave(isOld && KdbxXML::hadDocumentBinaries(database.root));
}

/// The credentials of a form. The password is copied and then wiped, not moved: a short text that is moved from still
/// holds its letters.
KdbxKey makeKey(std::string& password, std::optional<Bytes> keyFileData) {
    KdbxKey key;
    if (!password.empty())
        key.password.emplace(password);
    wipe(password);
    key.keyFileData = std::move(keyFileData);
    return key;
}

int repairDuplicateIDs(KdbxDatabase& database) {
    UUIDSet groups;
    UUIDSet entries;
    return static_cast<int>(GroupTree::repairDuplicateIDs(database.root, groups, entries));
}

}  // namespace

void AppState::prepare(const std::filesystem::path& url) {
    if (m_derivation)
        return;
    const Step step(m_signals);
    turnTo(url);
    storeBookmark(url);
}

/// To another file, or again to the same, without a session.
void AppState::turnTo(const std::filesystem::path& url) {
    assign(m_databaseURL, {url}, &AppState::databaseURLChanged);
    dropVault();
    m_history.dropVaults();
    assign(m_isLocked, true, &AppState::isLockedChanged);
    setLastError(std::nullopt);
    clearSelection();
    m_replaceable.reset();
    m_expected.reset();
}

/// The end of the session that may be open. Its undo history is left to the caller.
void AppState::dropVault() {
    m_services.autoTyping.stop();
    endRescues();
    assignDatabase(std::nullopt);
    m_activeKey.reset();
}

void AppState::clearSelection() {
    setSelectedGroupID(std::nullopt);
    setSelectedEntryIDs({});
    setRoute(std::nullopt);
}

void AppState::unlock(std::string password, const std::optional<std::filesystem::path>& keyFileURL) {
    const WipedAtEnd passwordEnd(password);
    if (m_derivation)
        return;
    const Step step(m_signals);
    if (!m_databaseURL)
        return setLastError("Önce bir veritabanı dosyası seçin.");
    try {
        std::optional<Bytes> keyFileData;
        if (keyFileURL)
            keyFileData = m_services.files.read(*keyFileURL);
        auto key = makeKey(password, std::move(keyFileData));
        std::optional<KdbxTransformedKey> derived;
        const auto file = m_services.files.read(*m_databaseURL);
        auto database = m_services.codec.load(file, key, derivingFor(DerivationPurpose::unlocking, derived));
        const auto repaired = repairDuplicateIDs(database);
        m_vaultFile.begin(file, losesByASave(database));
        const auto rootID = database.root.id;
        open(std::move(database), key);
        m_history.clear();
        refreshUndoLabels();
        setSelectedGroupID(rootID);
        setSelectedEntryIDs({});
        setSearchText("");
        if (m_expected == m_databaseURL)
            storeBookmark(*m_databaseURL);
        beginRescues(std::move(derived), RescueKeeper::Offering::yes);
        if (repaired > 0)
            m_statusLine.flash(std::to_string(repaired) + " kaydın kimliği yinelenmişti, onarıldı.");
    } catch (const DerivationGivenUp&) {
        // Everything is as it was.
    } catch (...) {
        setLastError(failureText());
    }
}

/// The beginning of a session, however its vault came to be.
void AppState::open(KdbxDatabase database, const KdbxKey& key) {
    assignDatabase(std::move(database));
    m_activeKey = key;
    assign(m_isLocked, false, &AppState::isLockedChanged);
    assign(m_isDirty, false, &AppState::isDirtyChanged);
    setLastError(std::nullopt);
}

void AppState::createDatabase(const std::filesystem::path& url, std::string password,
                              std::optional<Bytes> keyFileData) {
    const WipedAtEnd passwordEnd(password);
    if (m_derivation)
        return;
    const Step step(m_signals);
    try {
        checkReplaceable(url);
        auto database = newVault(Text::repairingUTF8(bytesOf(url.stem().native())), m_services.scheduler.now());
        auto key = makeKey(password, std::move(keyFileData));
        std::optional<KdbxTransformedKey> derived;
        const auto file = m_services.codec.save(database, key, derivingFor(DerivationPurpose::creating, derived));
        m_services.files.writeAtomically(url, file, [&] { checkReplaceable(url); });
        m_vaultFile.begin(file, VaultFile::LosesByASave::no);
        m_replaceable.reset();
        m_expected.reset();

        const auto rootID = database.root.id;
        assign(m_databaseURL, {url}, &AppState::databaseURLChanged);
        dropVault();
        m_history.dropVaults();
        open(std::move(database), key);
        setSelectedGroupID(rootID);
        beginRescues(std::move(derived), RescueKeeper::Offering::no);
        storeBookmark(url);
    } catch (const DerivationGivenUp&) {
        // Nothing has been written, and everything is as it was.
    } catch (...) {
        setLastError(failureText());
    }
}

void AppState::lock() {
    if (m_isLocked)
        return;
    // First, since what follows may take its time. A run stays ended where the lock is given up: half a password would
    // go on into whatever the user has gone to meanwhile.
    m_services.autoTyping.stop();
    if (isPutOff(Wish::lock))
        return;
    const Step step(m_signals);
    try {
        saveForLock();
    } catch (const DerivationGivenUp&) {
        return;  // what the save was for stays as it is
    } catch (...) {
        // Locking never fails and never asks: what cannot be written now is kept elsewhere.
    }
    endSession();
}

void AppState::lockAutomatically() {
    if (m_isLocked || m_derivation)
        return;
    m_services.autoTyping.stop();
    const Step step(m_signals);
    try {
        saveForLock();
        keep();  // of a form; its failure is no reason to lose the form
    } catch (const DerivationGivenUp&) {
        return setLastError("Kasa otomatik kilitlenmedi, çünkü kaydetmekten vazgeçildi.");
    } catch (...) {
        setLastError("Kasa otomatik kilitlenmedi, çünkü değişiklikler kaydedilemedi. " + failureText());
        return keepUnsaved();
    }
    endSession();
}

void AppState::saveForLock() {
    while (m_isDirty && canSave())  // again where something has changed while it was saved
        saveQuietly(DerivationPurpose::locking);
}

void AppState::endSession() {
    dropVault();
    assign(m_isLocked, true, &AppState::isLockedChanged);
    clearSelection();
    setSearchText("");
    m_history.clear();
    refreshUndoLabels();
    m_statusLine.takeBackNotice();
    m_services.clipboard.clearNow();
}

void AppState::closeDatabase() {
    if (isPutOff(Wish::close))
        return;
    const Step step(m_signals);
    lock();
    if (!m_isLocked)
        return;
    m_replaceable.reset();
    m_expected.reset();
    assign(m_databaseURL, {}, &AppState::databaseURLChanged);
}

void AppState::storeBookmark(const std::filesystem::path& url) {
    m_services.preferences.setRecentDatabaseBookmark(m_services.bookmarks.bookmark(url));
}

std::optional<std::filesystem::path> AppState::recentDatabase() {
    const auto& bookmark = m_services.preferences.recentDatabaseBookmark();
    return bookmark ? m_services.bookmarks.resolve(*bookmark) : std::nullopt;
}

void AppState::restoreRecentDatabase() {
    if (m_databaseURL)
        return;
    auto url = recentDatabase();
    if (url && m_services.files.exists(*url))
        assign(m_databaseURL, {std::move(*url)}, &AppState::databaseURLChanged);
}
