// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A horizontal slider of the theme. A click on its track goes there. In a page that scrolls, the wheel is the page's
/// until the slider has the focus: nobody changes a setting by scrolling past it.
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
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] double position() const;
    void goTo(double x);
};
