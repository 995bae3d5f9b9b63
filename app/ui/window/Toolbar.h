// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class Commands;
class IconButton;
class SearchField;
class TextLabel;

/// The line above the columns: the vault's name and size, the search, and what is done to the vault as a whole.
class Toolbar : public QWidget {
    Q_OBJECT

public:
    Toolbar(AppState& state, Commands& commands, QWidget* parent = nullptr);

    [[nodiscard]] SearchField* search() const noexcept { return m_search; }
    /// Has the search begin where a column of the row below does, wherever that one goes.
    void startSearchAt(QWidget& column);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    void fillMore(Commands& commands);
    void connectState(Commands& commands);
    void showTitle();
    void showSearch();
    void showSaving();

    AppState& m_state;
    QWidget* m_titles = nullptr;
    QWidget* m_column = nullptr;
    TextLabel* m_title;
    TextLabel* m_subtitle;
    SearchField* m_search;
    IconButton* m_newEntry;
    IconButton* m_more;
    IconButton* m_save;
    IconButton* m_lock;
};
