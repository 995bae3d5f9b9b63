// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QBoxLayout;

/// Parts of a form side by side where there is room, and one under the other where there is not.
class AdaptiveRow : public QWidget {
    Q_OBJECT

public:
    /// `narrowestRow` is the width, in points, below which the parts are stacked.
    explicit AdaptiveRow(int narrowestRow, QWidget* parent = nullptr);

    /// Takes a part. Parts with a stretch share the width of a row.
    void add(QWidget* part, int stretch = 1);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QBoxLayout* m_parts;
    int m_narrowestRow;
};
