// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Environment.h"
#include "core/model/KdbxDatabase.h"

#include <QWidget>

#include <functional>
#include <map>
#include <vector>

class Card;
class FieldRow;
class IconButton;
class MetaStat;
class SecretText;
class QVBoxLayout;

/// The parts of one entry's detail beneath its title, from the badges down to its history. It is made for what the
/// entry holds now, and made anew when that changes; what is revealed and when it was accessed change in place.
class EntryDetailContent : public QWidget {
    Q_OBJECT

public:
    /// Which secrets show in the clear. They are the view's, and outlive a content.
    struct Revealed {
        bool password = false;
        Text::Set customFields;
    };

    /// The entry and what is revealed outlive the content.
    EntryDetailContent(const Environment& environment, const KdbxEntry& entry, Revealed& revealed,
                       QWidget* parent = nullptr);

    void showAccessed();

    /// The controls that take the keyboard, in the order in which they are shown. The same control of another content
    /// of the same entry has the same object name.
    [[nodiscard]] std::vector<QWidget*> stops() const;

signals:
    /// A row wants another height.
    void reflowed(QWidget* row);

private:
    void addBadges();
    void addActions();
    void addCredentials();
    void addLocation();
    void addCustomFields();
    void addAutoType();
    void addNotes();
    void addTimestamps();
    void addHistory();

    Card* addRowsCard();
    [[nodiscard]] FieldRow* tagsRow();
    [[nodiscard]] FieldRow* valueRow(const QString& label, const QString& key, const std::string& value);
    [[nodiscard]] FieldRow* customFieldRow(const std::string& name, const std::string& value);
    void addEye(FieldRow& row, SecretText& secret, const QString& key, const QString& field,
                std::function<bool()> turnRound);
    void addCopy(FieldRow& row, const QString& key, const QString& field, bool hasText, std::function<void()> copy);

    Environment m_environment;
    const KdbxEntry& m_entry;
    Revealed& m_revealed;
    QVBoxLayout* m_column;
    MetaStat* m_accessed = nullptr;
};
