// SPDX-License-Identifier: MIT
#include "app/ui/window/Toolbar.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/ui/commands/CommandButton.h"
#include "app/ui/commands/Commands.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/SearchField.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

namespace {

constexpr int barHeight = 48;
constexpr int titleWidth = 186;  // until there is a list to go by
constexpr int narrowestTitle = 100;

}  // namespace

Toolbar::Toolbar(AppState& state, Commands& commands, QWidget* parent)
    : QWidget(parent),
      m_state(state),
      m_title(new TextLabel({}, BrandFont::sectionTitle(), Palette::text)),
      m_subtitle(new TextLabel({}, BrandFont::label(), Palette::textSoft)),
      m_search(new SearchField(QStringLiteral("Kayıtlarda ara"))),
      m_newEntry(makeCommandButton(Command::ID::newEntry)),
      m_more(new IconButton(QStringLiteral("ellipsis.circle"), QStringLiteral("Diğer işlemler"))),
      m_save(makeCommandButton(Command::ID::save)),
      m_lock(makeCommandButton(Command::ID::lock)) {
    arrange();
    fillMore(commands);
    connectState(commands);
    showTitle();
    showSearch();
    showSaving();
}

void Toolbar::arrange() {
    setFixedHeight(barHeight);
    m_titles = new QWidget;
    m_titles->setFixedWidth(titleWidth);
    auto* const lines = bareColumn(m_titles, 2);
    lines->addStretch();
    lines->addWidget(m_title);
    lines->addWidget(m_subtitle);
    lines->addStretch();

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(Metric::m, 0, Metric::m, Metric::hairline);
    row->setSpacing(Metric::s);
    row->addWidget(m_titles);
    // The field has its ideal width wherever there is room, and more once that is less than a third of it.
    row->addWidget(m_search);
    row->addStretch();
    row->addStretch();
    for (auto* const button : {m_newEntry, m_more, m_save, m_lock})
        row->addWidget(button);
}

void Toolbar::fillMore(Commands& commands) {
    auto* const menu = new QMenu(this);
    menu->setAccessibleName(QStringLiteral("Diğer işlemler"));
    commands.fillMore(*menu);
    m_more->setMenu(menu);
}

void Toolbar::connectState(Commands& commands) {
    connect(m_search, &SearchField::textChanged, this,
            [this](const QString& text) { m_state.setSearchText(vaultText(text)); });
    connect(m_newEntry, &IconButton::clicked, commands.action(Command::ID::newEntry), &QAction::trigger);
    connect(m_save, &IconButton::clicked, commands.action(Command::ID::save), &QAction::trigger);
    connect(m_lock, &IconButton::clicked, commands.action(Command::ID::lock), &QAction::trigger);
    for (const auto signal : {&AppState::databaseChanged, &AppState::databaseURLChanged, &AppState::isDirtyChanged})
        connect(&m_state, signal, this, &Toolbar::showTitle);
    connect(&m_state, &AppState::searchTextChanged, this, &Toolbar::showSearch);
    connect(&m_state, &AppState::isLockedChanged, m_search, [this] {
        if (m_state.isLocked())
            m_search->replaceText(m_search->text());  // what was typed and taken back is still in its undo history
    });
    connect(&m_state, &AppState::searchFocusTokenChanged, m_search, [this] {
        m_search->setFocus(Qt::ShortcutFocusReason);
        m_search->selectAll();
    });
    connect(commands.action(Command::ID::save), &QAction::changed, this, &Toolbar::showSaving);
}

void Toolbar::startSearchAt(QWidget& column) {
    m_column = &column;
    column.installEventFilter(this);
}

/// A column at the edge, with none before it, leaves the search where it is: nothing jumps as that one hides.
bool Toolbar::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_column || (event->type() != QEvent::Move && event->type() != QEvent::Resize))
        return QWidget::eventFilter(watched, event);
    const bool isReversed = layoutDirection() == Qt::RightToLeft;
    const auto* const row = m_column->parentWidget();
    const int start = isReversed ? row->width() - m_column->geometry().right() - 1 : m_column->x();
    if (start > narrowestTitle)
        m_titles->setFixedWidth(start - Metric::m - Metric::s);
    return false;
}

void Toolbar::showTitle() {
    m_title->setText(qtText(m_state.databaseName()));
    QStringList parts;
    if (const auto* root = m_state.root())
        parts += QStringLiteral("%1 kayıt").arg(Numbers::grouped(GroupTree::totalEntryCount(*root)));
    if (m_state.isDirty())
        parts += QStringLiteral("kaydedilmedi");
    m_subtitle->setText(parts.join(QStringLiteral(" · ")));
    showSaving();
}

void Toolbar::showSearch() {
    // A text that means the same is left as it is typed, or the cursor would jump.
    if (vaultText(m_search->text()) != m_state.searchText())
        m_search->replaceText(qtText(m_state.searchText()));
}

void Toolbar::showSaving() {
    m_save->setEnabled(m_state.canSave() && m_state.isDirty());
    m_save->setTint(m_state.isDirty() ? Palette::accent : Palette::textSoft);
}

void Toolbar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::hairline(painter, QPointF(0, height() - Metric::hairline), width(), Qt::Horizontal, Palette::line);
}
