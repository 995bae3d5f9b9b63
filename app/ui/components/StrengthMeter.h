// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

class Announcement;
class QVariantAnimation;
class TextLabel;

/// How strong a password is: a bar, a word, its entropy and its length.
class StrengthMeter : public QWidget {
    Q_OBJECT

public:
    explicit StrengthMeter(QWidget* parent = nullptr);

    void showStrengthOf(const QString& password);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVariantAnimation* m_motion;
    TextLabel* m_label;
    TextLabel* m_entropy;
    TextLabel* m_count;
    Announcement* m_spoken;
    QColor m_colour;
    double m_filled = 0;  // 0 to 1
};
