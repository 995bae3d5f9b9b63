// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QWidget>

#include <string>
#include <string_view>
#include <vector>

/// A password to read: a dot for each character, or when revealed the characters in the monospaced face, digits and
/// signs tinted, going on in the next line where one is full. What is revealed can be selected and copied, and never
/// reaches the primary selection: the text is painted here, not by a text control that would put it there.
class PasswordLabel : public QWidget {
    Q_OBJECT

public:
    /// `name` is what stands before the shown text in the accessible name.
    explicit PasswordLabel(const QString& name, QWidget* parent = nullptr);
    ~PasswordLabel() override;

    /// Replaces the password; the former one is wiped and nothing stays selected.
    void setPassword(std::string_view password);
    void setRevealed(bool isRevealed);
    [[nodiscard]] bool isRevealed() const noexcept { return m_isRevealed; }

    /// The usual size, and the one of a password that takes more than two lines at the usual size.
    void setFontSizes(int usual, int whenLong);

    /// What shows: the dots or the password itself, made anew at each call and of no use to be kept.
    [[nodiscard]] QString shownText() const;
    [[nodiscard]] bool hasSelection() const noexcept { return m_anchor != m_end; }
    void selectAll();
    void deselect();

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    /// The user asks for a copy of a selected part of the revealed password, which is gone when this returns.
    void copyRequested(std::string_view part);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// Where a character stands among equally wide columns. A wide one takes two of them.
    struct Cell {
        int line;
        int column;
        int columns;
    };
    /// All of them, at one size of the font.
    struct Grid {
        QFont font;
        std::vector<Cell> cells;
        [[nodiscard]] int lines() const { return cells.empty() ? 1 : cells.back().line + 1; }
        [[nodiscard]] int height() const;
        /// The cell's box where the whole grid stands in the middle of a widget of that height.
        [[nodiscard]] QRectF box(const Cell& cell, int widgetHeight) const;
    };

    [[nodiscard]] Grid grid(int width) const;
    [[nodiscard]] std::vector<Cell> cells(int width, const QFont& font) const;
    /// A character as it shows.
    [[nodiscard]] QString shown(std::size_t index) const;
    void measure();
    [[nodiscard]] int positionAt(const QPointF& point) const;
    [[nodiscard]] int characterCount() const { return static_cast<int>(m_characters.size()); }
    void moveEnd(int position);
    void copySelection();

    std::string m_password;
    std::vector<std::string_view> m_characters;  // of m_password
    bool m_isRevealed = false;
    int m_usualSize = 13;
    int m_longSize = 13;
    int m_anchor = 0;  // where the selection starts, in characters
    int m_end = 0;     // and where it ends, on either side
};
