// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <cstdint>

class Paragraph;

/// A failure, or what else is worth knowing, in words until it is dismissed.
class ErrorBanner : public QWidget {
    Q_OBJECT

public:
    enum class Kind : std::uint8_t { failure, notice };

    explicit ErrorBanner(QWidget* parent = nullptr);

    void setMessage(const QString& message, Kind kind = Kind::failure);

signals:
    void dismissed();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Paragraph* m_message;
    Kind m_kind = Kind::failure;
};
