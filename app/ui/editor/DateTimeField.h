// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/KdbxDatabase.h"

#include <QDateTimeEdit>

class IconButton;
class Popover;

/// A compact field for a date and a time of day, local, with a calendar at its end.
/// A time that is not changed comes back as it was given, with what the field does not show of it.
class DateTimeField : public QDateTimeEdit {
    Q_OBJECT

public:
    explicit DateTimeField(const QString& name, QWidget* parent = nullptr);

    [[nodiscard]] Timestamp timestamp() const noexcept { return m_timestamp; }
    void setTimestamp(Timestamp timestamp);

    void openCalendar();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void chooseDay(QDate day);

    IconButton* m_calendarButton;
    Popover* m_popover = nullptr;
    Timestamp m_timestamp;
};
