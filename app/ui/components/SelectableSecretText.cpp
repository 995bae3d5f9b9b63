// SPDX-License-Identifier: MIT
#include "app/ui/components/SelectableSecretText.h"

#include "app/state/WipedAtEnd.h"
#include "core/text/Text.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <limits>

SelectableSecretText::SelectableSecretText(const QString& field, QWidget* parent)
    : SecretText(SecureString(), {.fewest = 0, .most = std::numeric_limits<std::size_t>::max()}, field, parent) {
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::IBeamCursor);
}

void SelectableSecretText::setSecret(const SecureString& secret) {
    select(0, 0);
    SecretText::setSecret(secret);
}

void SelectableSecretText::select(int anchor, int end) {
    const auto last = static_cast<int>(grid(width()).cells.size());
    m_anchor = std::clamp(anchor, 0, last);
    m_end = std::clamp(end, 0, last);
    update();
}

void SelectableSecretText::selectAll() {
    select(0, std::numeric_limits<int>::max());
}

void SelectableSecretText::copySelection() {
    if (!hasSelection() || !isRevealed())
        return;
    auto text = secret().value();
    const WipedAtEnd textEnd(text);
    const auto characters = Text::characters(text);
    const auto [from, to] = std::minmax(m_anchor, m_end);
    const auto& first = characters.at(static_cast<std::size_t>(from));
    const auto& last = characters.at(static_cast<std::size_t>(to) - 1);
    emit copyRequested({first.data(), last.data() + last.size()});
}

/// The position between two characters that is nearest to a point.
int SelectableSecretText::positionAt(const QPointF& point) const {
    const auto placed = grid(width());
    int position = 0;
    for (const auto& cell : placed.cells) {
        const QRectF box = placed.box(cell, height());
        if (point.y() < box.top() || (point.y() < box.bottom() && point.x() < box.center().x()))
            break;
        ++position;
    }
    return position;
}

void SelectableSecretText::paintEvent(QPaintEvent* event) {
    if (hasSelection()) {
        QPainter painter(this);
        const auto placed = grid(width());
        const auto [from, to] = std::minmax(m_anchor, m_end);
        for (int i = from; i < to; ++i)
            painter.fillRect(placed.box(placed.cells.at(static_cast<std::size_t>(i)), height()),
                             palette().color(QPalette::Highlight));
    }
    SecretText::paintEvent(event);
}

void SelectableSecretText::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int position = positionAt(event->position());
    select(event->modifiers().testFlag(Qt::ShiftModifier) ? m_anchor : position, position);
}

void SelectableSecretText::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons().testFlag(Qt::LeftButton))
        select(m_anchor, positionAt(event->position()));
}

void SelectableSecretText::mouseDoubleClickEvent(QMouseEvent*) {
    selectAll();
}

bool SelectableSecretText::event(QEvent* event) {
    // While it has the focus, these keys mean its text and no command of a menu.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* const key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return SecretText::event(event);
}

void SelectableSecretText::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::SelectPreviousChar))
        select(m_anchor, m_end - 1);
    else if (event->matches(QKeySequence::SelectNextChar))
        select(m_anchor, m_end + 1);
    else if (event->matches(QKeySequence::SelectStartOfLine))
        select(m_anchor, 0);
    else if (event->matches(QKeySequence::SelectEndOfLine))
        select(m_anchor, std::numeric_limits<int>::max());
    else
        SecretText::keyPressEvent(event);
}

void SelectableSecretText::focusOutEvent(QFocusEvent* event) {
    SecretText::focusOutEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        select(0, 0);
}
