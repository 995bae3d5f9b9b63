// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QList>

/// Items side by side, each in the middle of its line, going on in the next line where one is full.
class FlowLayout : public QLayout {
public:
    explicit FlowLayout(int spacing, QWidget* parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override { m_items.append(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    void setGeometry(const QRect& area) override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSize() const override;

private:
    /// Items side by side.
    struct Line {
        QList<QLayoutItem*> items;
        int width = 0;
        int height = 0;
    };
    [[nodiscard]] QList<Line> lines(int width) const;
    void place(const Line& line, const QRect& area) const;

    QList<QLayoutItem*> m_items;
};
