// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QApplication;
class QTextLayout;

/// What explains a control, or shows a cut text in full: a text as it is, never taken for markup, on a rounded panel
/// below what it is about. It goes when the pointer does, and with the next key or click.
class ToolTip : public QWidget {
    Q_OBJECT

public:
    /// Shows the tooltips of all widgets this way, in place of Qt's.
    static void install(QApplication& application);

    /// Shows a text for an area of a widget that the pointer is in. An empty one takes the present one away. The names
    /// of the keys that it writes in signs are behind it in soft ink, and are what screen readers hear in place of
    /// the signs.
    static void show(const QString& text, QWidget& owner, const QRect& area, const QString& keyNames = {});
    static void hideNow();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    ToolTip(const QString& text, const QString& keyNames, QWidget& owner);
    [[nodiscard]] QSizeF layOut(QTextLayout& layout, qsizetype line) const;
    void placeBeside(const QRect& area);

    QStringList m_lines;
    QString m_keyNames;
};
