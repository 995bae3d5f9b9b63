// SPDX-License-Identifier: MIT
#pragma once

#include <QHBoxLayout>
#include <QVBoxLayout>

/// A widget's layout without margins of its own, for what is already inside some.
[[nodiscard]] inline QVBoxLayout* bareColumn(QWidget* widget, int spacing) {
    auto* const column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

[[nodiscard]] inline QHBoxLayout* bareRow(QWidget* widget, int spacing) {
    auto* const row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    return row;
}
