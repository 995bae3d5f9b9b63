// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

/// A horizontal slider of the theme. A click on its track goes there. The wheel is the page's until the user has given
/// the slider the focus: scrolling past it changes no setting. The focus that a window has from the start is
/// not the user's choice.
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
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void sliderChange(SliderChange change) override;

private:
    [[nodiscard]] double position() const;
    [[nodiscard]] QRectF knob() const;
    void showFocusAtKnob();
    void goTo(double x);

    bool m_isChosen = false;  // the focus came by the user's own hand
};
