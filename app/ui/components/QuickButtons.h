// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QWidget>

class Button;

/// A row of small buttons, each of which chooses a number; the one of the present number is checked.
class QuickButtons : public QWidget {
    Q_OBJECT

public:
    enum class Width { natural, equal /* together as wide as the row */ };

    /// `label` is the buttons' text, with %1 for the number.
    QuickButtons(const QList<int>& numbers, const QString& label, Width width, QWidget* parent = nullptr);

    /// Gives the button of that number another text.
    void nameNumber(int number, const QString& text);

    /// Checks the button of that number and no other; none where there is no such button.
    void showNumber(double number);

signals:
    void chosen(int number);

private:
    struct Choice {
        int number;
        Button* button;
    };

    QList<Choice> m_choices;
    double m_number = 0;
};
