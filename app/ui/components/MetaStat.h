// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class TextLabel;

/// A small label with a value under it, such as a time. Equally wide ones form columns.
class MetaStat : public QWidget {
    Q_OBJECT

public:
    MetaStat(const QString& label, const QString& value, QWidget* parent = nullptr);

    void setValue(const QString& value);

private:
    TextLabel* m_value;
};
