// SPDX-License-Identifier: MIT
#pragma once

#include <QSplitter>
#include <QTimer>

class Preferences;

/// The three columns side by side: groups, entries, one entry's fields. Until the user drags a divider their widths
/// follow the window's; the widths that he drags are kept, and a double click on a divider gives them up again. The
/// column of the groups can be hidden, and is hidden for as long as the window has no room for it.
class Columns : public QSplitter {
    Q_OBJECT

public:
    /// Takes the three.
    Columns(Preferences& preferences, QWidget* groups, QWidget* entries, QWidget* detail, QWidget* parent = nullptr);

    void setGroupsWanted(bool areWanted);
    [[nodiscard]] bool areGroupsWanted() const noexcept { return m_areGroupsWanted; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    [[nodiscard]] QSplitterHandle* createHandle() override;

private:
    void place();
    void showGroups();
    void storeDragged();
    void forgetDragged();

    Preferences& m_preferences;
    QWidget* m_groups;
    QWidget* m_entries;
    bool m_areGroupsWanted = true;
    QTimer m_settling;  // a drag is one change
};
