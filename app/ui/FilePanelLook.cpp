// SPDX-License-Identifier: MIT
#include "app/ui/FilePanelLook.h"

#include "app/ui/Symbol.h"
#include "app/ui/Theme.h"

#include <QAbstractFileIconProvider>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QListView>
#include <QPushButton>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>

namespace {

constexpr QSize panelSize(720, 480);
constexpr int sidebarWidth = 156;
constexpr int symbolSide = 16;

enum Column { name, size, kind, modified };

/// The places and files of the panel, with the vaults among them in the accent's colour.
class Icons final : public QAbstractFileIconProvider {
public:
    QIcon icon(IconType type) const override {
        switch (type) {
            case Folder:
            case Drive:
                return Symbol::icon(QStringLiteral("folder"), Palette::textSoft);
            case File:
                return Symbol::icon(QStringLiteral("doc"), Palette::textMuted);
            default:
                return Symbol::icon(QStringLiteral("display"), Palette::textSoft);
        }
    }
    QIcon icon(const QFileInfo& info) const override {
        if (info.isDir())
            return icon(info.isRoot() ? Computer : Folder);
        const bool isVault = info.suffix().compare(QStringLiteral("kdbx"), Qt::CaseInsensitive) == 0;
        return isVault ? Symbol::icon(QStringLiteral("lock.doc"), Palette::accent) : icon(File);
    }
};

void showSymbols(QFileDialog& panel) {
    static Icons icons;
    panel.setIconProvider(&icons);
    const std::pair<const char*, const char*> buttons[] = {
        {"backButton", "arrow.left"},      {"forwardButton", "arrow.right"},
        {"toParentButton", "arrow.up"},    {"newFolderButton", "folder.badge.plus"},
        {"listModeButton", "square.grid"}, {"detailModeButton", "list.bullet"}};
    for (const auto& [button, symbol] : buttons)
        if (auto* const found = panel.findChild<QToolButton*>(QLatin1String(button))) {
            found->setIcon(Symbol::icon(QLatin1String(symbol), Palette::textSoft));
            found->setIconSize({symbolSide, symbolSide});
        }
    if (const auto* const box = panel.findChild<QDialogButtonBox*>())
        for (auto* const button : box->buttons())
            button->setIcon({});
}

void showPlaces(QListView& places) {
    places.setIconSize({symbolSide, symbolSide});
    places.setTextElideMode(Qt::ElideRight);
    places.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

/// The name takes what room there is. What kind a file is, its name says already.
void showColumns(QTreeView& files) {
    files.hideColumn(kind);
    auto* const header = files.header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(name, QHeaderView::Stretch);
    for (const auto column : {size, modified})
        header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
}

}  // namespace

namespace FilePanelLook {

void apply(QFileDialog& panel) {
    showSymbols(panel);
    if (auto* const files = panel.findChild<QTreeView*>(QStringLiteral("treeView")))
        showColumns(*files);
    if (auto* const places = panel.findChild<QListView*>(QStringLiteral("sidebar")))
        showPlaces(*places);
    panel.setSizeGripEnabled(false);
    panel.resize(panelSize);
    if (auto* const parts = panel.findChild<QSplitter*>(QStringLiteral("splitter"))) {
        parts->setHandleWidth(Metric::s);
        parts->setSizes({sidebarWidth, panelSize.width() - sidebarWidth});
    }
}

}  // namespace FilePanelLook
