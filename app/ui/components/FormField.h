// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class Paragraph;

/// A labelled field of a form: the label, the content, and beneath it a hint in words.
class FormField : public QWidget {
    Q_OBJECT

public:
    /// Takes `content`. The label is its buddy, and with it its accessible name where it has none.
    FormField(const QString& label, QWidget* content, QWidget* parent = nullptr);

    /// The explaining line; an empty one takes no room.
    void setHint(const QString& hint);

private:
    Paragraph* m_hint;
};
