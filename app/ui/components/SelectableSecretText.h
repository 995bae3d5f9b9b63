// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/SecretText.h"

#include <string_view>

/// A secret that can be selected while it is revealed, by mouse and by keys, and copied in part. What is selected never
/// reaches the primary selection, where a text control would put it at once for any window to paste.
class SelectableSecretText : public SecretText {
    Q_OBJECT

public:
    /// Hidden, it shows a dot for each character. `field` is the accessible description.
    explicit SelectableSecretText(const QString& field, QWidget* parent = nullptr);

    /// Shows another secret, of which nothing is selected.
    void setSecret(const SecureString& secret);

    [[nodiscard]] bool hasSelection() const noexcept { return m_anchor != m_end; }

signals:
    /// The user asks for a copy of the selected part, which is gone when this returns. Dots are not copied.
    void copyRequested(std::string_view part);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int positionAt(const QPointF& point) const;
    void select(int anchor, int end);
    void selectAll();
    void copySelection();

    int m_anchor = 0;  // where the selection starts, in characters
    int m_end = 0;     // and where it ends, on either side
};
