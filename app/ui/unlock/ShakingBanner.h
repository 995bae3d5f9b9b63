// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/ErrorBanner.h"

class QVariantAnimation;

/// The lock card's banner, of a refused unlock above all: then it shakes its head: two full swings, and ends at rest.
class ShakingBanner : public QWidget {
    Q_OBJECT

public:
    explicit ShakingBanner(QWidget* parent = nullptr);

    void setMessage(const QString& message, ErrorBanner::Kind kind = ErrorBanner::Kind::failure);
    void shake();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

signals:
    void dismissed();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void place(double phase);

    ErrorBanner* m_banner;
    QVariantAnimation* m_motion;
};
