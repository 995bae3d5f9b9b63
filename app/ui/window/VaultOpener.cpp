// SPDX-License-Identifier: MIT
#include "app/ui/window/VaultOpener.h"

#include "app/state/AppState.h"
#include "app/ui/commands/Commands.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/components/Texts.h"

#include <QApplication>

#include <utility>

VaultOpener::VaultOpener(AppState& state, Commands& commands, QWidget& window)
    : QObject(&window),
      m_state(state),
      m_commands(commands),
      m_window(window),
      m_host(new SheetHost(nullptr, &window)) {
    // A derivation has ended before the verb that waited for it.
    connect(&m_state, &AppState::derivationChanged, this, &VaultOpener::proceed, Qt::QueuedConnection);
    connect(&m_state, &AppState::isLockedChanged, this, [this] {
        if (isAsking())
            forget();
    });
}

void VaultOpener::open(std::filesystem::path file) {
    forget();
    if (m_state.isCurrentFile(file))
        return m_state.lookAtFile();
    m_wanted = std::move(file);
    proceed();
}

bool VaultOpener::isAsking() const {
    return m_host->sheet() != nullptr;
}

void VaultOpener::proceed() {
    if (!m_wanted || m_state.derivation() || isAsking())
        return;
    if (auto* const panel = QApplication::activeModalWidget()) {
        connect(panel, &QObject::destroyed, this, &VaultOpener::proceed,
                Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
        return;
    }
    // A session that was dropped for another file leaves its mark of what was unsaved.
    const OpenQuestion::Unsaved unsaved{.vault = !m_state.isLocked() && m_state.isDirty(),
                                        .form = m_state.hasUnsavedForm()};
    if (unsaved.vault || unsaved.form)
        ask(unsaved);
    else
        openNow();
}

void VaultOpener::ask(OpenQuestion::Unsaved unsaved) {
    auto* const question = new OpenQuestion(qtPath(m_wanted->filename()), unsaved);
    connect(question, &OpenQuestion::cancelled, this, &VaultOpener::forget);
    connect(question, &OpenQuestion::openWanted, this, [this] { answer(&VaultOpener::openNow); });
    connect(question, &OpenQuestion::saveWanted, this, [this] { answer(&VaultOpener::saveAndOpen); });
    m_host->present(question);
    m_others.begin(m_window, *m_host);  // the host has seen by now where the focus was
    emit askingChanged();
}

/// Outside the question's own slot, since what follows may take its time and has its own sheet.
void VaultOpener::answer(void (VaultOpener::*act)()) {
    dismiss();
    QMetaObject::invokeMethod(this, act, Qt::QueuedConnection);
}

void VaultOpener::openNow() {
    if (!m_wanted || m_state.derivation())
        return;
    m_commands.openDatabase(*std::exchange(m_wanted, std::nullopt));
}

/// What cannot be saved stays open, and the window says why.
void VaultOpener::saveAndOpen() {
    const auto file = std::exchange(m_wanted, std::nullopt);
    m_commands.save();
    if (!file || m_state.isDirty())
        return;
    m_wanted = file;
    openNow();
}

void VaultOpener::forget() {
    m_wanted.reset();
    dismiss();
}

void VaultOpener::dismiss() {
    m_others.end();
    m_host->dismiss();
    emit askingChanged();
}
