// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"

#include <QStackedWidget>

class EntryDetailView;

/// The right column: the one selected entry, or a word on why there is none.
class EntryDetailPane : public QStackedWidget {
    Q_OBJECT

public:
    explicit EntryDetailPane(const Environment& environment, QWidget* parent = nullptr);

private:
    void showSelection();
    [[nodiscard]] QWidget* placeholder() const;

    AppState& m_state;
    EntryDetailView* m_detail;
    QWidget* m_placeholder = nullptr;
};
