// SPDX-License-Identifier: MIT
#pragma once

#include "app/state/Preferences.h"

#include <QPointer>
#include <QSplitter>
#include <QTimer>

#include <optional>

/// The three columns side by side: groups, entries, one entry's fields. Until the user drags a divider their widths
/// follow the window's; the widths that the user gives them, with the pointer or the keyboard, are kept, and a double
/// click on a divider or Backspace gives them up again. The column of the groups can be hidden, and is hidden for as
/// long as the window has no room for it.
class Columns : public QSplitter {
    Q_OBJECT

public:
    /// Takes the three.
    Columns(Preferences& preferences, QWidget* groups, QWidget* entries, QWidget* detail, QWidget* parent = nullptr);

    void setGroupsWanted(bool areWanted);
    [[nodiscard]] bool areGroupsWanted() const noexcept { return m_areGroupsWanted; }

    /// Gives the keyboard to the first divider that shows, from there to the next one, and from the last back.
    void goToNextDivider();

signals:
    /// The keyboard leaves the dividers, and what had it before cannot have it back.
    void focusLost();

protected:
    void resizeEvent(QResizeEvent* event) override;
    [[nodiscard]] QSplitterHandle* createHandle() override;

private:
    void place();
    void showGroups();
    void storeDragged();
    void forgetDragged();
    void takeBack();
    void leaveDividers();

    Preferences& m_preferences;
    QWidget* m_groups;
    QWidget* m_entries;
    bool m_areGroupsWanted = true;
    QTimer m_settling;  // a drag is one change
    // As the keyboard came to the dividers.
    QPointer<QWidget> m_focusBefore;
    std::optional<ColumnWidths> m_widthsBefore;
};
