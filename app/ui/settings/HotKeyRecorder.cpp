// SPDX-License-Identifier: MIT
#include "app/ui/settings/HotKeyRecorder.h"

#include "app/state/GlobalHotKey.h"
#include "app/state/HotKeyFormatter.h"
#include "app/state/Preferences.h"
#include "app/ui/components/KeyNames.h"
#include "app/ui/components/Texts.h"
#include "app/ui/settings/RecordedKey.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"
#include "core/platform/VirtualKey.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int symbolSide = 12;
constexpr int gap = 6;
constexpr int padding = 8;
constexpr double disabledOpacity = 0.4;

QFont combinationFont() {
    return BrandFont::body(13, QFont::DemiBold);
}

QFont recordingFont() {
    return BrandFont::body(12, QFont::Medium);
}

QFont keyNamesFont() {
    return BrandFont::body(12);
}

QString recordingText() {
    return QStringLiteral("Tuş kombinasyonuna bas…");
}

int recordingWidth() {
    return symbolSide + gap + QFontMetrics(recordingFont()).horizontalAdvance(recordingText());
}

}  // namespace

HotKeyRecorder::HotKeyRecorder(Preferences& preferences, GlobalHotKey& hotKey, QWidget* parent)
    : QAbstractButton(parent), m_preferences(preferences), m_hotKey(hotKey) {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &HotKeyRecorder::clicked, this, [this] { isRecording() ? stopCapture() : startCapture(); });
    connect(&preferences, &Preferences::hotKeyCodeChanged, this, &HotKeyRecorder::showCombination);
    connect(&preferences, &Preferences::hotKeyModifiersChanged, this, &HotKeyRecorder::showCombination);
    showCombination();
}

HotKeyRecorder::~HotKeyRecorder() {
    letGo();
}

void HotKeyRecorder::startCapture() {
    setFocus(Qt::OtherFocusReason);
    setRejected(false);
    m_capture = Capture::recording;
    m_hotKey.unregister();
    qApp->installEventFilter(this);
    showCombination();
    emit recordingChanged(true);
}

void HotKeyRecorder::stopCapture() {
    endRecording();
    letGo();
}

/// By a key, which is still down. Held, it would repeat into the window, or press the hot key that it has just become.
void HotKeyRecorder::endRecording() {
    if (!isRecording())
        return;
    m_capture = Capture::untilRelease;
    showCombination();
    emit recordingChanged(false);
}

/// Takes no keys any more, and lets the hot key work again.
void HotKeyRecorder::letGo() {
    if (m_capture == Capture::none)
        return;
    m_capture = Capture::none;
    qApp->removeEventFilter(this);
    m_hotKey.registerGlobalHotKey();
}

bool HotKeyRecorder::eventFilter(QObject*, QEvent* event) {
    const auto type = event->type();
    if (type != QEvent::KeyPress && type != QEvent::KeyRelease && type != QEvent::ShortcutOverride)
        return false;
    const auto& key = static_cast<QKeyEvent&>(*event);
    if (m_capture == Capture::untilRelease && !key.isAutoRepeat() && !RecordedKey::isModifier(key)) {
        letGo();
        return false;
    }
    if (m_capture == Capture::recording && type == QEvent::KeyPress)
        handlePress(key);
    event->accept();  // or the press would go on to a shortcut or a menu
    return type != QEvent::KeyRelease;
}

void HotKeyRecorder::handlePress(const QKeyEvent& press) {
    const auto keyCode = RecordedKey::keyCode(press);
    if (keyCode == VirtualKey::escape || press.key() == Qt::Key_Escape)
        endRecording();
    else if (keyCode && !RecordedKey::isModifier(press))
        take(*keyCode, RecordedKey::modifiers(press));
}

void HotKeyRecorder::take(std::uint32_t keyCode, std::uint32_t modifiers) {
    if (modifiers == 0) {
        setRejected(true);
        return;
    }
    m_preferences.setHotKeyCode(keyCode);
    m_preferences.setHotKeyModifiers(modifiers);
    m_hotKey.unregister();  // the change has registered it, and its keys are still down
    endRecording();
}

void HotKeyRecorder::setRejected(bool isRejected) {
    if (m_isRejected == isRejected)
        return;
    m_isRejected = isRejected;
    emit rejectedChanged(isRejected);
}

void HotKeyRecorder::showCombination() {
    const HotKey hotKey{.keyCode = m_preferences.hotKeyCode(), .modifiers = m_preferences.hotKeyModifiers()};
    m_keyNames = qtText(KeyNames::describe(hotKey, m_hotKey.layout()));
    m_signs = qtText(HotKeyFormatter::describe(hotKey));
    setText(isRecording() ? recordingText() : m_signs);
    setAccessibleName(isRecording() ? recordingText() : m_keyNames);
    setAccessibleDescription(isRecording() ? hint() : m_note);
    updateGeometry();
    update();
}

QString HotKeyRecorder::hint() {
    return QStringLiteral("esc ile vazgeç");
}

void HotKeyRecorder::showKeyNames() {
    showCombination();
}

void HotKeyRecorder::setNote(const QString& note) {
    if (m_note == note)
        return;
    m_note = note;
    showCombination();
}

void HotKeyRecorder::focusOutEvent(QFocusEvent* event) {
    QAbstractButton::focusOutEvent(event);
    stopCapture();
}

void HotKeyRecorder::hideEvent(QHideEvent* event) {
    QAbstractButton::hideEvent(event);
    stopCapture();
}

/// The same at rest and while it records: nothing moves as one begins or ends.
QSize HotKeyRecorder::sizeHint() const {
    const int combinationWidth = QFontMetrics(combinationFont()).horizontalAdvance(m_signs) + Metric::s +
                                 QFontMetrics(keyNamesFont()).horizontalAdvance(m_keyNames);
    return {std::max(recordingWidth(), combinationWidth) + 2 * padding, Metric::controlHeight};
}

void HotKeyRecorder::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    const QColor outline =
        isRecording() ? Palette::accent : (underMouse() || isDown() ? Palette::lineStrong : Palette::line);
    Painting::roundedBox(painter, rect(), Radius::control, isDown() ? Palette::surface : Palette::canvas, outline);
    if (isRecording())
        paintRecording(painter);
    else
        paintCombination(painter);
}

/// The signs and, in soft ink beside them, the names.
void HotKeyRecorder::paintCombination(QPainter& painter) const {
    const int signsWidth = QFontMetrics(combinationFont()).horizontalAdvance(text());
    const int namesWidth = QFontMetrics(keyNamesFont()).horizontalAdvance(m_keyNames);
    const int left = (width() - signsWidth - Metric::s - namesWidth) / 2;
    const auto placed = [&](int from, int wide) {
        return QStyle::visualRect(layoutDirection(), rect(), QRect(from, 0, wide, height()));
    };
    constexpr auto flags = Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip;
    painter.setFont(combinationFont());
    painter.setPen(Palette::text);
    painter.drawText(placed(left, signsWidth), flags, text());
    painter.setFont(keyNamesFont());
    painter.setPen(Palette::textSoft);
    painter.drawText(placed(left + signsWidth + Metric::s, namesWidth), flags, m_keyNames);
}

void HotKeyRecorder::paintRecording(QPainter& painter) const {
    const int textWidth = QFontMetrics(recordingFont()).horizontalAdvance(text());
    const int left = (width() - symbolSide - gap - textWidth) / 2;
    const auto placed = [&](int from, int wide) {
        return QStyle::visualRect(layoutDirection(), rect(), QRect(from, 0, wide, height()));
    };
    const QRect symbol = placed(left, symbolSide);
    Symbol::paint(painter, QRectF(symbol.left(), (height() - symbolSide) / 2.0, symbolSide, symbolSide),
                  QStringLiteral("record.circle.fill"), Palette::accent);
    painter.setFont(recordingFont());
    painter.setPen(Palette::text);
    painter.drawText(placed(left + symbolSide + gap, textWidth),
                     Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, text());
}
