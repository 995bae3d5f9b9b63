// SPDX-License-Identifier: MIT
#include "app/ui/detail/EntryDetailPane.h"

#include "app/state/AppState.h"
#include "app/ui/detail/EntryDetailView.h"
#include "app/ui/detail/MultiSelectionSummary.h"

EntryDetailPane::EntryDetailPane(const Environment& environment, QWidget* parent)
    : QStackedWidget(parent), m_state(environment.state), m_detail(new EntryDetailView(environment)) {
    addWidget(m_detail);
    connect(&m_state, &AppState::databaseChanged, this, &EntryDetailPane::showSelection);
    connect(&m_state, &AppState::selectedEntryIDsChanged, this, &EntryDetailPane::showSelection);
    showSelection();
}

void EntryDetailPane::showSelection() {
    if (const auto* entry = m_state.focusedEntry()) {
        m_detail->show(*entry);
        setCurrentWidget(m_detail);
        drop(std::exchange(m_placeholder, nullptr));
        m_placeholderCount.reset();
    } else {
        showPlaceholder(m_state.selectedEntryIDs().size());
        m_detail->forget();
    }
}

void EntryDetailPane::showPlaceholder(std::size_t count) {
    if (m_placeholderCount == count)
        return;  // with the focus that one of its buttons may have
    auto* const former = std::exchange(m_placeholder, placeholder(count));
    m_placeholderCount = count;
    m_placeholder->standBeside(0);
    addWidget(m_placeholder);
    setCurrentWidget(m_placeholder);
    drop(former);
}

// One of its own buttons may be what made it out of date, so it goes when that has ended.
void EntryDetailPane::drop(QWidget* placeholder) {
    if (!placeholder)
        return;
    removeWidget(placeholder);
    placeholder->hide();
    placeholder->deleteLater();
}

EmptyStateView* EntryDetailPane::placeholder(std::size_t count) const {
    switch (count) {
        case 0:
            return new EmptyStateView(QStringLiteral("square.righthalf.filled"), QStringLiteral("Kayıt seçilmedi"),
                                      QStringLiteral("Ayrıntıları görmek için listeden bir kayıt seç."));
        case 1:
            return new EmptyStateView(
                QStringLiteral("exclamationmark.triangle"), QStringLiteral("Kayıt bulunamadı"),
                QStringLiteral("Seçili kayıt veritabanı ağacında yok. Kasayı kapatıp yeniden açmayı dene."));
        default:
            return new MultiSelectionSummary(m_state, static_cast<std::int64_t>(count));
    }
}
