// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

/// A raised card with rounded corners, with or without a heading.
class Card : public QWidget {
    Q_OBJECT

public:
    explicit Card(QWidget* parent = nullptr);
    explicit Card(const QString& heading, QWidget* parent = nullptr);

    /// Where the card's content goes.
    [[nodiscard]] QVBoxLayout* content() const noexcept { return m_content; }
    /// The line of the heading; what is added goes to its end.
    [[nodiscard]] QHBoxLayout* headingLine() const noexcept { return m_headingLine; }

    /// A hairline from edge to edge of the card, whatever the padding, between two rows.
    void addDivider();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_content;
    QList<QWidget*> m_dividers;  // they keep the place, the card draws the line
    QHBoxLayout* m_headingLine = nullptr;
};

/// A hairline.
class HairlineDivider : public QWidget {
    Q_OBJECT

public:
    explicit HairlineDivider(Qt::Orientation orientation = Qt::Horizontal, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
