// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <vector>

/// A small label, a value under it, and what can be done with it at its end. Where that leaves the value too little
/// room, the value takes the whole width under both.
class FieldRow : public QWidget {
    Q_OBJECT

public:
    /// Takes the value, any widget whose height follows from its width.
    FieldRow(const QString& label, QWidget* value, QWidget* parent = nullptr);
    /// A value of text, on as many lines as it takes; a dash where it is empty.
    FieldRow(const QString& label, const QString& value, QWidget* parent = nullptr);

    /// Points between the label and the value, for one that is no text.
    void setLabelGap(int gap);

    /// A control at the row's end, after those that are there.
    void addAction(QWidget* control);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// Where everything is in a width, from left to right.
    struct Plan {
        QRect label;
        QRect value;
        std::vector<QRect> actions;
        int height;
    };
    [[nodiscard]] Plan plan(int width) const;
    [[nodiscard]] int actionsWidth() const;
    void place();

    int m_labelGap;
    QWidget* m_label;
    QWidget* m_value;
    std::vector<QWidget*> m_actions;
};
