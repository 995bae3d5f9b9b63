// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class AppState;
class Button;
class Paragraph;

/// Above the columns, as long as an earlier session's unsaved changes wait to be decided on: when they were kept, and
/// the two ways out.
class RescueBanner : public QWidget {
    Q_OBJECT

public:
    explicit RescueBanner(AppState& state, QWidget* parent = nullptr);

signals:
    /// There is nothing left to decide on, and the focus was here.
    void decided();

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();
    void connectState();
    void showOffer();
    [[nodiscard]] bool hasFocusWithin() const;

    AppState& m_state;
    Paragraph* m_message;
    Paragraph* m_detail;
    Button* m_restore;
    Button* m_delete;
};
