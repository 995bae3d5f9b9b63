// SPDX-License-Identifier: MIT
#pragma once

#include <QDate>
#include <QList>
#include <QWidget>

class TextLabel;

/// A month of days to choose from. The arrow keys walk by days and weeks, the page keys by months.
class Calendar : public QWidget {
    Q_OBJECT

public:
    /// Opens at the month of `chosen`, which is marked.
    explicit Calendar(QDate chosen, QWidget* parent = nullptr);

    /// The control of the chosen day, which a popover gives the focus to.
    [[nodiscard]] QWidget* chosenDay() const;

signals:
    void dayChosen(QDate day);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Day;

    void arrange();
    [[nodiscard]] QWidget* makeHeader();
    void showMonth(QDate firstOfMonth);
    void walkTo(QDate day);
    [[nodiscard]] Day* cellOf(QDate day) const;

    QDate m_chosen;
    QDate m_month;  // its first day
    TextLabel* m_title;
    QList<Day*> m_days;  // six weeks
};
