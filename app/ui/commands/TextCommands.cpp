// SPDX-License-Identifier: MIT
#include "app/ui/commands/TextCommands.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <algorithm>
#include <array>

namespace {

bool isText(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
           qobject_cast<const QTextEdit*>(widget);
}

bool canChange(const QWidget& field) {
    return !field.property("readOnly").toBool();
}

/// Whether the field shows a selected text. What is masked is not to be carried elsewhere.
bool canCopy(const QWidget& field) {
    if (const auto* line = qobject_cast<const QLineEdit*>(&field))
        return line->hasSelectedText() && line->echoMode() == QLineEdit::Normal;
    if (const auto* plain = qobject_cast<const QPlainTextEdit*>(&field))
        return plain->textCursor().hasSelection();
    if (const auto* rich = qobject_cast<const QTextEdit*>(&field))
        return rich->textCursor().hasSelection();
    return false;
}

/// The keys that edit a text wherever there is one. Qt's fields claim some of them by themselves; a word that is
/// deleted, for one, they leave to whatever takes the key.
bool editsText(const QKeyEvent& key) {
    static constexpr std::array meanings{QKeySequence::Copy,      QKeySequence::Cut,  QKeySequence::Paste,
                                         QKeySequence::SelectAll, QKeySequence::Undo, QKeySequence::Redo};
    if (std::any_of(meanings.begin(), meanings.end(), [&](auto meaning) { return key.matches(meaning); }))
        return true;
    const auto held = key.modifiers() & ~Qt::KeypadModifier;
    if (held == (Qt::ControlModifier | Qt::ShiftModifier))
        return key.key() == Qt::Key_Z;
    return held == Qt::ControlModifier && (key.key() == Qt::Key_Delete || key.key() == Qt::Key_Backspace ||
                                           key.key() == Qt::Key_Y || key.key() == Qt::Key_C);
}

bool redoes(const QKeyEvent& key) {
    return (key.modifiers() == Qt::ControlModifier && key.key() == Qt::Key_Y) ||
           (key.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && key.key() == Qt::Key_Z);
}

}  // namespace

TextCommands::TextCommands(QWidget& window)
    : QObject(&window),
      m_window(window),
      m_cut(make(QStringLiteral("Kes"), "cut", Qt::CTRL | Qt::Key_X)),
      m_copy(make(QStringLiteral("Kopyala"), "copy", Qt::CTRL | Qt::Key_C)),
      m_paste(make(QStringLiteral("Yapıştır"), "paste", Qt::CTRL | Qt::Key_V)),
      m_selectAll(new QAction(QStringLiteral("Tümünü Seç"), this)) {
    m_selectAll->setShortcut(Qt::CTRL | Qt::Key_A);
    connect(m_selectAll, &QAction::triggered, this, &TextCommands::selectAll);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
    window.installEventFilter(this);
    showEnabled();
}

QAction* TextCommands::make(const QString& text, const char* verb, const QKeySequence& key) {
    auto* const action = new QAction(text, this);
    // The menu shows the key; what has the keyboard answers it, by itself or by a command of that key.
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, verb] {
        if (auto* const current = field())
            QMetaObject::invokeMethod(current, verb);
    });
    return action;
}

void TextCommands::followFocus(QWidget* now) {
    if (!now || qobject_cast<QMenuBar*>(now) || qobject_cast<QMenu*>(now))
        return;  // the window is left, or a menu looks after the keys for a moment
    if (m_field)
        m_field->disconnect(this);
    m_field = isText(now) && now->window() == &m_window ? now : nullptr;
    followSelection();
    showEnabled();
}

/// Also while no menu is open: a screen reader chooses from a closed one.
void TextCommands::followSelection() {
    if (auto* const line = qobject_cast<QLineEdit*>(m_field))
        connect(line, &QLineEdit::selectionChanged, this, &TextCommands::showEnabled);
    else if (auto* const plain = qobject_cast<QPlainTextEdit*>(m_field))
        connect(plain, &QPlainTextEdit::selectionChanged, this, &TextCommands::showEnabled);
    else if (auto* const rich = qobject_cast<QTextEdit*>(m_field))
        connect(rich, &QTextEdit::selectionChanged, this, &TextCommands::showEnabled);
}

/// A screen that goes takes its fields along, but not always the focus.
QWidget* TextCommands::field() const {
    return m_field && m_field->isVisible() && m_field->isEnabled() ? m_field : nullptr;
}

void TextCommands::showEnabled() {
    const auto* const current = field();
    const bool takesText = current && canChange(*current);
    const bool givesText = current && canCopy(*current);
    m_copy->setEnabled(givesText);
    m_cut->setEnabled(takesText && givesText);
    m_paste->setEnabled(takesText);  // asking the clipboard could keep a menu waiting for another program
    m_selectAll->setEnabled(current || m_areRowsInReach);
}

void TextCommands::setRowsInReach(bool areInReach) {
    m_areRowsInReach = areInReach;
    showEnabled();
}

void TextCommands::selectAll() {
    if (auto* const current = field())
        QMetaObject::invokeMethod(current, "selectAll");
    else
        emit allRowsWanted();
}

bool TextCommands::eventFilter(QObject* watched, QEvent* event) {
    const bool isClaim = event->type() == QEvent::ShortcutOverride;
    const bool isPress = event->type() == QEvent::KeyPress;
    auto* const field = isClaim || isPress ? QApplication::focusWidget() : nullptr;
    if (!isText(field))
        return QObject::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (isClaim && editsText(key)) {
        event->accept();
        return true;
    }
    if (isPress && redoes(key))  // Qt's fields know one of the two keys, depending on the desktop
        return QMetaObject::invokeMethod(field, "redo");
    return QObject::eventFilter(watched, event);
}
