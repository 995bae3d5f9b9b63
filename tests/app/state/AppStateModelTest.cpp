// SPDX-License-Identifier: MIT
#include "tests/app/state/PlainSession.h"
#include "tests/app/state/StateFakes.h"

#include <random>

namespace {

using namespace std::chrono_literals;
using Column = EntrySort::Column;

constexpr int sequences = 10'000;
constexpr std::uint32_t firstSeed = 20'240'101;
constexpr const char* secretMark = "gizli";

/// One random life of a session, and the plain one beside it.
class Life {
public:
    explicit Life(std::uint32_t seed) : m_random(seed) {
        auto vault = smallVault();
        vault.meta.historyMaxItems = m_plain.historyMaxItems = number(4) - 1;
        putTimesRight(vault.root);
        m_files.contents[m_file] = m_codec.save(vault, KdbxKey("parola", std::nullopt));
        m_plain.file = Plain::plain(vault.root);
        m_plain.now = m_clock.now().seconds;
        m_state.prepare(m_file);
        m_plain.prepare();
        unlock();
    }

    /// Whether all stays as it has to be; a failure has been told by then.
    bool takeSteps(int count) {
        for (int step = 0; step < count; ++step) {
            takeStep();
            compare();
            if (::testing::Test::HasFailure()) {
                ADD_FAILURE() << "step " << step << ": " << m_lastStep;
                return false;
            }
        }
        return true;
    }

    /// Takes back all that can be taken back; how much that was.
    int undoAll() {
        int count = 0;
        for (; m_state.canUndo() && count < 1000; ++count)
            m_state.undo();
        return count;
    }

private:
    int number(int below) { return static_cast<int>(m_random() % static_cast<std::uint32_t>(below)); }

    template <class Value>
    Value oneOf(const std::vector<Value>& values, Value otherwise) {
        return values.empty() || number(12) == 0 ? otherwise
                                                 : values[static_cast<std::size_t>(number(int(values.size())))];
    }

    UUID someEntry() {
        std::vector<UUID> ids;
        for (const auto& entry : number(2) ? m_plain.all() : m_plain.visible())
            ids.push_back(entry.id);
        return oneOf(ids, UUID::random());
    }
    UUID someGroup() { return oneOf(m_plain.groupIDs(), UUID::random()); }
    std::set<UUID> someEntries() {
        if (number(4) == 0)
            return m_plain.selectedEntries;
        std::set<UUID> ids;
        for (int count = number(4); count > 0; --count)
            ids.insert(someEntry());
        return ids;
    }
    std::string someName() { return "K" + std::to_string(10 + number(20)); }

    static void putTimesRight(KdbxGroup& group) {
        group.created = group.modified = Timestamp{0};
        for (std::size_t i = 0; i < group.entries.size(); ++i) {
            auto& entry = group.entries.mutableAt(i);
            entry.created = entry.modified = entry.accessed = Timestamp{static_cast<double>(i)};
            entry.password = SecureString(secretMark + entry.title);
        }
        for (std::size_t i = 0; i < group.groups.size(); ++i)
            putTimesRight(group.groups.mutableAt(i));
    }

    KdbxEntry newEntry() {
        auto entry = entryTitled(someName());
        entry.created = entry.modified = entry.accessed = m_clock.now();
        entry.password = SecureString(secretMark + std::to_string(number(100)));
        return entry;
    }
    static Plain::Entry plain(const KdbxEntry& entry) {
        KdbxGroup group;
        group.entries = {entry};
        return Plain::plain(group).entries[0];
    }

    void unlock() {
        m_state.unlock("parola", std::nullopt);
        m_plain.unlock();
    }

    void takeStep() {
        static const std::vector<std::pair<const char*, void (Life::*)()>> steps{
            {"add entry", &Life::addEntry},
            {"add entry", &Life::addEntry},
            {"update entry", &Life::updateEntry},
            {"update entry", &Life::updateEntry},
            {"delete entries", &Life::deleteEntries},
            {"move before", &Life::moveBefore},
            {"move before", &Life::moveBefore},
            {"move to end", &Life::moveToEnd},
            {"duplicate", &Life::duplicate},
            {"move to group", &Life::moveTo},
            {"add group", &Life::addGroup},
            {"update group", &Life::updateGroup},
            {"delete group", &Life::deleteGroup},
            {"expand", &Life::expand},
            {"select entries", &Life::selectEntries},
            {"select group", &Life::selectGroup},
            {"select group", &Life::selectGroup},
            {"search", &Life::search},
            {"sort", &Life::sort},
            {"undo", &Life::undo},
            {"undo", &Life::undo},
            {"undo", &Life::undo},
            {"redo", &Life::redo},
            {"redo", &Life::redo},
            {"save", &Life::save},
            {"lock", &Life::lockOrUnlock},
            {"drop", &Life::drop},
            {"wait", &Life::wait},
            {"disk", &Life::fillOrEmptyDisk},
            {"copy", &Life::copyPassword},
        };
        const auto& [name, step] = m_plain.root || number(3) == 0
                                       ? steps[static_cast<std::size_t>(number(int(steps.size())))]
                                       : std::pair("lock", &Life::lockOrUnlock);
        m_lastStep = name;
        (this->*step)();
    }

    void addEntry() {
        const auto entry = newEntry();
        const auto group = someGroup();
        m_state.addEntry(entry, group);
        m_plain.addEntry(plain(entry), group);
    }
    void updateEntry() {
        auto entry = newEntry();
        entry.id = someEntry();
        m_state.updateEntry(entry);
        m_plain.updateEntry(plain(entry));
    }
    void deleteEntries() {
        const auto ids = someEntries();
        m_state.deleteEntries(ids);
        m_plain.deleteEntries(ids);
    }
    void moveBefore() {
        const auto ids = someEntries();
        const auto target = someEntry();
        m_state.moveEntriesBefore(ids, target);
        m_plain.moveBefore(ids, target);
    }
    void moveToEnd() {
        const auto ids = someEntries();
        m_state.moveEntriesToEnd(ids);
        m_plain.moveBefore(ids, std::nullopt);
    }
    void duplicate() {
        const auto ids = someEntries();
        m_state.duplicateEntries(ids);
        m_plain.duplicate(ids);
        if (m_state.root())
            m_plain.adoptIDs(Plain::plain(*m_state.root()));
    }
    void moveTo() {
        const auto ids = someEntries();
        const auto group = someGroup();
        m_state.moveEntriesTo(ids, group);
        m_plain.moveTo(ids, group);
    }
    void addGroup() {
        auto group = groupNamed(someName());
        group.created = group.modified = m_clock.now();
        const auto parent = someGroup();
        m_state.addGroup(group, parent);
        m_plain.addGroup(Plain::plain(group), parent);
    }
    void updateGroup() {
        auto group = groupNamed(someName());
        group.id = someGroup();
        m_state.updateGroup(group);
        m_plain.updateGroup(Plain::plain(group));
    }
    void deleteGroup() {
        const auto id = someGroup();
        m_state.deleteGroup(id);
        m_plain.deleteGroup(id);
    }
    void expand() {
        const auto id = someGroup();
        const bool isExpanded = number(2) == 0;
        m_state.setGroupExpanded(id, isExpanded);
        m_plain.setExpanded(id, isExpanded);
    }
    void selectEntries() {
        const auto ids = someEntries();
        m_state.setSelectedEntryIDs(ids);
        m_plain.selectedEntries = ids;
    }
    void selectGroup() {
        const auto id = number(10) == 0 ? std::nullopt : std::optional(someGroup());
        m_state.setSelectedGroupID(id);
        m_plain.selectedGroup = id;
    }
    void search() {
        const auto text = oneOf<std::string>({"", "", "", " \t", "k1", "KOPYA", "kopya k2", "zzz"}, "");
        m_state.setSearchText(text);
        m_plain.search = text;
    }
    void sort() {
        const EntrySort sort{
            .column = oneOf<Column>({Column::manual, Column::title, Column::modified, Column::url}, Column::username),
            .ascending = number(2) == 0};
        m_state.setSort(sort);
        m_plain.sort = sort;
    }
    void undo() {
        const bool isStep = m_state.canUndo();
        m_state.undo();
        m_plain.undo();
        if (isStep)
            expectSelectionInTree();
    }
    void redo() {
        const bool isStep = m_state.canRedo();
        m_state.redo();
        m_plain.redo();
        if (isStep)
            expectSelectionInTree();
    }
    void save() {
        m_state.save();
        m_plain.save();
    }
    void lockOrUnlock() {
        if (m_plain.root) {
            m_state.lock();
            m_plain.lock();
        } else {
            unlock();
        }
    }
    void drop() {
        if (number(4) > 0)
            return;
        m_state.prepare(m_file);
        m_plain.prepare();
    }
    void wait() {
        const int halfSeconds = number(6);
        m_clock.advance(halfSeconds * 500ms);
        m_plain.advance(halfSeconds * 0.5);
    }
    void fillOrEmptyDisk() {
        m_plain.diskIsFull = number(3) == 0;
        m_files.unwritable.clear();
        if (m_plain.diskIsFull)
            m_files.unwritable[m_file] = "disk dolu";
    }
    void copyPassword() {
        m_state.copyPassword();
        m_plain.copyPassword();
    }

    void compare() {
        ASSERT_EQ(m_state.database().has_value(), m_plain.root.has_value());
        if (m_plain.root) {
            ASSERT_EQ(Plain::plain(*m_state.root()), *m_plain.root);
            expectUniqueIDs();
        }
        ASSERT_EQ(m_state.isLocked(), !m_plain.root.has_value());
        ASSERT_EQ(m_state.isDirty(), m_plain.isDirty);
        ASSERT_EQ(m_state.lastError().has_value(), m_plain.hasError);
        ASSERT_EQ(m_state.statusMessage(), m_plain.status);
        ASSERT_EQ(m_state.selectedGroupID(), m_plain.selectedGroup);
        ASSERT_EQ(m_state.selectedEntryIDs(), m_plain.selectedEntries);
        ASSERT_EQ(m_state.searchText(), m_plain.search);
        ASSERT_EQ(m_state.sort(), m_plain.sort);
        ASSERT_EQ(m_preferences.sortColumn(), EntrySort::rawValue(m_plain.sort.column));
        ASSERT_EQ(m_state.canUndo(), !m_plain.undoSteps.empty());
        ASSERT_EQ(m_state.canRedo(), !m_plain.redoSteps.empty());
        ASSERT_EQ(m_state.undoLabel(), m_plain.undoLabel);
        ASSERT_EQ(m_state.redoLabel(), m_plain.redoLabel);
        ASSERT_EQ(Plain::plain(m_codec.databaseIn(m_files.contents.at(m_file)).root), m_plain.file);
        compareLists();
        expectNoSecretShown();
    }

    void compareLists() {
        const auto expected = m_plain.visible();
        const auto shown = m_state.visibleEntries();
        ASSERT_EQ(shown.size(), expected.size());
        for (std::size_t i = 0; i < shown.size(); ++i)
            ASSERT_EQ(shown[i]->id, expected[i].id) << "row " << i;
    }

    void expectUniqueIDs() {
        const auto all = m_plain.all();
        std::set<UUID> ids;
        for (const auto& entry : all)
            ids.insert(entry.id);
        ASSERT_EQ(ids.size(), all.size());
        ASSERT_FALSE(ids.contains(UUID()));
    }

    void expectSelectionInTree() {
        if (!m_state.root())
            return;
        ASSERT_EQ(m_state.selectedEntries().size(), m_state.selectedEntryIDs().size());
        if (m_state.selectedGroupID()) {
            ASSERT_EQ(m_state.selectedGroup()->id, *m_state.selectedGroupID());
        }
    }

    void expectNoSecretShown() {
        ASSERT_EQ(m_state.statusMessage().value_or("").find(secretMark), std::string::npos);
        for (const auto& [key, value] : m_settings.values)
            if (const auto* text = std::get_if<std::string>(&value)) {
                ASSERT_EQ(text->find(secretMark), std::string::npos) << key;
            }
    }

    const std::filesystem::path m_file = "/kasa/Ev.kdbx";
    std::mt19937 m_random;
    FakeSettings m_settings;
    FakeFiles m_files;
    FakeBookmarks m_bookmarks;
    FakeScheduler m_clock;
    FakeBackgroundWork m_background;
    FakeCodec m_codec;
    FakeClipboard m_pasteboard;
    ClipboardService m_clipboard{m_pasteboard, m_clock};
    Preferences m_preferences{m_settings, m_clipboard};
    FakeWorkspace m_workspace;
    FakeAutoTyping m_autoTyping;
    AppState m_state{{.preferences = m_preferences,
                      .files = m_files,
                      .bookmarks = m_bookmarks,
                      .scheduler = m_clock,
                      .background = m_background,
                      .clipboard = m_clipboard,
                      .codec = m_codec.doors(),
                      .workspace = m_workspace,
                      .autoTyping = m_autoTyping}};
    Plain::Session m_plain;
    const char* m_lastStep = "";
};

// Most lives are short, since a fault shows soon or where much has gathered; each hundredth overflows the undo stack.
TEST(AppStateModelTest, everySequenceOfVerbsEndsAsThePlainSessionDoes) {
    for (int number = 0; number < sequences; ++number) {
        const auto seed = firstSeed + static_cast<std::uint32_t>(number);
        Life life(seed);
        if (!life.takeSteps(number % 100 == 0 ? 200 : 10 + number % 40)) {
            ADD_FAILURE() << "seed " << seed;
            return;
        }
        ASSERT_LE(life.undoAll(), 50) << "seed " << seed;
    }
}

}  // namespace
