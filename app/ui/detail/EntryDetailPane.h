// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"

#include <QStackedWidget>

#include <cstddef>
#include <optional>

class EmptyStateView;
class EntryDetailView;

/// The right column: the one selected entry, or a word on why there is none.
class EntryDetailPane : public QStackedWidget {
    Q_OBJECT

public:
    explicit EntryDetailPane(const Environment& environment, QWidget* parent = nullptr);

private:
    void showSelection();
    void showPlaceholder(std::size_t count);
    void drop(QWidget* placeholder);
    [[nodiscard]] EmptyStateView* placeholder(std::size_t count) const;

    AppState& m_state;
    EntryDetailView* m_detail;
    EmptyStateView* m_placeholder = nullptr;
    std::optional<std::size_t> m_placeholderCount;  // of selected entries, that it shows
};
