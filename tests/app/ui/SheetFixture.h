// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QPlainTextEdit>

/// The main window over the small vault, with sheets that a test opens by their routes and fills in as a user does.
class SheetFixture : public WindowTest {
protected:
    MainWindow window{environment};

    SheetFixture() {
        window.show();
        unlock();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    /// Replaces the vault with one whose first entry is this one, and opens its sheet.
    void editThis(const KdbxEntry& entry) {
        state->edit("Adım", [&](KdbxDatabase& database) { database.root.entries.mutableAt(0) = entry; });
        open(AppState::Route::editEntry(entry.id));
    }
    void open(const AppState::Route& route) {
        state->setRoute(route);
        QCoreApplication::processEvents();
    }

    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QString focusName() const {
        const auto* const focus = QApplication::focusWidget();
        return focus ? WindowProbe::nameOf(*focus) : QString();
    }
    void click(const QString& name) { WindowProbe::click(window, name); }
    void type(const QString& fieldName, const QString& text) { WindowProbe::type(window, fieldName, text); }
    [[nodiscard]] bool shows(const QString& text) const { return WindowProbe::shows(window, text); }
    [[nodiscard]] QLineEdit& field(const QString& name) const { return *WindowProbe::field(window, name); }
    [[nodiscard]] bool has(const QString& name) const { return WindowProbe::find<QWidget>(window, name) != nullptr; }
    [[nodiscard]] QAbstractButton& button(const QString& name) const { return *WindowProbe::button(window, name); }
    [[nodiscard]] QPlainTextEdit& notes() const { return *WindowProbe::find<QPlainTextEdit>(window, "Notlar"); }
    void typeNotes(const QString& text) {
        notes().setFocus();
        notes().selectAll();
        notes().insertPlainText(text);
    }
    /// All shown widgets of a kind with that name, from the top to the bottom.
    template <class Widget>
    [[nodiscard]] QList<Widget*> all(const QString& name) const {
        QCoreApplication::processEvents();
        QList<Widget*> found;
        for (auto* const widget : window.findChildren<Widget*>())
            if (widget->isVisible() && widget->accessibleName() == name)
                found.append(widget);
        std::sort(found.begin(), found.end(), [](const Widget* a, const Widget* b) {
            return a->mapToGlobal(QPoint()).y() < b->mapToGlobal(QPoint()).y();
        });
        return found;
    }
};
