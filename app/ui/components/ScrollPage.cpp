// SPDX-License-Identifier: MIT
#include "app/ui/components/ScrollPage.h"

#include "app/ui/theme/Theme.h"

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/// Where some part wraps, the height follows from the width; what a layout takes for the least height is then that of
/// the narrowest page.
class Page final : public QWidget {
public:
    [[nodiscard]] QSize minimumSizeHint() const override {
        const QSize least = QWidget::minimumSizeHint();
        return {least.width(), layout()->hasHeightForWidth() ? 0 : least.height()};
    }
};

}  // namespace

ScrollPage::ScrollPage(const QMargins& margins, QWidget* parent) : QScrollArea(parent), m_margins(margins) {
    auto* const page = new Page;
    m_content = new QVBoxLayout(page);
    m_content->setSpacing(Metric::m);
    setWidget(page);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    verticalScrollBar()->installEventFilter(this);
    showMargins();
}

void ScrollPage::setMaximumContentWidth(int width) {
    m_maximumContentWidth = width;
    showMargins();
}

void ScrollPage::setSpareRoomAtSide(int width) {
    m_spareRoomAtSide = width;
    showMargins();
}

void ScrollPage::showMargins() {
    auto margins = m_margins;
    const int spare = width() - margins.left() - margins.right() - m_maximumContentWidth;
    const int lead = spare > m_spareRoomAtSide ? spare / 2 : 0;
    const int bar = verticalScrollBar()->isVisibleTo(this) ? verticalScrollBar()->sizeHint().width() : 0;
    if (layoutDirection() == Qt::RightToLeft)
        margins += QMargins(std::max(-margins.left(), std::max(0, spare) - lead - bar), 0, lead, 0);
    else
        margins += QMargins(lead, 0, std::max(-margins.right(), std::max(0, spare) - lead - bar), 0);
    m_content->setContentsMargins(margins);
}

void ScrollPage::resizeEvent(QResizeEvent* event) {
    showMargins();
    QScrollArea::resizeEvent(event);
}

bool ScrollPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == verticalScrollBar() && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        showMargins();
    return QScrollArea::eventFilter(watched, event);
}
