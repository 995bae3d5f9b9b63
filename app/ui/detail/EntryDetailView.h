// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/ScrollPage.h"
#include "app/ui/detail/EntryDetailContent.h"

#include <optional>

class IconButton;
class IconTile;
class Paragraph;

/// The right column for one entry: all its fields to read and to copy, its secrets masked until they are revealed.
/// It changes nothing of the entry itself.
class EntryDetailView : public ScrollPage {
    Q_OBJECT

public:
    explicit EntryDetailView(const Environment& environment, QWidget* parent = nullptr);

    /// Shows an entry. The same entry again keeps its place, its focus and what is revealed; another one starts at
    /// its top, with its secrets masked.
    void show(const KdbxEntry& entry);
    /// Lets go of the entry and of its texts.
    void forget();

private:
    void makeHeader();
    void arrange();
    void connectControls();
    void showHeader();
    void rebuild();
    void takeTabOrder();
    void reflow(QWidget* row);
    void placeAt(int scrollPosition);

    Environment m_environment;
    std::optional<KdbxEntry> m_entry;
    EntryDetailContent::Revealed m_revealed;
    bool m_isExpired = false;  // as it is shown
    QWidget* m_header = nullptr;
    IconTile* m_tile = nullptr;
    Paragraph* m_title = nullptr;
    IconButton* m_edit = nullptr;
    EntryDetailContent* m_parts = nullptr;
};
