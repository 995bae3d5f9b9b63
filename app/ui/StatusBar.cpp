// SPDX-License-Identifier: MIT
#include "app/ui/StatusBar.h"

#include "app/state/AppState.h"
#include "app/ui/Symbol.h"
#include "app/ui/Texts.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Painting.h"
#include "core/clipboard/ClipboardService.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int barHeight = 30;
constexpr int symbolSide = 12;

QWidget* symbol(const QString& name, const QColor& colour) {
    auto* const label = new QLabel;
    label->setPixmap(Symbol::icon(name, colour).pixmap(QSize(symbolSide, symbolSide)));
    return label;
}

}  // namespace

StatusBar::StatusBar(AppState& state, ClipboardService& clipboard, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_clipboard(clipboard),
      m_countdownSymbol(symbol(QStringLiteral("doc.on.clipboard"), Palette::warn)),
      m_countdownText(new TextLabel({}, BrandFont::body(11), Palette::text)),
      m_clearClipboard(new Button(tr("Temizle"), Button::Variant::ghost)),
      m_status(new TextLabel({}, BrandFont::body(11), Palette::success)),
      m_errorSymbol(symbol(QStringLiteral("exclamationmark.triangle.fill"), Palette::danger)),
      m_error(new TextLabel({}, BrandFont::body(11), Palette::danger)),
      m_dismissError(new IconButton(QStringLiteral("xmark"), tr("Hatayı kapat"))),
      m_unsaved(new TextLabel(tr("Kaydedilmemiş değişiklik"), BrandFont::body(11), Palette::textMuted)) {
    arrange();
    connectState();
    showAll();
}

void StatusBar::arrange() {
    setFixedHeight(barHeight);
    setAccessibleName(tr("Durum çubuğu"));
    m_clearClipboard->setSmall(true);
    m_dismissError->setSides(20, 8);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Metric::m, Metric::hairline, Metric::m, 0);
    row->setSpacing(Metric::s);
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_countdownSymbol, m_countdownText, m_clearClipboard,
                                                                 m_status, m_errorSymbol, m_error, m_dismissError})
        row->addWidget(widget);
    row->addStretch(1);
    row->addWidget(m_unsaved);
}

void StatusBar::connectState() {
    for (const auto signal : {&AppState::statusMessageChanged, &AppState::lastErrorChanged, &AppState::isDirtyChanged})
        connect(&m_state, signal, this, &StatusBar::showAll);
    connect(m_dismissError, &IconButton::clicked, this, [this] { m_state.setLastError(std::nullopt); });
    connect(m_clearClipboard, &Button::clicked, this, [this] { m_clipboard.clearNow(); });
    m_countdown = m_clipboard.observe([this] { showAll(); });
}

void StatusBar::showAll() {
    const auto seconds = m_clipboard.secondsRemaining();
    m_countdownText->setText(tr("Pano %1 sn sonra temizlenecek").arg(seconds));
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_countdownSymbol, m_countdownText, m_clearClipboard})
        widget->setVisible(seconds > 0);
    m_status->setText(qtText(m_state.statusMessage().value_or("")));
    m_status->setVisible(m_state.statusMessage().has_value());
    m_error->setText(qtText(m_state.lastError().value_or("")));
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_errorSymbol, m_error, m_dismissError})
        widget->setVisible(m_state.lastError().has_value());
    m_unsaved->setVisible(m_state.isDirty());
}

void StatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::hairline(painter, QPointF(0, 0), width(), Qt::Horizontal, Palette::line);
}
