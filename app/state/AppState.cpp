// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"

#include "app/state/GroupTree.h"
#include "app/state/Preferences.h"

#include <algorithm>

AppState::AppState(Services services, QObject* parent)
    : QObject(parent),
      m_services(std::move(services)),
      m_statusLine(m_services.scheduler),
      m_vaultFile(m_services.files, m_services.scheduler) {
    const auto& preferences = m_services.preferences;
    m_sort = {.column = EntrySort::columnFromText(preferences.sortColumn()).value_or(EntrySort::Column::title),
              .ascending = preferences.sortAscending()};
    if (m_services.rescues && m_services.rescueWork)
        m_rescues = std::make_unique<RescueKeeper>(RescueKeeper::Services{.store = *m_services.rescues,
                                                                          .work = *m_services.rescueWork,
                                                                          .scheduler = m_services.scheduler,
                                                                          .encode = m_services.codec.saveUnder},
                                                   [this] { return m_isDirty && m_database ? &*m_database : nullptr; });
    connect(&m_statusLine, &StatusLine::errorChanged, this, [this] { m_signals.send(&AppState::lastErrorChanged); });
    connect(&m_statusLine, &StatusLine::messageChanged, this,
            [this] { m_signals.send(&AppState::statusMessageChanged); });
    connect(&preferences, &Preferences::couldNotBeStored, this, [this] {
        setLastError("Ayarlar kaydedilemiyor; yaptığın değişiklikler yalnızca program kapanana kadar geçerli.");
    });
}

AppState::~AppState() = default;

// Two vaults are not compared: their equality looks at identifiers and times alone.
void AppState::assignDatabase(std::optional<KdbxDatabase> database) {
    if (!database)
        m_browser.forget();
    m_database = std::move(database);
    if (m_rescues && m_database)
        m_rescues->noteChange();
    m_signals.send(&AppState::databaseChanged);
}

void AppState::setLastError(std::optional<std::string> text) {
    m_statusLine.setError(std::move(text));
}

void AppState::setNotice(std::string text) {
    m_statusLine.setNotice(std::move(text));
}

void AppState::setStatusMessage(std::optional<std::string> text) {
    m_statusLine.setMessage(std::move(text));
}

void AppState::setSelectedGroupID(std::optional<UUID> id) {
    assign(m_selectedGroupID, id, &AppState::selectedGroupIDChanged);
}

void AppState::setSelectedEntryIDs(std::set<UUID> ids) {
    assign(m_selectedEntryIDs, std::move(ids), &AppState::selectedEntryIDsChanged);
}

void AppState::setSearchText(std::string text) {
    if (text == m_searchText)
        return;
    wipe(m_searchText);  // which a shorter text would leave the end of
    m_searchText = std::move(text);
    m_signals.send(&AppState::searchTextChanged);
}

void AppState::setSort(EntrySort sort) {
    if (sort == m_sort)
        return;
    assign(m_sort, sort, &AppState::sortChanged);
    m_services.preferences.setSortColumn(std::string(EntrySort::rawValue(sort.column)));
    m_services.preferences.setSortAscending(sort.ascending);
}

void AppState::setRoute(std::optional<Route> route) {
    if (route != m_route)
        m_formContent = nullptr;
    assign(m_route, route, &AppState::routeChanged);
}

const KdbxGroup* AppState::root() const noexcept {
    return m_database ? &m_database->root : nullptr;
}

std::string AppState::databaseName() const {
    if (m_database && !Text::trimmingWhitespace(m_database->meta.databaseName).empty())
        return m_database->meta.databaseName;
    if (m_databaseURL)
        return Text::repairingUTF8(bytesOf(m_databaseURL->stem().native()));
    return "Brenvik";
}

const KdbxGroup* AppState::selectedGroup() const {
    if (!m_database)
        return nullptr;
    const auto* selected = m_selectedGroupID ? GroupTree::findGroup(m_database->root, *m_selectedGroupID) : nullptr;
    return selected ? selected : root();
}
