// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

/// What is done with the text of the field that has the keyboard, in whichever of a window's fields that is. A field
/// keeps the keys of its text, also those that stand for something else outside: there Ctrl+C copies a password, and
/// Ctrl+Delete deletes an entry.
class TextCommands : public QObject {
    Q_OBJECT

public:
    explicit TextCommands(QWidget& window);

    /// Cut, copy, paste.
    [[nodiscard]] QList<QAction*> editing() const { return {m_cut, m_copy, m_paste}; }
    [[nodiscard]] QAction* selectingAll() const noexcept { return m_selectAll; }

    /// Asks the field what it can do now.
    void showEnabled();
    /// Whether the rows outside of fields may be selected.
    void setRowsInReach(bool areInReach);

signals:
    /// All is to be selected, and no field has the keyboard.
    void allRowsWanted();

protected:
    /// Of the window, which hears of a key when what has the keyboard does not take it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* make(const QString& text, const char* verb, const QKeySequence& key);
    [[nodiscard]] QWidget* field() const;
    void followFocus(QWidget* now);
    void followSelection();
    void selectAll();

    QWidget& m_window;
    QPointer<QWidget> m_field;  // the text field that has the keyboard, also while a menu has it for a moment
    QAction* m_cut;
    QAction* m_copy;
    QAction* m_paste;
    QAction* m_selectAll;
    bool m_areRowsInReach = false;
};
