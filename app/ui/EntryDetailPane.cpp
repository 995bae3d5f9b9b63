// SPDX-License-Identifier: MIT
#include "app/ui/EntryDetailPane.h"

#include "app/state/AppState.h"
#include "app/ui/EntryDetailView.h"
#include "app/ui/components/EmptyStateView.h"

EntryDetailPane::EntryDetailPane(const Environment& environment, QWidget* parent)
    : QStackedWidget(parent), m_state(environment.state), m_detail(new EntryDetailView(environment)) {
    addWidget(m_detail);
    connect(&m_state, &AppState::databaseChanged, this, &EntryDetailPane::showSelection);
    connect(&m_state, &AppState::selectedEntryIDsChanged, this, &EntryDetailPane::showSelection);
    showSelection();
}

void EntryDetailPane::showSelection() {
    delete std::exchange(m_placeholder, nullptr);
    if (const auto* entry = m_state.focusedEntry()) {
        m_detail->show(*entry);
        setCurrentWidget(m_detail);
        return;
    }
    m_detail->forget();
    m_placeholder = placeholder();
    addWidget(m_placeholder);
    setCurrentWidget(m_placeholder);
}

QWidget* EntryDetailPane::placeholder() const {
    switch (m_state.selectedEntryIDs().size()) {
        case 0:
            return new EmptyStateView(QStringLiteral("square.righthalf.filled"), tr("Kayıt seçilmedi"),
                                      tr("Ayrıntıları görmek için listeden bir kayıt seç."));
        case 1:
            return new EmptyStateView(QStringLiteral("exclamationmark.triangle"), tr("Kayıt bulunamadı"),
                                      tr("Seçili kayıt veritabanı ağacında yok. Kasayı kapatıp yeniden açmayı dene."));
        default:
            return new EmptyStateView(QStringLiteral("square.stack.3d.up"),
                                      tr("%1 kayıt seçildi").arg(m_state.selectedEntryIDs().size()),
                                      tr("Toplu işlemler için aşağıdaki düğmeleri ya da sağ tık menüsünü kullan."));
    }
}
