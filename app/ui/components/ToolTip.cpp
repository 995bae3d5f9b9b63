// SPDX-License-Identifier: MIT
#include "app/ui/components/ToolTip.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Bidi.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/KeyNames.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QTextLayout>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr int sidePadding = 8;
constexpr int padding = 5;
constexpr int widestLine = 360;
constexpr int gap = 4;  // between the panel and what it is about
constexpr std::chrono::milliseconds shortest = 10s;
constexpr std::chrono::milliseconds perLetter = 40ms;  // more, for the time that reading takes

/// What the present panel is about.
struct Present {
    QPointer<ToolTip> panel;
    QPointer<QWidget> owner;
    QString text;
    QRect area;
};

Present& present() {
    static Present present;
    return present;
}

/// Answers the events of all widgets.
class Hints final : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ToolTip)
            return explain(watched);
        if (present().panel)
            follow(*watched, *event);
        return false;
    }

private:
    static bool explain(QObject* watched) {
        auto* const widget = qobject_cast<QWidget*>(watched);
        if (widget == nullptr || widget->toolTip().isEmpty())
            return false;
        // Any other tooltip may be a text of the vault's, which is shown as it is.
        const auto* const button = qobject_cast<const IconButton*>(widget);
        ToolTip::show(widget->toolTip(), *widget, widget->rect(), button ? button->keyNames() : QString());
        return true;
    }

    static void follow(const QObject& watched, const QEvent& event) {
        switch (event.type()) {
            case QEvent::Leave:
            case QEvent::Hide:
                if (&watched != present().owner)
                    return;
                break;
            case QEvent::MouseMove:
                if (!watched.isWidgetType() ||
                    present().area.contains(static_cast<const QMouseEvent&>(event).globalPosition().toPoint()))
                    return;
                break;
            case QEvent::KeyPress:
            case QEvent::MouseButtonPress:
            case QEvent::MouseButtonDblClick:
            case QEvent::Wheel:
            case QEvent::WindowDeactivate:
                break;
            default:
                return;
        }
        ToolTip::hideNow();
    }
};

}  // namespace

void ToolTip::install(QApplication& application) {
    application.installEventFilter(new Hints(&application));
}

void ToolTip::show(const QString& text, QWidget& owner, const QRect& part, const QString& keyNames) {
    const QRect area(owner.mapToGlobal(part.topLeft()), part.size());
    if (present().panel && present().text == text && present().area == area)
        return;
    hideNow();
    if (text.isEmpty())
        return;
    auto* const panel = new ToolTip(text, keyNames, owner);
    present() = {.panel = panel, .owner = &owner, .text = text, .area = area};
    panel->placeBeside(area);
    panel->setVisible(true);
}

void ToolTip::hideNow() {
    if (auto* const panel = present().panel.data()) {
        panel->hide();
        panel->deleteLater();
    }
    present() = {};
}

ToolTip::ToolTip(const QString& text, const QString& keyNames, QWidget& owner)
    : QWidget(owner.window(), Qt::ToolTip | Qt::BypassGraphicsProxyWidget),
      m_lines(LongText::beginning(text).split(QLatin1Char('\n'))),
      m_keyNames(keyNames) {
    setAttribute(Qt::WA_TranslucentBackground);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    Accessible::setRole(*this, QAccessible::ToolTip);
    setAccessibleName(keyNames.isEmpty() ? text
                                         : qtText(KeyNames::withoutSigns(text.toStdString(), keyNames.toStdString())));
    QSizeF size;
    for (qsizetype line = 0; line < m_lines.size(); ++line) {
        QTextLayout layout;
        const auto part = layOut(layout, line);
        size = {std::max(size.width(), part.width()), size.height() + part.height()};
    }
    resize(static_cast<int>(std::ceil(size.width())) + 2 * sidePadding, static_cast<int>(size.height()) + 2 * padding);
    startTimer(shortest + perLetter * std::min(text.size(), LongText::mostLetters));
}

/// Lays out one line of the text, broken where it is wider than the panel may be; its size.
QSizeF ToolTip::layOut(QTextLayout& layout, qsizetype line) const {
    const QString& text = m_lines[line];
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setWrapMode(LongText::wrapMode(text));
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    const QString shown = Bidi::withQuotesIsolated(text);
    layout.setText(shown);
    if (!m_keyNames.isEmpty() && line + 1 == m_lines.size()) {
        layout.setText(shown + QStringLiteral("  ") + m_keyNames);
        QTextCharFormat soft;
        soft.setForeground(Palette::textSoft);
        layout.setFormats(
            {{static_cast<int>(shown.size()), static_cast<int>(layout.text().size() - shown.size()), soft}});
    }
    layout.setTextOption(option);
    layout.setFont(BrandFont::secondary());
    layout.beginLayout();
    QSizeF size;
    for (auto part = layout.createLine(); part.isValid(); part = layout.createLine()) {
        part.setLineWidth(widestLine);
        part.setPosition(QPointF(0, size.height()));
        size = {std::max(size.width(), part.naturalTextWidth()), size.height() + std::ceil(part.height())};
    }
    layout.endLayout();
    return size;
}

/// Below it, or above where the screen ends; never over it, and inside the window where that has the room.
void ToolTip::placeBeside(const QRect& area) {
    const auto* const screen = QGuiApplication::screenAt(area.center());
    const QRect room = (screen ? screen : parentWidget()->screen())->availableGeometry();
    const QRect window = parentWidget()->frameGeometry() & room;
    const QRect frame = window.width() >= width() + 2 * gap ? window.adjusted(gap, 0, -gap, 0) : room;
    const int left = width() > area.width() ? area.center().x() - width() / 2 : area.left();
    QPoint corner(std::max(frame.left(), std::min(left, frame.right() + 1 - width())), area.bottom() + 1 + gap);
    if (corner.y() + height() > room.bottom() + 1)
        corner.setY(area.top() - gap - height());
    move(corner);
}

void ToolTip::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::small, Palette::elevated, Palette::lineStrong);
    painter.setPen(Palette::text);
    double top = padding;
    for (qsizetype line = 0; line < m_lines.size(); ++line) {
        QTextLayout layout;
        const auto size = layOut(layout, line);
        layout.draw(&painter, QPointF(sidePadding, top));
        top += size.height();
    }
}

void ToolTip::resizeEvent(QResizeEvent*) {
    setMask(Painting::withoutCorners(rect(), Radius::small));
}

void ToolTip::timerEvent(QTimerEvent*) {
    hideNow();
}
