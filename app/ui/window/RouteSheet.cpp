// SPDX-License-Identifier: MIT
#include "app/ui/window/RouteSheet.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/ui/components/EmptyStateView.h"
#include "app/ui/components/Sheet.h"
#include "app/ui/editor/EntryEditView.h"
#include "app/ui/generator/PasswordGeneratorView.h"
#include "app/ui/groups/GroupEditView.h"
#include "core/primitives/Overloaded.h"

#include <QVBoxLayout>

namespace {

constexpr QSize missingSize(380, 320);

}  // namespace

RouteSheet::RouteSheet(const Environment& environment, QWidget* below, QWidget* window)
    : QObject(window), m_environment(environment), m_host(new SheetHost(below, window)) {
    connect(m_host, &SheetHost::focusLost, this, &RouteSheet::focusLost);
    auto& state = m_environment.state;
    // A locked window has no sheet before it shows its other screen: the focus then stays where that screen puts it.
    for (const auto signal : {&AppState::routeChanged, &AppState::databaseChanged, &AppState::isLockedChanged})
        connect(&state, signal, this, &RouteSheet::show);
    show();
}

void RouteSheet::show() {
    const auto& route = m_environment.state.route();
    if (!route) {
        m_content.reset();
        return m_host->dismiss();
    }
    Content content{route->id(), isMissing(*route)};
    if (content == m_content)
        return refresh();
    m_content = std::move(content);
    m_host->present(m_content->isMissing ? makeMissingView() : makeView(*route));
}

bool RouteSheet::isMissing(const Route& route) const {
    const auto* const root = m_environment.state.root();
    return std::visit(Overloaded{
                          [&](const Route::EditEntry& r) { return !root || !GroupTree::findEntry(*root, r.id); },
                          [&](const Route::EditGroup& r) { return !root || !GroupTree::findGroup(*root, r.id); },
                          [](const auto&) { return false; },
                      },
                      route.sheet);
}

QWidget* RouteSheet::makeView(const Route& route) const {
    const auto& environment = m_environment;
    const auto* const root = environment.state.root();
    return std::visit(
        Overloaded{
            [&](const Route::NewEntry& r) -> QWidget* {
                return new EntryEditView(environment, EntryEditView::Create{r.groupID});
            },
            [&](const Route::EditEntry& r) -> QWidget* {
                return new EntryEditView(environment, EntryEditView::Edit{*GroupTree::findEntry(*root, r.id)});
            },
            [&](const Route::NewGroup& r) -> QWidget* {
                return new GroupEditView(environment, GroupEditView::Create{r.parentID});
            },
            [&](const Route::EditGroup& r) -> QWidget* {
                return new GroupEditView(environment, GroupEditView::Edit{*GroupTree::findGroup(*root, r.id)});
            },
            [&](const Route::Generator& r) -> QWidget* { return new PasswordGeneratorView(environment, r.target); },
        },
        route.sheet);
}

/// The views keep what was typed while the vault changes behind them, and follow it in all else.
void RouteSheet::refresh() {
    const auto& state = m_environment.state;
    if (!state.root() || m_content->isMissing)
        return;
    if (auto* const view = qobject_cast<EntryEditView*>(m_host->sheet()))
        view->followVault();
    else if (auto* const group = qobject_cast<GroupEditView*>(m_host->sheet()))
        group->followVault();
}

QWidget* RouteSheet::makeMissingView() const {
    auto* const missing = new EmptyStateView(QStringLiteral("questionmark.folder"), QStringLiteral("Bulunamadı"),
                                             QStringLiteral("Bu kayıt artık mevcut değil."));
    auto& state = m_environment.state;
    missing->setAction(QStringLiteral("Kapat"), [&state] { state.setRoute(std::nullopt); });
    auto* const sheet = new SheetCard(missing, missingSize);
    sheet->setAccessibleName(QStringLiteral("Bulunamadı"));
    connect(sheet, &SheetCard::cancelled, &state, [&state] { state.setRoute(std::nullopt); });
    connect(sheet, &SheetCard::confirmed, &state, [&state] { state.setRoute(std::nullopt); });
    return sheet;
}
