// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// A text in one of the theme's roles, plain and never interpreted as markup.
/// Elided where it does not fit, with the whole of it as its tooltip.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const QString& text, const QFont& font, const QColor& colour, QWidget* parent = nullptr);

    void setColour(const QColor& colour);
    void setElideMode(Qt::TextElideMode mode);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode m_elideMode = Qt::ElideRight;
};

/// Running text that wraps to as many lines as it takes.
class Paragraph : public QLabel {
    Q_OBJECT

public:
    Paragraph(const QString& text, const QFont& font, const QColor& colour, QWidget* parent = nullptr);

    /// One line: what it takes beyond follows from its width. A label's own answer is its height at no width at all.
    [[nodiscard]] QSize minimumSizeHint() const override;
};

/// The small label above a field.
class FieldLabel : public TextLabel {
    Q_OBJECT

public:
    explicit FieldLabel(const QString& text, QWidget* parent = nullptr);
};
