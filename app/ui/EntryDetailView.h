// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/Environment.h"
#include "core/model/KdbxDatabase.h"

#include <QScrollArea>

#include <optional>

class Card;
class IconButton;
class IconTile;
class TextField;
class TextLabel;
class QStackedWidget;
class QVBoxLayout;

/// The right column for one entry: its fields to read, the password masked, and its title to change.
class EntryDetailView : public QScrollArea {
    Q_OBJECT

public:
    explicit EntryDetailView(const Environment& environment, QWidget* parent = nullptr);

    void show(const KdbxEntry& entry);
    /// Lets go of the entry and of its texts.
    void forget();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void arrange();
    [[nodiscard]] QWidget* makeTitle();
    void connectControls();
    void showFields();
    void addRow(Card& card, const QString& label, const QString& value, const QFont& font);

    void startRenaming();
    void finishRenaming();
    void cancelRenaming();

    AppState& m_state;
    std::optional<KdbxEntry> m_entry;
    bool m_isRenaming = false;
    IconTile* m_tile;
    QStackedWidget* m_title;
    TextLabel* m_titleText;
    TextField* m_titleField;
    IconButton* m_rename;
    QVBoxLayout* m_column = nullptr;
    QWidget* m_fields = nullptr;
};
