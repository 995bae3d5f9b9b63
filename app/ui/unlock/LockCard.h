// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>

class QVBoxLayout;

/// A card of fixed width that scrolls on a screen that is lower than itself, with what has the focus in view.
class LockCard : public QScrollArea {
    Q_OBJECT

public:
    explicit LockCard(QWidget* parent = nullptr);
    ~LockCard() override;

    /// The card's height at its fixed width, as it is now.
    [[nodiscard]] int cardHeight() const;

    static constexpr int cardWidth = 480;

signals:
    void cardHeightChanged(int height);

protected:
    /// Where the card's content goes.
    [[nodiscard]] QVBoxLayout* column() const noexcept { return m_column; }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] int barWidth() const;
    void makeRoomForBar();
    void revealFocus();

    QWidget* m_card;
    QVBoxLayout* m_column;
};
