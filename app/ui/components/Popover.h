// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

class QVBoxLayout;

/// A small raised panel beside a control, above all else in its window. Escape and a click elsewhere close it, Tab
/// stays within it, and the focus then goes back to the control. It goes with the control.
class Popover : public QWidget {
    Q_OBJECT

public:
    /// `name` is what a screen reader calls the panel.
    Popover(const QString& name, QWidget* anchor);

    /// The control's frame, which the panel's end is aligned with; else the beginnings of panel and control are
    /// aligned.
    void setFrame(QWidget* frame);

    /// Where the panel's content goes.
    [[nodiscard]] QVBoxLayout* content() const noexcept { return m_content; }

    /// Shows the panel under the control, or where there is no room above it or beside it, with the focus on `first`.
    void open(QWidget* first);
    void close();

signals:
    void closed();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void place();

    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_frame;
    QWidget* m_panel;
    QVBoxLayout* m_content;
};
