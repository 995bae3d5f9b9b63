// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/SecureString.h"

#include <QLineEdit>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// A text field of the theme: canvas inside, hairline around. Ctrl+E is no editing key here, as it is in Qt's own on
/// X11, where it goes to the end of the line: it is the window's.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    enum class Size : std::uint8_t { regular, large };

    /// `name` is the accessible name; a field under a label gives the label's text.
    explicit TextField(const QString& name, QWidget* parent = nullptr);

    /// 38 high, for the lock card.
    void setSize(Size size);
    void setMono(bool isMono);
    /// Keeps room free at the field's end, for what is inside it.
    void setTrailingRoom(int points);
    /// Keeps room free at the field's beginning.
    void setLeadingRoom(int points);

    /// Sets and gives a text of the vault, whatever its length. One that is too long to be edited here shows its
    /// beginning and stays to the byte: it can be copied and deleted as a whole, and not typed in. The caller wipes
    /// what was a secret.
    void setWholeText(std::string_view text);
    [[nodiscard]] std::string wholeText() const;
    /// Whether the text has anything but white space in it.
    [[nodiscard]] bool hasContent() const;
    /// Whether the text is one that shows in part.
    [[nodiscard]] bool isKept() const noexcept { return m_kept.has_value(); }

    /// Replaces the text, and overwrites what the undo history has kept of every letter that was typed here.
    void replaceText(const QString& text);
    /// Whether the text changes by that writing now, which is not to be reported.
    [[nodiscard]] bool isOverwritingHistory() const noexcept { return m_isOverwriting; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

public slots:
    /// In place of the line's own verbs, which menus call by their names: what is kept is copied whole, and what is
    /// pasted may have any length.
    virtual void copy() const;
    void paste();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    /// Whether all that shows is selected.
    [[nodiscard]] bool isAllSelected() const;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintPlaceholder(QPainter& painter) const;
    void showRoom();
    void showFont();
    void setKept(std::optional<SecureString> text);
    void showText(const QString& text);
    void followText(const QString& text);
    void followHistory(qsizetype length);
    void overwriteHistory();

    Size m_size = Size::regular;
    bool m_isMono = false;
    int m_leadingRoom = 0;
    int m_trailingRoom = 0;
    bool m_isOverwriting = false;
    bool m_isShowing = false;
    std::optional<SecureString> m_kept;  // a text that is too long to be edited
    qsizetype m_length = 0;              // of the text, before a change
    qsizetype m_selection = 0;           // of what is selected, before a change
    qsizetype m_history = 0;             // the most steps that the undo history can have
};
