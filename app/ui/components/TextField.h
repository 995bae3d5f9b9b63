// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

#include <cstdint>

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
    /// Keeps room free at the field's end, for what stands inside it.
    void setTrailingRoom(int points);
    /// Keeps room free at the field's beginning.
    void setLeadingRoom(int points);

    /// Replaces the text, and overwrites what the undo history has kept of every letter that was typed here.
    void replaceText(const QString& text);
    /// Whether what happens to the text now is that writing, which is nobody's to hear of.
    [[nodiscard]] bool isOverwritingHistory() const noexcept { return m_isOverwriting; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintPlaceholder(QPainter& painter) const;
    void showRoom();
    void showFont();
    void followHistory(qsizetype length);
    void overwriteHistory();

    Size m_size = Size::regular;
    bool m_isMono = false;
    int m_leadingRoom = 0;
    int m_trailingRoom = 0;
    bool m_isOverwriting = false;
    qsizetype m_length = 0;     // of the text, before a change
    qsizetype m_selection = 0;  // of what is selected, before a change
    qsizetype m_history = 0;    // the most steps that the undo history can have
};
