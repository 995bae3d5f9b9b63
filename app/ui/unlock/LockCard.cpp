// SPDX-License-Identifier: MIT
#include "app/ui/unlock/LockCard.h"

#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {

constexpr int sideMargin = 40;
constexpr int topMargin = 30;
constexpr int bottomMargin = 22;

/// The card's ground. Its least height is the one at its own width, not that of its paragraphs at none.
class CardGround final : public QWidget {
public:
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {0, layout()->totalMinimumHeightForWidth(LockCard::cardWidth)};
    }
};

}  // namespace

LockCard::LockCard(QWidget* parent) : QScrollArea(parent), m_card(new CardGround), m_column(new QVBoxLayout(m_card)) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    m_column->setContentsMargins(sideMargin, topMargin, sideMargin, bottomMargin);
    m_column->setSpacing(0);
    setWidget(m_card);
    m_card->installEventFilter(this);
    verticalScrollBar()->installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, &LockCard::revealFocus);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &LockCard::revealFocus);
}

// The controls are destroyed after this and give the focus away as they are: there is nothing left to follow it.
LockCard::~LockCard() {
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(verticalScrollBar(), nullptr, this, nullptr);
}

int LockCard::cardHeight() const {
    return m_column->totalHeightForWidth(cardWidth - barWidth());
}

/// What the scroll bar takes of the card's width, while it shows.
int LockCard::barWidth() const {
    return verticalScrollBar()->isVisibleTo(this) ? verticalScrollBar()->sizeHint().width() : 0;
}

/// Nothing moves aside for the scroll bar: it is in the card's margin.
void LockCard::makeRoomForBar() {
    m_column->setContentsMargins(sideMargin, topMargin, sideMargin - barWidth(), bottomMargin);
}

void LockCard::revealFocus() {
    auto* const focus = QApplication::focusWidget();
    if (focus == nullptr || !m_card->isAncestorOf(focus))
        return;
    m_column->activate();
    ensureWidgetVisible(focus, 0, Metric::xl);
}

bool LockCard::eventFilter(QObject* watched, QEvent* event) {
    const bool isLaidOut = QScrollArea::eventFilter(watched, event);
    const auto type = event->type();
    if (watched == verticalScrollBar() && (type == QEvent::Show || type == QEvent::Hide))
        makeRoomForBar();
    if (watched == m_card && type == QEvent::LayoutRequest)
        emit cardHeightChanged(cardHeight());
    return isLaidOut;
}
