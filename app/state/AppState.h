// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/EntryBrowser.h"
#include "app/state/EntryReferences.h"
#include "app/state/EntrySort.h"
#include "app/state/HeldSignals.h"
#include "app/state/RescueKeeper.h"
#include "app/state/Route.h"
#include "app/state/SessionServices.h"
#include "app/state/StatusLine.h"
#include "app/state/UndoHistory.h"
#include "app/state/VaultFile.h"
#include "core/autotype/AutoTypeAction.h"
#include "core/primitives/Derivation.h"

#include <QObject>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The session: the one vault, the credentials that decrypt it, what is selected, searched and shown of it, the undo
/// history, and the two lines of feedback. There is one for the life of the process, used on the main thread alone.
/// Every view reads it, and every user action ends in one of its verbs.
///
/// A verb reports what it changed when it has ended, by one signal a property, so that no view ever sees half a step.
/// No verb throws: a failure becomes `lastError`.
///
/// The verbs that read or write a vault derive its key, which may take long. They return when all is done; meanwhile
/// the program's loop turns within them, and `derivation` is set. Until then nothing that they do shows. A verb that
/// would end, replace or write the session does nothing in that time, except for a lock, which follows.
class AppState : public QObject {
    Q_OBJECT

public:
    using Route = ::Route;

    using VaultCodec = ::VaultCodec;
    using Services = SessionServices;

    explicit AppState(Services services, QObject* parent = nullptr);
    ~AppState() override;

    /// The decoded vault; only while unlocked.
    [[nodiscard]] const std::optional<KdbxDatabase>& database() const noexcept { return m_database; }
    /// The vault file in use, also while locked.
    [[nodiscard]] const std::optional<std::filesystem::path>& databaseURL() const noexcept { return m_databaseURL; }
    [[nodiscard]] bool isLocked() const noexcept { return m_isLocked; }
    /// Whether the vault in memory differs from the file. Undoing back to what was saved does not clear it.
    [[nodiscard]] bool isDirty() const noexcept { return m_isDirty; }
    /// The last failure, shown until it is dismissed.
    [[nodiscard]] const std::optional<std::string>& lastError() const noexcept { return m_statusLine.error(); }
    void setLastError(std::optional<std::string> text);
    /// Whether `lastError` is no failure: a version that was kept, a change of the file.
    [[nodiscard]] bool isNotice() const noexcept { return m_statusLine.isNotice(); }
    /// Has something shown in the place of `lastError` that is worth knowing, and no failure.
    void setNotice(std::string text);
    /// A confirmation that clears itself after two seconds.
    [[nodiscard]] const std::optional<std::string>& statusMessage() const noexcept { return m_statusLine.message(); }
    /// Sets it without a timer to clear it.
    void setStatusMessage(std::optional<std::string> text);
    /// The group that the list shows.
    [[nodiscard]] const std::optional<UUID>& selectedGroupID() const noexcept { return m_selectedGroupID; }
    void setSelectedGroupID(std::optional<UUID> id);
    [[nodiscard]] const std::set<UUID>& selectedEntryIDs() const noexcept { return m_selectedEntryIDs; }
    void setSelectedEntryIDs(std::set<UUID> ids);
    /// The content of the search field.
    [[nodiscard]] const std::string& searchText() const noexcept { return m_searchText; }
    void setSearchText(std::string text);
    [[nodiscard]] EntrySort sort() const noexcept { return m_sort; }
    /// Stores a sort that differs from the present one in the preferences.
    void setSort(EntrySort sort);
    /// The sheet that is showing.
    [[nodiscard]] const std::optional<Route>& route() const noexcept { return m_route; }
    void setRoute(std::optional<Route> route);
    /// Rises whenever the search field is asked to take the focus.
    [[nodiscard]] std::int64_t searchFocusToken() const noexcept { return m_searchFocusToken; }
    /// The name of the step that comes next in either direction.
    [[nodiscard]] const std::optional<std::string>& undoLabel() const noexcept { return m_undoLabel; }
    [[nodiscard]] const std::optional<std::string>& redoLabel() const noexcept { return m_redoLabel; }

    /// The last step that the user made, undid or redid. It has a signal of its own, since two steps in a row may have
    /// the same name.
    struct Change {
        enum class Kind : std::uint8_t { made, undone, redone };
        Kind kind;
        std::string label;
    };
    [[nodiscard]] const Change& lastChange() const noexcept { return m_lastChange; }

    /// The root group; none while locked. Valid until the vault changes, as all pointers into it are.
    [[nodiscard]] const KdbxGroup* root() const noexcept;
    /// The vault's own name, else its file's without the extension, else "Brenvik".
    [[nodiscard]] std::string databaseName() const;
    /// The group with the selected id, the root where there is none; none while locked.
    [[nodiscard]] const KdbxGroup* selectedGroup() const;
    [[nodiscard]] bool canSave() const noexcept { return m_database && m_databaseURL; }
    [[nodiscard]] bool canUndo() const noexcept { return m_history.canUndo(); }
    [[nodiscard]] bool canRedo() const noexcept { return m_history.canRedo(); }
    [[nodiscard]] bool isSearching() const;
    /// What the list shows, in its order: what the search finds anywhere, else the selected group's own entries.
    /// Made anew at each call; good until the vault changes.
    [[nodiscard]] EntryReferences visibleEntries() const;
    /// Does a few milliseconds of what the opening of a large vault, or the first letter of a search in it, would have
    /// to wait for. Returns whether there is more to do.
    bool prepareBrowsing();
    /// Those of the selected entries that the vault has, in no particular order.
    [[nodiscard]] EntryReferences selectedEntries() const;
    /// The one selected entry; none where there are several.
    [[nodiscard]] const KdbxEntry* focusedEntry() const;

    /// What a key is derived for.
    enum class DerivationPurpose : std::uint8_t { unlocking, creating, saving, locking, restoring };
    /// The key derivation that is under way; none at most times.
    [[nodiscard]] std::optional<DerivationPurpose> derivation() const noexcept;
    /// What has been done of it, in 0...1. It changes without a signal.
    [[nodiscard]] double derivationFraction() const noexcept;
    /// Ends it soon. The verb that waits for it then leaves everything as it was: the vault locked, or open with what
    /// is unsaved. A lock that was to follow is given up with it.
    void giveUpDerivation();

    enum class Extending : bool { no, yes };
    enum class Toggling : bool { no, yes };
    /// A click on an entry. Extending selects all that is shown from the last click to this one. Toggling, which wins
    /// over it, selects or deselects this one entry.
    void selectEntry(UUID id, Extending extending, Toggling toggling);
    /// Asks the search field to take the focus.
    void focusSearch();
    void clearSearch();

    /// Makes a file the current vault, locked. Drops an open session with what is unsaved, without a question.
    void prepare(const std::filesystem::path& url);
    /// The same for a file that is to be there: where it is away, as its drive may be, it is waited for, and the next
    /// launch keeps to the vault before it until this one has been opened.
    void prepareExpected(const std::filesystem::path& url);
    enum class Replacing : bool { no, yes };
    /// The same for a vault to be made there. `Replacing::yes` lets `createDatabase` replace what that file holds now,
    /// since the user was asked about it; another choice of a file takes the permission back.
    void prepareNew(const std::filesystem::path& url, Replacing replacing);
    /// Whether the current file is waited for: it is to be there, and is not. No vault is made in its place.
    [[nodiscard]] bool isAway() const;
    /// Whether the current file is one to make: it does not exist and is not waited for, is empty, or may be replaced.
    [[nodiscard]] bool offersCreation() const;
    /// Whether that is the current file, also by another path: a link, or another name of its folder.
    [[nodiscard]] bool isCurrentFile(const std::filesystem::path& url) const;
    /// Opens the current vault; the outcome shows in `isLocked` and `lastError`. An empty password is none.
    void unlock(std::string password, const std::optional<std::filesystem::path>& keyFileURL);
    /// Makes a new vault, writes it and opens it. A failure leaves everything as it was. It is one if the file has
    /// content that may not be replaced.
    void createDatabase(const std::filesystem::path& url, std::string password, std::optional<Bytes> keyFileData);
    /// The same, with a key file that is read here. One that cannot be read counts as none, and the status line says so
    /// once the vault is there.
    void sealDatabase(const std::filesystem::path& url, std::string password,
                      const std::optional<std::filesystem::path>& keyFileURL);
    /// Ends the unlocked session. Unsaved changes are saved first, and a failure of that is dropped. If the save is
    /// given up, the session goes on.
    void lock();
    /// Ends the session in its user's absence. As `lock`, but nothing is lost: where what is unsaved can be neither
    /// saved nor kept, or the save is given up, the session goes on, and `lastError` says why. Does nothing while a key
    /// is derived.
    void lockAutomatically();
    /// Locks and forgets the choice of the file, but not the bookmark: the next launch brings it back.
    void closeDatabase();
    /// At launch: points at the last vault if it still exists.
    void restoreRecentDatabase();
    /// At launch: points at the last vault, which is waited for where it is away.
    void awaitRecentDatabase();

    void save();
    /// Writes the vault elsewhere, under the same credentials, and goes on there.
    void saveAs(const std::filesystem::path& url);
    /// Looks at the vault's file again, since something may have happened to it. What another program has done to the
    /// file of an open vault is reported, each change once.
    void lookAtFile();

    /// Applies to a vault what an open form would change of it if it were confirmed now. Returns whether that is
    /// anything.
    using FormContent = std::function<bool(KdbxDatabase& database)>;
    /// The form of the route that shows, as long as it shows: a session that ends keeps what was typed there.
    void setFormContent(FormContent content);
    /// Whether the form that shows would change the vault if it were confirmed now.
    [[nodiscard]] bool hasUnsavedForm() const noexcept;
    /// Keeps what is unsaved as an encrypted copy beside the vaults, for the next session of this vault. The vault's
    /// file is left alone.
    void keepUnsaved() noexcept;
    /// What an earlier session of the open vault has left unsaved, the newest first.
    [[nodiscard]] std::optional<RescueOffer> rescueOffer() const;
    /// Brings that back as one undoable step. A failure stays with the offer.
    void restoreRescue();
    void deleteRescue();

    /// One undoable change of the vault: every change that the user makes goes through here. A body that changes
    /// nothing is a step all the same. Neither saves nor touches the selection.
    void edit(std::string label, const std::function<void(KdbxDatabase&)>& body);
    void undo();
    void redo();

    // The verbs on entries and groups. Each step can be undone, and none writes the file. An identifier that finds
    // nothing changes nothing within its step.

    /// Appends the entry to the group and selects it alone. Its times are the caller's.
    void addEntry(KdbxEntry entry, UUID groupID);
    /// Replaces the entry with that identifier, sets its `modified`, and appends what it replaces to its history, which
    /// keeps the last `historyMaxItems`, one at the least. The history of the given entry is ignored.
    void updateEntry(KdbxEntry entry);
    /// Takes the entries out of the vault, past the recycle bin; the way back is `undo`. Selects none. The identifiers
    /// may be the selected ones themselves.
    void deleteEntries(const std::set<UUID>& ids);
    /// Puts entries of the list before another of it. The list as it is shown then becomes the stored order of the
    /// selected group, and the sort becomes the manual one. Nothing happens in a search.
    void moveEntriesBefore(std::set<UUID> ids, UUID target);
    /// The same, behind all others.
    void moveEntriesToEnd(std::set<UUID> ids);
    /// Appends a copy of each entry to its group and selects the copies.
    void duplicateEntries(std::set<UUID> ids);
    /// Appends the entries to a group. Where there is no such group they are lost, until `undo`.
    void moveEntriesTo(std::set<UUID> ids, UUID groupID);

    enum class Shift : bool { up, down };
    /// Puts entries of the list before the row above the first of them, or behind the row below the last, as a drag
    /// there would. Nothing happens at the list's end, and in a search.
    void shiftEntries(const std::set<UUID>& ids, Shift direction);

    /// Appends the group to its parent, which is expanded, and selects it.
    void addGroup(KdbxGroup group, UUID parentID);
    /// Takes over name, notes, icon and sequence, and nothing else, so that what came to the group meanwhile stays.
    void updateGroup(const KdbxGroup& group);
    /// Takes the group with all that it holds out of the vault and selects the root, which itself stays.
    void deleteGroup(UUID id);
    /// Appends the group with all that it holds to the subgroups of another, which is expanded. What `canMoveGroup`
    /// refuses changes nothing; that it would go too deep is said.
    void moveGroupTo(UUID id, UUID parentID);
    /// Whether both groups exist and the first can become the other's subgroup: it is not the root, does not hold the
    /// other, and what it holds would not go too deep to be opened again.
    [[nodiscard]] bool canMoveGroup(UUID id, UUID parentID) const;
    /// How many groups there may be from the root down to one that takes the group, both included.
    [[nodiscard]] std::size_t deepestParentLevel(UUID id) const;
    /// Exchanges a group with the one above or below it in the same group.
    void shiftGroup(UUID id, Shift direction);
    /// Shows or hides a group's subgroups. No step, and nothing to save by itself.
    void setGroupExpanded(UUID id, bool isExpanded);

    // The commands that use an entry: the given one, else the focused one; without either they do nothing.

    /// Copies the user name as a secret, which the clipboard's timer takes away again.
    void copyUsername(const KdbxEntry* entry = nullptr);
    void copyPassword(const KdbxEntry* entry = nullptr);
    /// Copies the URL, which stays on the clipboard. Does nothing where it is empty.
    void copyURL(const KdbxEntry* entry = nullptr);
    /// Hands the URL to the desktop, as https where it names no scheme. Does nothing where it is no URL.
    void openURL(const KdbxEntry* entry = nullptr);
    /// Types the entry's sequence, else that of the nearest group around it that has one, else the user's. Returns at
    /// once; a failure of the typing becomes `lastError`. The end of the session ends it without one.
    void performAutoType(const KdbxEntry* entry = nullptr);

signals:
    void databaseChanged();
    void databaseURLChanged();
    /// The current file was looked at: it may have come, gone or changed.
    void databaseFileLookedAt();
    void offersCreationChanged();
    void isLockedChanged();
    void isDirtyChanged();
    void lastErrorChanged();
    void statusMessageChanged();
    void selectedGroupIDChanged();
    void selectedEntryIDsChanged();
    void searchTextChanged();
    void sortChanged();
    void routeChanged();
    void searchFocusTokenChanged();
    void undoLabelChanged();
    void redoLabelChanged();
    void lastChangeMade();
    /// A derivation has begun, or the verb that waited for it has ended.
    void derivationChanged();
    void rescueOfferChanged();

private:
    using Signal = void (AppState::*)();
    using Step = HeldSignals<AppState>::Step;
    class Meanwhile;

    /// A file that the user has agreed to replace, as it was then.
    struct Replaceable {
        std::filesystem::path file;
        FileStatus status;
    };

    struct RunningDerivation {
        DerivationPurpose purpose;
        Derivation* derivation;
    };

    /// What was asked for while a key was derived.
    enum class Wish : std::uint8_t { none, lock, close };

    template <class Value>
    void assign(Value& property, Value value, Signal changed);
    void assignDatabase(std::optional<KdbxDatabase> database);

    void clearSelection();
    void pruneSelection();
    bool selectRange(UUID id);
    void storeBookmark(const std::filesystem::path& url);
    [[nodiscard]] std::optional<std::filesystem::path> recentDatabase();
    void turnTo(const std::filesystem::path& url);
    void open(KdbxDatabase database, const KdbxKey& key);
    void saveForLock();
    void endSession();
    void dropVault();

    KdbxKeys::Transformation derivingFor(DerivationPurpose purpose);
    KdbxKeys::Transformation derivingFor(DerivationPurpose purpose, std::optional<KdbxTransformedKey>& derived);
    Bytes derive(DerivationPurpose purpose, ByteView compositeKey, const KdbxHeader& header);
    bool isPutOff(Wish wish);
    void fulfilWishSoon();

    void saveQuietly(DerivationPurpose purpose);
    Bytes encoded(DerivationPurpose purpose, std::optional<KdbxTransformedKey>& derived);
    void noteSaved(std::int64_t changeCount, std::optional<KdbxTransformedKey> key);
    void reportKept();
    void reportChangeOfFile();
    void checkReplaceable(const std::filesystem::path& url) const;

    void beginRescues(std::optional<KdbxTransformedKey> key, RescueKeeper::Offering offering);
    void endRescues();
    void keep();
    void noteTravel(const std::string& label, UndoHistory::Direction direction);

    void travel(UndoHistory::Direction direction);
    void announceChange(Change::Kind kind, const std::string& label);
    void refreshUndoLabels();
    void amend(const std::function<void(KdbxDatabase&)>& body);
    void touchAccessed(UUID id);
    void applyOrder(const std::vector<std::size_t>& order, UUID groupID);
    void moveWithinList(const std::set<UUID>& ids, std::optional<UUID> target);
    const KdbxEntry* orFocused(const KdbxEntry* entry) const;
    std::optional<std::string> groupSequence(UUID entryID) const;
    void startTyping(std::vector<AutoTypeAction> actions);

    Services m_services;
    HeldSignals<AppState> m_signals{*this};
    StatusLine m_statusLine;
    std::optional<KdbxDatabase> m_database;
    std::optional<std::filesystem::path> m_databaseURL;
    bool m_isLocked = true;
    bool m_isDirty = false;
    std::int64_t m_changeCount = 0;  // of the vault, by steps, their undoing and their redoing
    std::optional<RunningDerivation> m_derivation;
    Wish m_wish = Wish::none;
    std::optional<KdbxKey> m_activeKey;  // set and cleared together with m_database
    VaultFile m_vaultFile;               // of the open vault
    std::optional<Replaceable> m_replaceable;
    std::optional<std::filesystem::path> m_expected;  // a file that is waited for while it is away
    std::optional<UUID> m_selectedGroupID;
    std::set<UUID> m_selectedEntryIDs;
    std::optional<UUID> m_selectionAnchor;  // where a range of the selection starts
    std::string m_searchText;
    EntrySort m_sort;
    mutable EntryBrowser m_browser;  // forgets when the vault is locked
    std::optional<Route> m_route;
    std::int64_t m_searchFocusToken = 0;
    UndoHistory m_history;
    std::optional<std::string> m_undoLabel;
    std::optional<std::string> m_redoLabel;
    Change m_lastChange{};
    std::unique_ptr<RescueKeeper> m_rescues;  // none where there is no store
    FormContent m_formContent;                // of the sheet that shows
};

template <class Value>
void AppState::assign(Value& property, Value value, Signal changed) {
    if (property == value)
        return;
    property = std::move(value);
    m_signals.send(changed);
}
