// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QTextLayout;

/// A text in one of the theme's roles, plain and never interpreted as markup.
/// Elided where it does not fit, with the whole of it as its tooltip.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const QString& text, const QFont& font, const QColor& colour, QWidget* parent = nullptr);

    /// Of a text of any length its beginning, in place of the label's own verb.
    void setText(const QString& text);
    void setColour(const QColor& colour);
    void setElideMode(Qt::TextElideMode mode);
    /// Keeps room for the widest figures, so that a number that changes in place moves nothing. Its own figures stay
    /// as close as in any text.
    void setTabularFigures(bool isTabular);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintTabular(QPainter& painter, const QRect& area, const QString& line) const;

    Qt::TextElideMode m_elideMode = Qt::ElideRight;
    bool m_isTabular = false;
};

/// Running text on as many lines as it takes. A word that is wider than a line is broken, and nothing is cut off.
class Paragraph : public QLabel {
    Q_OBJECT

public:
    Paragraph(const QString& text, const QFont& font, const QColor& colour, QWidget* parent = nullptr);

    /// Of a text of any length its beginning, in place of the label's own verb.
    void setText(const QString& text);
    /// What goes beyond so many lines is elided, with the whole text as the tooltip.
    void setMostLines(int count);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    /// One line: what it takes beyond follows from its width. A label's own answer is its height at no width at all.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The lines, placed from the top of a box as wide.
    void layOut(QTextLayout& lines, int width) const;
    [[nodiscard]] QString shortened(const QTextLayout& lines, int width) const;

    int m_mostLines = 0;  // 0 for any number
    // The last answer of `heightForWidth`, which layouts ask for many times over.
    mutable QString m_measuredText;
    mutable int m_measuredWidth = -1;
    mutable int m_measuredHeight = 0;
};

/// The small label above a field.
class FieldLabel : public TextLabel {
    Q_OBJECT

public:
    explicit FieldLabel(const QString& text, QWidget* parent = nullptr);
};
