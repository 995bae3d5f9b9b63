// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>

class Paragraph;
class QLayout;
class QVBoxLayout;

/// A friendly empty place: a quiet symbol on a tile, a title, one sentence, and at most one way out.
class EmptyStateView : public QWidget {
    Q_OBJECT

public:
    EmptyStateView(const QString& symbol, const QString& title, const QString& message, QWidget* parent = nullptr);

    /// The way out, under the sentence.
    void setAction(const QString& title, std::function<void()> action);
    /// Something of one's own under the sentence.
    void addBelow(QWidget* widget);

private:
    [[nodiscard]] static QLayout* centred(Paragraph* text);

    QVBoxLayout* m_column;
};
