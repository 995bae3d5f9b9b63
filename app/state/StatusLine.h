// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <optional>
#include <string>

class Scheduler;

/// The two lines of feedback: a message that goes by itself, and a failure that stays until it is dismissed.
class StatusLine : public QObject {
    Q_OBJECT

public:
    explicit StatusLine(Scheduler& scheduler, QObject* parent = nullptr) : QObject(parent), m_scheduler(scheduler) {}

    [[nodiscard]] const std::optional<std::string>& message() const noexcept { return m_message; }
    /// Sets it without a timer to clear it.
    void setMessage(std::optional<std::string> text);
    /// Shows a confirmation for two seconds.
    void flash(std::string text);

    [[nodiscard]] const std::optional<std::string>& error() const noexcept { return m_error; }
    void setError(std::optional<std::string> text);
    /// Whether the error is none, but something worth knowing.
    [[nodiscard]] bool isNotice() const noexcept { return m_isNotice; }
    /// Shows in the place of the error what is worth knowing and no failure.
    void setNotice(std::string text);
    /// The same for what may become untrue.
    void setPassingNotice(std::string text);
    /// Takes the last passing notice back, where it still shows.
    void takeBackNotice();

signals:
    void messageChanged();
    void errorChanged();

private:
    void scheduleStatusClear();
    void show(std::optional<std::string> text, bool isNotice);

    Scheduler& m_scheduler;
    std::optional<std::string> m_message;
    std::optional<std::string> m_error;
    bool m_isNotice = false;  // m_error
    std::optional<std::string> m_passingNotice;
};
