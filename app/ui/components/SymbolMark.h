// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

/// A symbol beside a text that says the same, for the eye alone.
class SymbolMark : public QWidget {
    Q_OBJECT

public:
    SymbolMark(QString name, const QColor& colour, int side, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    QColor m_colour;
};
