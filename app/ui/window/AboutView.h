// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The sheet that says what the program is, in which version and under which licences.
class AboutView : public QWidget {
    Q_OBJECT

public:
    explicit AboutView(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};
