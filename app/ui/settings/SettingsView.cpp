// SPDX-License-Identifier: MIT
#include "app/ui/settings/SettingsView.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/ScrollPage.h"
#include "app/ui/settings/AutoLockCard.h"
#include "app/ui/settings/SettingsCards.h"

#include <QAction>
#include <QEvent>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize smallestSize(400, 360);
constexpr QSize idealSize(520, 620);
constexpr QSize screenReserve(16, 48);  // for the window's borders, which are known once it shows
constexpr int edge = 20;

}  // namespace

void SettingsView::open(const Environment& environment, QWidget& owner, const QList<QAction*>& commands) {
    auto* settings = owner.findChild<SettingsView*>(QString(), Qt::FindDirectChildrenOnly);
    if (settings == nullptr) {
        settings = new SettingsView(environment, &owner);
        settings->setAttribute(Qt::WA_DeleteOnClose);
        settings->standOver(owner);
        settings->addActions(commands);
    }
    settings->setWindowState(settings->windowState() & ~Qt::WindowMinimized);
    settings->show();
    settings->raise();
    settings->activateWindow();
}

SettingsView::SettingsView(const Environment& environment, QWidget* owner) : QWidget(owner, Qt::Window) {
    Accessible::setRole(*this, QAccessible::Dialog);
    setWindowTitle(QStringLiteral("Ayarlar"));
    const QSize room = screen()->availableGeometry().size() - screenReserve;
    setMinimumSize(smallestSize.boundedTo(room));
    resize(idealSize.boundedTo(room));
    arrange(environment);
    for (const auto& key : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)})
        connect(new QShortcut(key, this), &QShortcut::activated, this, &SettingsView::close);
    if (owner != nullptr)
        goWith(*owner);
}

void SettingsView::arrange(const Environment& environment) {
    auto* const page = new ScrollPage({edge, edge, edge, edge});
    page->content()->addWidget(new ClipboardCard(environment.preferences));
    page->content()->addWidget(new AutoTypeCard(environment.preferences, environment.autoType));
    auto* const hotKey = new HotKeyCard(environment.preferences, environment.hotKey);
    page->content()->addWidget(hotKey);
    page->content()->addWidget(new AutoLockCard(environment.preferences));
    page->content()->addStretch(1);
    // The card has its new height once the layouts have run.
    connect(
        hotKey, &HotKeyCard::messageAppeared, page, [page, hotKey] { page->ensureWidgetVisible(hotKey, 0, edge); },
        Qt::QueuedConnection);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page);
}

/// In the middle of the owner, as far as the screen has room. A window manager would put it anywhere.
void SettingsView::standOver(const QWidget& owner) {
    const QRect screen = owner.screen()->availableGeometry();
    const QSize borders = owner.frameGeometry().size() - owner.size();  // its own are known once it shows
    QRect frame(QPoint(), size() + borders);
    frame.moveCenter(owner.frameGeometry().center());
    move(std::max(screen.left(), std::min(frame.left(), screen.right() + 1 - frame.width())),
         std::max(screen.top(), std::min(frame.top(), screen.bottom() + 1 - frame.height())));
}

/// Closing the program's window ends the program, whether or not its settings are open.
void SettingsView::goWith(QWidget& owner) {
    setAttribute(Qt::WA_QuitOnClose, false);
    owner.installEventFilter(this);
}

QSize SettingsView::sizeHint() const {
    return idealSize;
}

bool SettingsView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parent() && event->type() == QEvent::Hide && !event->spontaneous())
        close();
    return false;
}
