// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

/// A text field of several lines. Tab leaves it.
class TextArea : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit TextArea(const QString& name, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};
