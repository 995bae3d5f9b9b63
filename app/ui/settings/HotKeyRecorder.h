// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

#include <cstdint>

class GlobalHotKey;
class Preferences;

/// Shows the hot key's combination, in signs and as the keys are labelled, and records another one: pressed, it takes
/// every key press of the program until a combination with a modifier comes, or Escape. The hot key itself is given
/// back meanwhile, or it could not be pressed here. How to give up is said beside it, where its owner has the room.
class HotKeyRecorder : public QAbstractButton {
    Q_OBJECT

public:
    HotKeyRecorder(Preferences& preferences, GlobalHotKey& hotKey, QWidget* parent = nullptr);
    ~HotKeyRecorder() override;

    [[nodiscard]] bool isRecording() const noexcept { return m_capture == Capture::recording; }
    /// Whether a key without modifiers was pressed since the last recording started.
    [[nodiscard]] bool isRejected() const noexcept { return m_isRejected; }

    /// How a recording is given up.
    [[nodiscard]] static QString hint();

    /// Reads anew how the keys are labelled, which the keyboard's layout decides.
    void showKeyNames();

    /// What a screen reader says besides the combination; empty for nothing.
    void setNote(const QString& note);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void recordingChanged(bool isRecording);
    void rejectedChanged(bool isRejected);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    enum class Capture : std::uint8_t {
        none,
        recording,
        untilRelease  // the key that ended the recording is still down, and its repeats are dropped
    };

    void startCapture();
    void stopCapture();
    void endRecording();
    void letGo();
    void handlePress(const QKeyEvent& press);
    void take(std::uint32_t keyCode, std::uint32_t modifiers);
    void setRejected(bool isRejected);
    void showCombination();
    void paintCombination(QPainter& painter) const;
    void paintRecording(QPainter& painter) const;

    Preferences& m_preferences;
    GlobalHotKey& m_hotKey;
    Capture m_capture = Capture::none;
    bool m_isRejected = false;
    QString m_signs;  // of the combination
    QString m_keyNames;
    QString m_note;
};
