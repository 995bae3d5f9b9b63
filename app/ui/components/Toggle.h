// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

class QVariantAnimation;

/// A switch with its text before it or behind it. What follows two spaces in the text is an example, in the
/// monospaced face.
class Toggle : public QCheckBox {
    Q_OBJECT

public:
    /// Where the switch is: at the end of the line, or at its beginning with the text right behind it.
    enum class Side : bool { trailing, leading };

    explicit Toggle(const QString& text, QWidget* parent = nullptr);

    void setSide(Side side);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    void paintText(QPainter& painter, const QRect& room) const;
    [[nodiscard]] QString words() const;
    [[nodiscard]] QString example() const;
    void slide(bool isOn);
    [[nodiscard]] QRect switchArea() const;

    QVariantAnimation* m_motion;
    Side m_side = Side::trailing;
    double m_position = 0;  // of the knob, 0 off to 1 on
};
