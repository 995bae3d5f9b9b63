// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

/// A column's list: rows of one height that a delegate paints, with the theme's margins and without a frame.
class RowListView : public QListView {
    Q_OBJECT

public:
    explicit RowListView(const QString& name, QWidget* parent = nullptr);
};
