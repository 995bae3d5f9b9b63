// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>

#include <cstdint>

class Popover;

/// The button that shows an icon and opens the choice of all others beneath it.
class IconPicker : public QAbstractButton {
    Q_OBJECT

public:
    explicit IconPicker(std::int64_t iconID, QWidget* parent = nullptr);

    [[nodiscard]] std::int64_t iconID() const noexcept { return m_iconID; }
    void setIconID(std::int64_t iconID);

    /// Whether the choice is open.
    [[nodiscard]] bool isExpanded() const noexcept { return m_popover != nullptr; }
    void expand();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QWidget* makeGrid(Popover& popover);

    std::int64_t m_iconID;
    Popover* m_popover = nullptr;
};
