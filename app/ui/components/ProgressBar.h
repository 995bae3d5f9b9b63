// SPDX-License-Identifier: MIT
#pragma once

#include <QProgressBar>

/// A thin bar that fills as work advances; its text is the caller's to show. It can have the focus, so that a reader
/// says how far the work is.
class ProgressBar : public QProgressBar {
    Q_OBJECT

public:
    explicit ProgressBar(const QString& name, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
