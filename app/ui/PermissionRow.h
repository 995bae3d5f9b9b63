// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class Button;
class Paragraph;
class TextLabel;

/// Whether typing into other applications is allowed, and where it is not, the way to ask for it.
class PermissionRow : public QWidget {
    Q_OBJECT

public:
    explicit PermissionRow(QWidget* parent = nullptr);

    void showGranted(bool isGranted);

signals:
    void permissionWanted();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QColor colour() const;

    bool m_isGranted = false;
    TextLabel* m_title;
    Paragraph* m_subtitle;
    Button* m_ask;
};
