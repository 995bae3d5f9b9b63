// SPDX-License-Identifier: MIT
#pragma once

#include <QMargins>
#include <QScrollArea>

class QVBoxLayout;

/// A page that scrolls up and down where it is taller than its room. The bar stands in the page's margin, so that
/// nothing moves or narrows when it comes.
class ScrollPage : public QScrollArea {
    Q_OBJECT

public:
    explicit ScrollPage(const QMargins& margins, QWidget* parent = nullptr);

    /// Where the page's parts go, one under the other.
    [[nodiscard]] QVBoxLayout* content() const noexcept { return m_content; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showMargins();

    QMargins m_margins;
    QVBoxLayout* m_content;
};
