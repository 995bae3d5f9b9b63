// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QHBoxLayout;
class TextLabel;

/// The head of a column: a title, a line beneath it, and what can be done there at its end.
class SectionHeader : public QWidget {
    Q_OBJECT

public:
    static constexpr int sectionHeight = 56;

    explicit SectionHeader(QWidget* parent = nullptr);

    void setTitle(const QString& title);
    void setSubtitle(const QString& subtitle);
    void addAction(QWidget* control);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    TextLabel* m_title;
    TextLabel* m_subtitle;
    QHBoxLayout* m_line;
};
