// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class Paragraph;

/// A failure in words, until it is dismissed.
class ErrorBanner : public QWidget {
    Q_OBJECT

public:
    explicit ErrorBanner(QWidget* parent = nullptr);

    void setMessage(const QString& message);

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Paragraph* m_message;
};
