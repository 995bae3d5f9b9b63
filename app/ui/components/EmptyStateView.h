// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <functional>
#include <optional>

class Paragraph;
class QLayout;
class QSpacerItem;
class QVBoxLayout;

/// A friendly empty state: a quiet symbol on a tile, a title, one sentence, and at most one way out.
class EmptyStateView : public QWidget {
    Q_OBJECT

public:
    EmptyStateView(const QString& symbol, const QString& title, const QString& message, QWidget* parent = nullptr);

    /// Is as high up as the empty states of the columns beside it, whatever each of them says. `headroom` is what lies
    /// above it in its own column.
    void standBeside(int headroom);

    /// The way out, under the sentence.
    void setAction(const QString& title, std::function<void()> action);
    /// Something of one's own under the sentence.
    void addBelow(QWidget* widget);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] static QLayout* centred(Paragraph* text);

    QVBoxLayout* m_column;
    QSpacerItem* m_top;
    std::optional<int> m_headroom;  // none where it is alone
};
