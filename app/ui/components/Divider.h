// SPDX-License-Identifier: MIT
#pragma once

#include <QSplitterHandle>

class QAccessibleInterface;

/// A divider of two columns: a hairline that takes the pointer some points to either side. No stop of Tab, but once
/// it has the keyboard it is moved by keys: the arrows, Home and End move it, Return leaves it there, Escape takes back
/// what they did. Screen readers hear and set the width of the column before it.
class Divider : public QSplitterHandle {
    Q_OBJECT

public:
    explicit Divider(QSplitter* columns);

    /// Of the column before it, in points.
    [[nodiscard]] int columnWidth() const;
    [[nodiscard]] int narrowest() const { return limits().first; }
    [[nodiscard]] int widest() const { return limits().second; }
    /// Brought into its limits. The splitter announces it as it does a drag.
    void setColumnWidth(int width);

    /// What a screen reader hears of a divider.
    [[nodiscard]] static QAccessibleInterface* accessible(Divider& divider);

signals:
    void finished();
    void cancelled();
    /// The columns may have their usual widths again.
    void resetWanted();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] std::pair<int, int> limits() const;
    [[nodiscard]] int columnStart() const;
    void showFocus();
};
