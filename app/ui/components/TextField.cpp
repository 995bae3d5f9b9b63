// SPDX-License-Identifier: MIT
#include "app/ui/components/TextField.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Painting.h"

#include <QKeyEvent>
#include <QPainter>

#include <limits>

namespace {

constexpr int largeHeight = 38;

}  // namespace

TextField::TextField(const QString& name, QWidget* parent) : QLineEdit(parent) {
    setAccessibleName(name);
    setFrame(false);
    setMaxLength(std::numeric_limits<int>::max());  // Qt's own limit would cut a long text of a vault off
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::transparent);
    colours.setColor(QPalette::Text, Palette::text);
    colours.setColor(QPalette::PlaceholderText, Palette::textMuted);
    setPalette(colours);
    showFont();
    showRoom();
}

void TextField::setSize(Size size) {
    m_size = size;
    showFont();
    showRoom();
}

void TextField::setMono(bool isMono) {
    m_isMono = isMono;
    showFont();
}

void TextField::setTrailingRoom(int points) {
    m_trailingRoom = points;
    showRoom();
}

void TextField::setLeadingRoom(int points) {
    m_leadingRoom = points;
    showRoom();
}

void TextField::showFont() {
    const int size = m_size == Size::large ? 14 : 13;
    setFont(m_isMono ? BrandFont::mono(size) : BrandFont::body(size));
}

void TextField::showRoom() {
    const int padding = m_size == Size::large ? Metric::m : Metric::s;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int leading = padding + m_leadingRoom;
    const int trailing = padding + m_trailingRoom;
    setTextMargins(isMirrored ? trailing : leading, 0, isMirrored ? leading : trailing, 0);
    updateGeometry();
}

QSize TextField::sizeHint() const {
    return {200, m_size == Size::large ? largeHeight : Metric::controlHeight};
}

QSize TextField::minimumSizeHint() const {
    return {60, sizeHint().height()};
}

bool TextField::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_E && key->modifiers() == Qt::ControlModifier) {
            event->ignore();
            return false;  // on to the window, which claims it for no field
        }
    }
    return QLineEdit::event(event);
}

void TextField::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(0.4);
    Painting::roundedBox(painter, rect(), Radius::control, Palette::canvas,
                         hasFocus() ? Palette::accent : Palette::line);
    painter.end();
    QLineEdit::paintEvent(event);
    if (hasFocus() && !isReadOnly() && !hasSelectedText()) {
        painter.begin(this);
        // Qt's rectangle has five points more to the left of the cursor and four to the right.
        Painting::tintCaret(painter, QRectF(cursorRect()).adjusted(4, 0, -3, 0));
    }
}
