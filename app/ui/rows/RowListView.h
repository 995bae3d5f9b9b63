// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QListView>
#include <QPersistentModelIndex>

#include <functional>
#include <optional>

/// What marks one row for as long as something is about to happen to it.
struct RowMark {
    enum class Shape : std::uint8_t {
        ground,     // it is what a drag would be let go on
        lineAbove,  // a drag would be put above it
        lineBelow,
        outline  // a menu is open for it
    };
    int row;
    Shape shape;

    bool operator==(const RowMark&) const = default;
};

/// Something that can be done with a row, under the name that the user knows it by.
struct RowVerb {
    QString name;
    std::function<void()> act;
};

/// A column's list: rows of one height that a delegate paints, with the theme's margins and without a frame. It knows
/// which row the pointer is over, also when rows move beneath a resting pointer, and asks for a row's menu. Its model
/// is a `RowListModel`.
class RowListView : public QListView {
    Q_OBJECT

public:
    explicit RowListView(const QString& name, QWidget* parent = nullptr);

    /// The row under the pointer; invalid where there is none, and during a drag.
    [[nodiscard]] QModelIndex hoveredIndex() const { return m_hovered; }
    /// The pointer is busy elsewhere, with a drag, and comes back with its next move.
    void forgetPointer();
    /// Whether a row is painted as the one that has the keyboard: from the first key on, until the pointer is used.
    [[nodiscard]] static bool showsFocus(const QStyleOptionViewItem& option);

    /// What a screen reader may do with a row, besides going to it and opening its menu.
    [[nodiscard]] QList<RowVerb> verbs(const QModelIndex& index) const;
    void setVerbs(std::function<QList<RowVerb>(const QModelIndex&)> verbs);
    /// Whether a row has unfolded what is below it; none where there is nothing below.
    [[nodiscard]] std::optional<bool> isExpanded(const QModelIndex& index) const;
    void setExpansion(std::function<std::optional<bool>(const QModelIndex&)> isExpanded);
    /// Notifies a screen reader that a row has unfolded what is below it, or folded it up.
    void tellExpansion(int row);
    /// Asks for a row's menu, as a key does.
    void requestMenu(const QModelIndex& index);

    [[nodiscard]] const std::optional<RowMark>& mark() const noexcept { return m_mark; }
    void setMark(std::optional<RowMark> mark);

    /// Finds the next row whose text begins with what is typed. I, İ, ı and i are the same letter here, since a name
    /// may be in any language.
    void keyboardSearch(const QString& typed) override;

signals:
    /// Another row is under the pointer, or it has moved.
    void hoverMoved();
    /// A menu is wanted for a row: by the pointer, at its place, or by a key, below the row's text.
    void menuRequested(const QModelIndex& index, const QPoint& globalPosition);
    /// The user has begun to drag this row.
    void dragStarted(const QModelIndex& index);
    /// A row was clicked twice with the left button, which is let go by now.
    void clickedTwice(const QModelIndex& index);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void currentChanged(const QModelIndex& current, const QModelIndex& former) override;
    void startDrag(Qt::DropActions supportedActions) override;

private:
    void followPointer();
    void showHover();
    void paintMark(QPainter& painter) const;
    void tellFocus();

    std::optional<QPoint> m_pointer;  // none while it is elsewhere
    QPersistentModelIndex m_hovered;
    QPersistentModelIndex m_pressed;
    QPersistentModelIndex m_doubleClicked;
    std::optional<RowMark> m_mark;
    std::function<QList<RowVerb>(const QModelIndex&)> m_verbs;
    std::function<std::optional<bool>(const QModelIndex&)> m_expansion;
    QString m_typed;
    QElapsedTimer m_lastTyped;
    bool m_isKeyboardUsed = false;
};
