// SPDX-License-Identifier: MIT
#include "app/ui/window/DerivationCover.h"

#include "app/state/AppState.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/unlock/DerivationProgress.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QTimer>

namespace {

using namespace std::chrono_literals;

constexpr auto delay = 500ms;  // a shorter wait is none, and what came and went would flicker
constexpr QSize sheetSize(400, 132);

bool isPointerInput(const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
            return true;
        default:
            return false;
    }
}

bool isKeyInput(const QEvent& event) {
    switch (event.type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
            return true;
        default:
            return false;
    }
}

bool isEscape(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

QString titleOf(const std::optional<AppState::DerivationPurpose>& purpose) {
    if (purpose == AppState::DerivationPurpose::locking)
        return QStringLiteral("Kasa kaydedilip kilitleniyor");
    if (purpose == AppState::DerivationPurpose::restoring)
        return QStringLiteral("Saklanan değişiklikler açılıyor");
    return QStringLiteral("Kasa kaydediliyor");
}

}  // namespace

DerivationCover::DerivationCover(AppState& state, QWidget& window)
    : QObject(&window),
      m_state(state),
      m_window(window),
      m_host(new SheetHost(nullptr, &window)),
      m_delay(new QTimer(this)) {
    m_delay->setSingleShot(true);
    m_delay->setInterval(delay);
    connect(m_delay, &QTimer::timeout, this, &DerivationCover::show);
    connect(&m_state, &AppState::derivationChanged, this, &DerivationCover::follow);
}

bool DerivationCover::putsOffClose() {
    const auto purpose = m_state.derivation();
    const bool writes =
        purpose == AppState::DerivationPurpose::saving || purpose == AppState::DerivationPurpose::locking;
    return writes && !std::exchange(m_isCloseWanted, true);
}

void DerivationCover::follow() {
    if (m_state.derivation())
        begin();
    else
        end();
}

void DerivationCover::begin() {
    m_isCloseWanted = false;
    qApp->installEventFilter(this);
    m_delay->start();
}

void DerivationCover::end() {
    qApp->removeEventFilter(this);
    m_delay->stop();
    m_others.end();
    if (std::exchange(m_isShown, false)) {
        m_host->dismiss();
        emit shownChanged(false);
    }
    if (std::exchange(m_isCloseWanted, false) && (m_state.isLocked() || !m_state.isDirty()))
        QMetaObject::invokeMethod(&m_window, &QWidget::close, Qt::QueuedConnection);
}

void DerivationCover::show() {
    m_isShown = true;
    if (QApplication::overrideCursor() != nullptr)
        QApplication::changeOverrideCursor(Qt::ArrowCursor);
    if (!m_state.isLocked())
        showSheet();
    emit shownChanged(true);
}

void DerivationCover::showSheet() {
    const auto title = titleOf(m_state.derivation());
    auto* const progress = new DerivationProgress(m_state);
    auto* const content = new QWidget;
    auto* const column = bareColumn(content, Metric::m);
    column->addWidget(new TextLabel(title, BrandFont::sheetTitle(), Palette::text));
    column->addWidget(progress);
    auto* const card = new SheetCard(content, sheetSize);
    card->setAccessibleName(title);
    card->setFirstField(progress->firstStop());
    m_host->present(card);
    m_others.begin(m_window, *m_host);  // the host has seen by now where the focus was
}

/// What belongs to the window, apart from its menus and from the derivation's own controls.
bool DerivationCover::isUnderCover(const QObject* object) const {
    const auto* const widget = qobject_cast<const QWidget*>(object);
    if (widget == nullptr || widget->window() != &m_window || qobject_cast<const QMenuBar*>(widget) != nullptr)
        return false;
    for (const auto* around = widget; around != nullptr; around = around->parentWidget())
        if (around == m_host || qobject_cast<const DerivationProgress*>(around) != nullptr)
            return false;
    return true;
}

bool DerivationCover::eventFilter(QObject* watched, QEvent* event) {
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (widget == nullptr || widget->window() != &m_window)
        return false;
    if (isEscape(*event)) {
        m_state.giveUpDerivation();
        return true;
    }
    // The release of a button that was pressed before ends what it began, which then does nothing.
    if (event->type() == QEvent::MouseButtonRelease)
        return std::exchange(m_isPressDropped, false);
    if (!(isKeyInput(*event) || isPointerInput(*event)) || !isUnderCover(watched))
        return false;
    m_isPressDropped = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    return true;
}
