// SPDX-License-Identifier: MIT
#include "app/ui/window/StatusBar.h"

#include "app/state/AppState.h"
#include "app/ui/components/Accessible.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SymbolMark.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int barHeight = 30;
constexpr int symbolSide = 12;
constexpr int dismissSide = 20;
constexpr int dismissSymbol = 10;
constexpr int keptOfStatus = 150;  // a confirmation is short, and a long failure leaves it its room

TextLabel* text(const QColor& colour) {
    return new TextLabel({}, BrandFont::body(11), colour);
}

/// Shows a message, and announces it to a screen reader.
void showMessage(TextLabel& label, Announcement& spoken, const std::optional<std::string>& message) {
    const QString shown = qtText(message.value_or(""));
    label.setVisible(message.has_value());
    if (label.text() != shown)
        label.setText(shown);
    spoken.say(shown);
}

}  // namespace

StatusBar::StatusBar(AppState& state, ClipboardService& clipboard, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_clipboard(clipboard),
      m_countdownSymbol(new SymbolMark(QStringLiteral("doc.on.clipboard"), Palette::warn, symbolSide)),
      m_countdownText(text(Palette::text)),
      m_clearClipboard(new Button(QStringLiteral("Temizle"), Button::Variant::ghost)),
      m_status(text(Palette::success)),
      m_errorSymbol(new SymbolMark(QStringLiteral("exclamationmark.triangle.fill"), Palette::danger, symbolSide)),
      m_noticeSymbol(new SymbolMark(QStringLiteral("info.circle.fill"), Palette::info, symbolSide)),
      m_error(text(Palette::danger)),
      m_dismissError(new IconButton(QStringLiteral("xmark"), QStringLiteral("Hatayı kapat"))),
      m_unsaved(text(Palette::textMuted)),
      m_spokenStatus(new Announcement(this)),
      m_spokenError(new Announcement(this)) {
    arrange();
    connectState();
    showAll();
}

void StatusBar::arrange() {
    setFixedHeight(barHeight);
    Accessible::setRole(*this, QAccessible::StatusBar);
    setAccessibleName(QStringLiteral("Durum çubuğu"));
    m_clearClipboard->setSmall(true);
    m_dismissError->setSides(dismissSide, dismissSymbol);
    m_unsaved->setText(QStringLiteral("Kaydedilmemiş değişiklik"));
    m_countdownText->setTabularFigures(true);
    for (auto* const always : {m_countdownText, m_unsaved})  // messages give way to these
        always->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Metric::m, Metric::hairline, Metric::m, 0);
    row->setSpacing(Metric::s);
    for (QWidget* const widget :
         std::initializer_list<QWidget*>{m_countdownSymbol, m_countdownText, m_clearClipboard, m_status, m_errorSymbol,
                                         m_noticeSymbol, m_error, m_dismissError})
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
    m_countdownText->setText(QStringLiteral("Pano %1 sn sonra temizlenecek").arg(seconds));
    for (QWidget* const widget : std::initializer_list<QWidget*>{m_countdownSymbol, m_countdownText, m_clearClipboard})
        widget->setVisible(seconds > 0);
    showMessage(*m_status, *m_spokenStatus, m_state.statusMessage());
    m_status->setMinimumWidth(std::min(m_status->sizeHint().width(), keptOfStatus));
    showError();
    m_unsaved->setVisible(m_state.isDirty());
}

void StatusBar::showError() {
    const bool isShown = m_state.lastError().has_value();
    const bool isNotice = m_state.isNotice();
    m_error->setColour(isNotice ? Palette::text : Palette::danger);
    showMessage(*m_error, *m_spokenError, m_state.lastError());
    m_errorSymbol->setVisible(isShown && !isNotice);
    m_noticeSymbol->setVisible(isShown && isNotice);
    m_dismissError->setTip(isNotice ? QStringLiteral("Bildirimi kapat") : QStringLiteral("Hatayı kapat"));
    m_dismissError->setVisible(isShown);
}

void StatusBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::hairline(painter, QPointF(0, 0), width(), Qt::Horizontal, Palette::line);
}
