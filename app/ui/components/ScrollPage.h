// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <QScrollArea>

class QVBoxLayout;

/// A page that scrolls up and down where it is taller than its room. The bar is in the page's margin, so that
/// nothing moves or narrows when it comes.
class ScrollPage : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollPage(const QMargins& margins, QWidget* parent = nullptr);

    /// Where the page's parts go, one under the other.
    [[nodiscard]] QVBoxLayout* content() const noexcept { return m_content; }

    /// In more room than this, the parts stay as wide and are at the leading edge.
    void setMaximumContentWidth(int width);
    /// Where more room is spare than this, the content is in the page's middle, else at its leading edge.
    void setSpareRoomAtSide(int width);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showMargins();

    QMargins m_margins;
    int m_spareRoomAtSide = QWIDGETSIZE_MAX;
    int m_maximumContentWidth = QWIDGETSIZE_MAX;
    QVBoxLayout* m_content;
};
