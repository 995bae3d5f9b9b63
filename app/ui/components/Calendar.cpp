// SPDX-License-Identifier: MIT
#include "app/ui/components/Calendar.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLocale>
#include <QPainter>

namespace {

constexpr int cellSide = 30;
constexpr int daysInWeek = 7;
constexpr int shownDays = 6 * daysInWeek;

/// The interface's language, whatever the desktop's is.
QLocale turkish() {
    return {QLocale::Turkish, QLocale::Turkey};
}

}  // namespace

class Calendar::Day final : public QAbstractButton {
public:
    explicit Day(QWidget* parent) : QAbstractButton(parent) {
        setFixedSize(cellSide, cellSide);
        setFont(BrandFont::secondary());
        setAttribute(Qt::WA_Hover);
    }

    void show(QDate day, bool isOfMonth, bool isChosen) {
        m_day = day;
        m_isOfMonth = isOfMonth;
        m_isChosen = isChosen;
        setText(QString::number(day.day()));
        setAccessibleName(turkish().toString(day, QStringLiteral("d MMMM yyyy dddd")));
        setAccessibleDescription(isChosen ? QStringLiteral("Seçili") : QString());
        update();
    }
    [[nodiscard]] QDate day() const noexcept { return m_day; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const bool isToday = m_day == QDate::currentDate();
        const QColor hovered = isDown() ? Palette::line : (underMouse() ? Palette::hover : QColor());
        Painting::roundedBox(painter, rect(), Radius::control, m_isChosen ? Palette::accent : hovered,
                             isToday && !m_isChosen ? Palette::lineStrong : QColor());
        painter.setFont(m_isChosen || isToday ? BrandFont::body(12, QFont::DemiBold) : font());
        painter.setPen(m_isChosen ? Palette::canvas
                                  : (m_isOfMonth ? Palette::text : Palette::withOpacity(Palette::textSoft, 0.55)));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }
    void keyPressEvent(QKeyEvent* event) override {
        const bool isWalk = (event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down);
        if (isWalk)
            event->ignore();  // the calendar's, which knows the months
        else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
            click();
        else
            QAbstractButton::keyPressEvent(event);
    }

private:
    QDate m_day;
    bool m_isOfMonth = true;
    bool m_isChosen = false;
};

Calendar::Calendar(QDate chosen, QWidget* parent)
    : QWidget(parent), m_chosen(chosen), m_title(new TextLabel({}, BrandFont::rowTitle(), Palette::text, this)) {
    arrange();
    showMonth({chosen.year(), chosen.month(), 1});
}

void Calendar::arrange() {
    auto* const cells = new QGridLayout;
    cells->setSpacing(2);
    for (int column = 0; column < daysInWeek; ++column) {
        const int weekday = (turkish().firstDayOfWeek() - 1 + column) % daysInWeek + 1;
        auto* const name = new TextLabel(turkish().standaloneDayName(weekday, QLocale::ShortFormat), BrandFont::label(),
                                         Palette::textSoft);
        name->setAlignment(Qt::AlignCenter);
        cells->addWidget(name, 0, column);
    }
    for (int place = 0; place < shownDays; ++place) {
        auto* const day = new Day(this);
        m_days.append(day);
        cells->addWidget(day, 1 + place / daysInWeek, place % daysInWeek);
        connect(day, &QAbstractButton::clicked, this, [this, day] { emit dayChosen(day->day()); });
    }
    auto* const column = bareColumn(this, Metric::s);
    column->addWidget(makeHeader());
    column->addLayout(cells);
}

QWidget* Calendar::makeHeader() {
    auto* const former = new IconButton(QStringLiteral("chevron.left"), QStringLiteral("Önceki ay"));
    auto* const next = new IconButton(QStringLiteral("chevron.right"), QStringLiteral("Sonraki ay"));
    connect(former, &IconButton::clicked, this, [this] { showMonth(m_month.addMonths(-1)); });
    connect(next, &IconButton::clicked, this, [this] { showMonth(m_month.addMonths(1)); });
    auto* const header = new QWidget;
    auto* const line = new QHBoxLayout(header);
    line->setContentsMargins(Metric::s, 0, 0, 0);
    line->setSpacing(0);
    line->addWidget(m_title, 1);
    for (auto* const button : {former, next}) {
        button->setSides(Metric::controlHeightSmall, Metric::m);
        line->addWidget(button);
    }
    return header;
}

void Calendar::showMonth(QDate firstOfMonth) {
    if (!firstOfMonth.isValid())
        return;
    m_month = firstOfMonth;
    m_title->setText(turkish().toString(m_month, QStringLiteral("MMMM yyyy")));
    const int lead = (m_month.dayOfWeek() - turkish().firstDayOfWeek() + daysInWeek) % daysInWeek;
    for (int place = 0; place < shownDays; ++place) {
        const auto day = m_month.addDays(place - lead);
        const bool isOfMonth = day.month() == m_month.month();
        m_days[place]->show(day, isOfMonth, day == m_chosen);
        // Tab stops at one day: the chosen one, or the month's first.
        const bool isStop = cellOf(m_chosen) == m_days[place];
        m_days[place]->setFocusPolicy(isStop ? Qt::StrongFocus : Qt::ClickFocus);
    }
    if (!cellOf(m_chosen))
        m_days[lead]->setFocusPolicy(Qt::StrongFocus);
}

Calendar::Day* Calendar::cellOf(QDate day) const {
    for (auto* const cell : m_days)
        if (cell->day() == day)
            return cell;
    return nullptr;
}

QWidget* Calendar::chosenDay() const {
    return cellOf(m_chosen);
}

void Calendar::walkTo(QDate day) {
    if (!day.isValid())
        return;
    if (day.month() != m_month.month() || day.year() != m_month.year())
        showMonth({day.year(), day.month(), 1});
    if (auto* const cell = cellOf(day))
        cell->setFocus(Qt::OtherFocusReason);
}

void Calendar::keyPressEvent(QKeyEvent* event) {
    const auto* const day = dynamic_cast<Day*>(focusWidget());
    if (day == nullptr)
        return QWidget::keyPressEvent(event);
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (event->key()) {
        case Qt::Key_Left:
            return walkTo(day->day().addDays(-forward));
        case Qt::Key_Right:
            return walkTo(day->day().addDays(forward));
        case Qt::Key_Up:
            return walkTo(day->day().addDays(-daysInWeek));
        case Qt::Key_Down:
            return walkTo(day->day().addDays(daysInWeek));
        case Qt::Key_PageUp:
            return walkTo(day->day().addMonths(-1));
        case Qt::Key_PageDown:
            return walkTo(day->day().addMonths(1));
        default:
            return QWidget::keyPressEvent(event);
    }
}
