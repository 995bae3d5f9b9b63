// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

class QVariantAnimation;

/// A switch with its text before it.
class Toggle : public QCheckBox {
    Q_OBJECT

public:
    explicit Toggle(const QString& text, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    void slide(bool isOn);

    QVariantAnimation* m_motion;
    double m_position = 0;  // of the knob, 0 off to 1 on
};
