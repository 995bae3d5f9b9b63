// SPDX-License-Identifier: MIT
#include "app/ui/components/Accessible.h"

#include "app/ui/components/Divider.h"
#include "app/ui/components/OrderedAccessible.h"
#include "app/ui/components/TextField.h"

#include <QAbstractButton>
#include <QAccessibleObject>
#include <QAccessibleWidget>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>

#include <algorithm>
#include <array>

namespace {

constexpr auto roleProperty = "accessibleRole";

/// The root of all. It has the menu that is open from a row, a button or a field among its children, so that a
/// walk through the tree comes upon it; Qt reports that such a menu has its parent here, and then leaves it out.
class ApplicationAccessible final : public QAccessibleApplication {
public:
    [[nodiscard]] int childCount() const override {
        return QAccessibleApplication::childCount() + (openMenu() != nullptr ? 1 : 0);
    }
    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        auto* const menu = index == QAccessibleApplication::childCount() ? openMenu() : nullptr;
        return menu ? menu : QAccessibleApplication::child(index);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override {
        const bool isMenu = child && child == openMenu();
        return isMenu ? QAccessibleApplication::childCount() : QAccessibleApplication::indexOfChild(child);
    }

private:
    /// One of the menu bar has its place there.
    [[nodiscard]] QAccessibleInterface* openMenu() const {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        auto* const shown = menu ? QAccessible::queryAccessibleInterface(menu) : nullptr;
        return shown && shown->parent() == this ? shown : nullptr;
    }
};

/// A button of another role than Qt would give it.
class ButtonAccessible final : public QAccessibleWidget {
public:
    ButtonAccessible(QAbstractButton& button, QAccessible::Role role)
        : QAccessibleWidget(&button, role), m_button(button) {}

    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.checkable = m_button.isCheckable();
        state.checked = m_button.isChecked();
        state.pressed = m_button.isDown();
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        const QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && own.isEmpty() ? m_button.text() : own;
    }
    [[nodiscard]] QStringList actionNames() const override {
        QStringList names;
        if (m_button.isEnabled())
            names += m_button.isCheckable() ? toggleAction() : pressAction();
        return names + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == toggleAction() && m_button.isEnabled())
            m_button.toggle();
        else if (name == pressAction())
            m_button.animateClick();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton& m_button;
};

/// What Qt presents as a plain widget of that role.
struct PlainKind {
    QLatin1String className;
    QAccessible::Role role;
};
constexpr std::array plainKinds{PlainKind{QLatin1String("QWidget"), QAccessible::Client},
                                PlainKind{QLatin1String("QSplitter"), QAccessible::Splitter},
                                PlainKind{QLatin1String("QDialog"), QAccessible::Dialog},
                                PlainKind{QLatin1String("QMessageBox"), QAccessible::AlertMessage}};

QAccessibleInterface* interfaceFor(const QString& className, QObject* object) {
    if (object == qApp)
        return new ApplicationAccessible;
    auto* const widget = qobject_cast<QWidget*>(object);
    if (!widget)
        return nullptr;
    if (auto* const divider = qobject_cast<Divider*>(widget); divider && className == QLatin1String("Divider"))
        return Divider::accessible(*divider);
    if (className == QLatin1String("QSplitterHandle"))
        return new QAccessibleWidget(widget, QAccessible::Separator);
    const auto property = widget->property(roleProperty);
    if (!property.isValid()) {
        // For a kind that has an object of its own, Qt asks before it comes to the base class.
        const auto kind = std::ranges::find(plainKinds, className, &PlainKind::className);
        return kind != plainKinds.end() ? new OrderedAccessible(widget, kind->role) : nullptr;
    }
    const auto role = static_cast<QAccessible::Role>(property.toInt());
    if (auto* const button = qobject_cast<QAbstractButton*>(widget))
        return new ButtonAccessible(*button, role);
    return new OrderedAccessible(widget, role);
}

/// Whether what an event is about is shown as dots.
bool isHidden(const QAccessibleEvent& event) {
    const auto* const field = qobject_cast<QLineEdit*>(event.object());
    return field && field->echoMode() != QLineEdit::Normal;
}

QString dotsFor(const QString& text) {
    constexpr QChar dot(0x2022);
    return QString(text.size(), dot);
}

/// As all of Qt's events go out.
void pass(QAccessibleEvent& event);

/// Passes an event on to the screen readers of the desktop. Qt would report each letter typed into a hidden field.
void report(QAccessibleEvent* event) {
    using Event = QAccessible::Event;
    // A view's accessible object has been notified by its model already, and nothing else listens.
    if (event->type() == Event::TableModelChanged)
        return;
    // What is written over the letters that a field has kept was never in it for the user.
    const auto* const written = qobject_cast<TextField*>(event->object());
    if (written && written->isOverwritingHistory())
        return;
    if (!isHidden(*event))
        return pass(*event);
    if (event->type() == Event::TextInserted) {
        const auto& change = static_cast<const QAccessibleTextInsertEvent&>(*event);
        QAccessibleTextInsertEvent dots(event->object(), change.changePosition(), dotsFor(change.textInserted()));
        return pass(dots);
    }
    if (event->type() == Event::TextRemoved) {
        const auto& change = static_cast<const QAccessibleTextRemoveEvent&>(*event);
        QAccessibleTextRemoveEvent dots(event->object(), change.changePosition(), dotsFor(change.textRemoved()));
        return pass(dots);
    }
    if (event->type() == Event::TextUpdated) {
        const auto& change = static_cast<const QAccessibleTextUpdateEvent&>(*event);
        QAccessibleTextUpdateEvent dots(event->object(), change.changePosition(), dotsFor(change.textRemoved()),
                                        dotsFor(change.textInserted()));
        return pass(dots);
    }
    pass(*event);
}

void pass(QAccessibleEvent& event) {
    QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(&event);
    QAccessible::installUpdateHandler(report);
}

}  // namespace

void Accessible::install() {
    QAccessible::installFactory(interfaceFor);
    QAccessible::installUpdateHandler(report);
}

void Accessible::setRole(QWidget& widget, QAccessible::Role role) {
    widget.setProperty(roleProperty, static_cast<int>(role));
}

// What appears with this role is spoken at once; Qt passes on no alert. What is not shown yet is announced when it is.
void Accessible::announce(QWidget& message) {
    if (!message.isVisible())
        return;
    QAccessibleEvent shown(&message, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&shown);
}
