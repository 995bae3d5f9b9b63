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

    /// Shows or hides the way to ask for what is missing, by whether there is one.
    enum class Asking : bool { impossible, possible };
    void showGranted(bool isGranted, Asking asking);

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
