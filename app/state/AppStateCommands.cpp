// SPDX-License-Identifier: MIT
#include "app/state/AppState.h"
#include "app/state/FailureText.h"
#include "app/state/GroupTree.h"
#include "app/state/OpenableURL.h"
#include "app/state/Preferences.h"
#include "app/state/WipedAtEnd.h"
#include "core/autotype/AutoTypeSequence.h"
#include "core/autotype/AutoTyping.h"
#include "core/clipboard/ClipboardService.h"
#include "core/platform/Workspace.h"

#include <QPointer>

#include <algorithm>

const KdbxEntry* AppState::orFocused(const KdbxEntry* entry) const {
    return entry ? entry : focusedEntry();
}

void AppState::copyUsername(const KdbxEntry* entry) {
    entry = orFocused(entry);
    if (!entry)
        return;
    const Step step(m_signals);
    m_services.clipboard.copySecret(entry->username);
    m_statusLine.flash("Kullanıcı adı kopyalandı");
    touchAccessed(entry->id);
}

void AppState::copyPassword(const KdbxEntry* entry) {
    entry = orFocused(entry);
    if (!entry)
        return;
    const Step step(m_signals);
    auto password = entry->password.value();
    const WipedAtEnd passwordEnd(password);
    m_services.clipboard.copySecret(password);
    m_statusLine.flash("Parola kopyalandı");
    touchAccessed(entry->id);
}

void AppState::copyURL(const KdbxEntry* entry) {
    entry = orFocused(entry);
    if (!entry || entry->url.empty())
        return;
    m_services.clipboard.copyPlain(entry->url);
    m_statusLine.flash("Adres kopyalandı");
}

void AppState::openURL(const KdbxEntry* entry) {
    entry = orFocused(entry);
    if (!entry || entry->url.empty())
        return;
    const auto url = openableURL(entry->url);
    if (!url)
        return;
    m_services.workspace.openURL(*url);
    touchAccessed(entry->id);
}

void AppState::performAutoType(const KdbxEntry* entry) {
    entry = orFocused(entry);
    if (!entry)
        return;
    // A sequence that is set and empty counts as set: its owner wants nothing typed.
    auto sequence = entry->autoTypeSequence;
    if (!sequence)
        sequence = groupSequence(entry->id);
    if (!sequence)
        sequence = m_services.preferences.defaultAutoTypeSequence();
    // Before anything else happens: what is in front now is meant, and not what comes there next.
    startTyping(AutoTypeSequence::parse(*sequence, *entry));
    touchAccessed(entry->id);
}

/// The sequence of the group that holds the entry, else of the nearest group above it that has one.
std::optional<std::string> AppState::groupSequence(UUID entryID) const {
    if (!m_database)
        return std::nullopt;
    const auto holder = GroupTree::groupContainingEntry(m_database->root, entryID);
    const auto path = holder ? GroupTree::pathToGroup(m_database->root, holder->id) : std::nullopt;
    if (!path)
        return std::nullopt;
    const auto nearest = std::find_if(path->rbegin(), path->rend(),
                                      [](const auto& group) { return group.defaultAutoTypeSequence.has_value(); });
    return nearest == path->rend() ? std::nullopt : nearest->defaultAutoTypeSequence;
}

// Typing outlives the state, which may hear of its failure.
void AppState::startTyping(std::vector<AutoTypeAction> actions) {
    m_services.autoTyping.perform(std::move(actions),
                                  [state = QPointer<AppState>(this)](const std::exception_ptr& failure) {
                                      if (!state || !failure)
                                          return;
                                      try {
                                          std::rethrow_exception(failure);
                                      } catch (...) {
                                          state->setLastError(failureText());
                                      }
                                  });
}

void AppState::touchAccessed(UUID id) {
    amend([&](KdbxDatabase& database) {
        GroupTree::mutateEntry(database.root, id,
                               [&](KdbxEntry& entry) { entry.accessed = m_services.scheduler.now(); });
    });
}
