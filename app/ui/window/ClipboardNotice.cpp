// SPDX-License-Identifier: MIT
#include "app/ui/window/ClipboardNotice.h"

#include "app/state/AppState.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SymbolMark.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int panelHeight = 40;
constexpr int symbolSide = 14;

}  // namespace

ClipboardNotice::ClipboardNotice(AppState& state, ClipboardService& clipboard, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_clipboard(clipboard),
      m_text(new TextLabel({}, BrandFont::secondary(), Palette::text)),
      m_spoken(new Announcement(this)) {
    hide();
    auto* const clear = new Button(QStringLiteral("Temizle"), Button::Variant::ghost);
    clear->setSmall(true);
    m_text->setTabularFigures(true);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Metric::m, 0, Metric::s, 0);
    row->setSpacing(Metric::s);
    row->addWidget(new SymbolMark(QStringLiteral("doc.on.clipboard"), Palette::warn, symbolSide));
    row->addWidget(m_text);
    row->addWidget(clear);
    connect(clear, &Button::clicked, this, [this] { m_clipboard.clearNow(); });
    connect(&state, &AppState::isLockedChanged, this, &ClipboardNotice::showCountdown);
    m_countdown = clipboard.observe([this] { showCountdown(); });
    parent->installEventFilter(this);
    showCountdown();
}

void ClipboardNotice::showCountdown() {
    const auto seconds = m_clipboard.secondsRemaining();
    const bool isNeeded = m_state.isLocked() && seconds > 0;
    m_text->setText(QStringLiteral("Kopyalandı. Pano %1 sn sonra temizlenecek").arg(seconds));
    place();
    setVisible(isNeeded);
    if (isNeeded)
        raise();
    m_spoken->say(isNeeded ? QStringLiteral("Kopyalandı") : QString());
}

/// Over the foot of the card, where nothing is to be done.
void ClipboardNotice::place() {
    const int width = std::min(sizeHint().width(), parentWidget()->width() - 2 * Metric::s);
    setGeometry((parentWidget()->width() - width) / 2, parentWidget()->height() - panelHeight - Metric::m, width,
                panelHeight);
}

void ClipboardNotice::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::card, Palette::elevated, Palette::lineStrong);
}

bool ClipboardNotice::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}
