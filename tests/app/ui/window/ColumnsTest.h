// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/rows/RowListView.h"
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QListView>
#include <QMenu>
#include <QMimeData>

/// The window with an unlocked vault, its columns told by what a user sees and does in them.
class ColumnsTest : public WindowTest {
protected:
    MainWindow window{environment};

    void SetUp() override {
        window.show();
        unlock();
        QCoreApplication::processEvents();
    }

    RowListView& list(const QString& name) { return *WindowProbe::find<RowListView>(window, name); }
    RowListView& entries() { return list("Kayıtlar"); }
    RowListView& groups() { return list("Gruplar"); }

    static std::vector<std::string> textsOf(const QListView& view) {
        std::vector<std::string> texts;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            texts.push_back(view.model()->index(row, 0).data().toString().toStdString());
        return texts;
    }
    static QPoint middleOf(const QListView& view, int row) {
        return view.visualRect(view.model()->index(row, 0)).center();
    }
    static void click(const QListView& view, int row, Qt::KeyboardModifiers modifiers = {}) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, middleOf(view, row));
    }
    static void doubleClick(const QListView& view, const QPoint& place) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, place);
    }
    static void hover(const QListView& view, int row) {
        const QPointF place = middleOf(view, row);
        QHoverEvent move(QEvent::HoverMove, place, view.viewport()->mapToGlobal(place), QPointF(-1, -1));
        QCoreApplication::sendEvent(view.viewport(), &move);
    }

    /// A right click, as the desktop tells of it.
    static void rightClick(const QListView& view, const QPoint& place) {
        QTest::mousePress(view.viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent wish(QContextMenuEvent::Mouse, place, view.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(view.viewport(), &wish);
        QTest::mouseRelease(view.viewport(), Qt::RightButton, {}, place);
    }
    /// The menu that is open; none where there is none.
    QMenu* openMenu() {
        for (auto* const menu : window.findChildren<QMenu*>())
            if (menu->isVisible())
                return menu;
        return nullptr;
    }
    /// What a menu offers, a line an item; "-" is a separator, and brackets are around what is disabled.
    static std::vector<std::string> itemsOf(const QMenu& menu) {
        std::vector<std::string> items;
        for (const auto* const action : menu.actions()) {
            const auto text = action->isSeparator() ? "-" + action->text().toStdString() : action->text().toStdString();
            items.push_back(action->isEnabled() || action->isSeparator() ? text : "[" + text + "]");
        }
        return items;
    }
    void choose(const QString& item) {
        auto* const menu = openMenu();
        ASSERT_NE(menu, nullptr);
        for (auto* const action : menu->actions())
            if (action->text() == item) {
                action->trigger();
                menu->close();
                QCoreApplication::processEvents();
                return;
            }
        FAIL() << qPrintable(item);
    }

    /// A drag that comes over a list, moves there, and is let go or leaves again.
    class Drag {
    public:
        Drag(const QListView& view, const QString& text) : m_view(view) { m_content.setText(text); }

        bool moveTo(const QPoint& place) {
            QDragEnterEvent enter(place, actions, &m_content, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_view.viewport(), &enter);
            QDragMoveEvent move(place, actions, &m_content, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_view.viewport(), &move);
            return move.isAccepted();
        }
        bool dropAt(const QPoint& place) {
            moveTo(place);
            QDropEvent drop(place, actions, &m_content, Qt::LeftButton, {});
            QCoreApplication::sendEvent(m_view.viewport(), &drop);
            return drop.isAccepted();
        }
        void leave() {
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(m_view.viewport(), &leave);
        }

    private:
        static constexpr Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
        const QListView& m_view;
        QMimeData m_content;
    };

    static QString dragged(std::initializer_list<UUID> ids) {
        QStringList lines;
        for (const auto& id : ids)
            lines += QString::fromStdString(id.text());
        return lines.join('\n');
    }
};
