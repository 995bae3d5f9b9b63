// SPDX-License-Identifier: MIT
#include "app/ui/editor/DateTimeField.h"

#include "app/ui/components/Calendar.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Popover.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr int fieldWidth = 190;
constexpr int buttonSide = 24;
constexpr int symbolSide = 14;

}  // namespace

DateTimeField::DateTimeField(const QString& name, QWidget* parent)
    : QDateTimeEdit(parent),
      m_calendarButton(new IconButton(QStringLiteral("calendar"), QStringLiteral("Takvimi aç"), this)) {
    setAccessibleName(name);
    setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm"));
    setButtonSymbols(QAbstractSpinBox::NoButtons);
    setFrame(false);
    setFont(BrandFont::bodyText());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_calendarButton->setSides(buttonSide, symbolSide);
    connect(m_calendarButton, &IconButton::clicked, this, &DateTimeField::openCalendar);
    connect(this, &DateTimeField::dateTimeChanged, this,
            [this](const QDateTime& time) { m_timestamp.seconds = double(time.toMSecsSinceEpoch()) / 1000; });
}

void DateTimeField::setTimestamp(Timestamp timestamp) {
    const QSignalBlocker showing(this);  // a time that is shown is not a time that was chosen
    m_timestamp = timestamp;
    // Far out of what a calendar shows, the field shows the nearest day until another is chosen.
    const double seconds = std::clamp(timestamp.seconds, double(minimumDateTime().toSecsSinceEpoch()),
                                      double(maximumDateTime().toSecsSinceEpoch()));
    setDateTime(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::floor(seconds * 1000))));
}

void DateTimeField::openCalendar() {
    if (m_popover)
        return;
    m_popover = new Popover(QStringLiteral("Takvim"), m_calendarButton);
    auto* const calendar = new Calendar(date());
    m_popover->content()->addWidget(calendar);
    m_popover->setFrame(this);
    connect(calendar, &Calendar::dayChosen, this, &DateTimeField::chooseDay);
    connect(m_popover, &Popover::closed, this, [this] {
        m_popover->deleteLater();
        m_popover = nullptr;
    });
    m_popover->open(calendar->chosenDay());
}

void DateTimeField::chooseDay(QDate day) {
    setDate(day);
    m_popover->close();
}

QSize DateTimeField::sizeHint() const {
    return {fieldWidth, Metric::controlHeight};
}

void DateTimeField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
}

void DateTimeField::resizeEvent(QResizeEvent* event) {
    QDateTimeEdit::resizeEvent(event);
    const int gap = (height() - buttonSide) / 2;
    const auto placed = [&](const QRect& area) { return QStyle::visualRect(layoutDirection(), rect(), area); };
    m_calendarButton->setGeometry(placed({width() - buttonSide - gap, gap, buttonSide, buttonSide}));
    lineEdit()->setGeometry(placed({Metric::s, 0, width() - buttonSide - 2 * gap - Metric::s, height()}));
}

bool DateTimeField::focusNextPrevChild(bool next) {
    return QWidget::focusNextPrevChild(next);  // the arrow keys walk from day to month; Tab goes on
}

void DateTimeField::wheelEvent(QWheelEvent* event) {
    event->ignore();  // scrolls the form; a date must not change by the way
}
