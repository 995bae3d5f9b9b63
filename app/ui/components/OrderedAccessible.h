// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>
#include <QList>

/// A widget whose parts a screen reader meets as the eye does: line by line, along the line of writing, and what a
/// layout of its own holds together. Qt's own has them in the order in which they were made, or last raised.
class OrderedAccessible final : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;

private:
    [[nodiscard]] QList<QWidget*> parts() const;
    [[nodiscard]] QList<QWidget*> orderedParts() const;
};
