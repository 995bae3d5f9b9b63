// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A horizontal slider of the theme. A click on its track goes there.
class Slider : public QSlider {
    Q_OBJECT

public:
    Slider(const QString& name, int minimum, int maximum, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    [[nodiscard]] double position() const;
    void goTo(double x);
};
