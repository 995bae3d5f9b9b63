// SPDX-License-Identifier: MIT
#include "app/ui/components/FilePanelLook.h"

#include "app/ui/components/BrandDate.h"
#include "app/ui/components/RowText.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractFileIconProvider>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QPainter>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QTreeView>

namespace {

constexpr QSize panelSize(720, 480);
constexpr int sidebarWidth = 156;
constexpr int symbolSide = 16;
constexpr int rowHeight = 30;
constexpr int rowInset = 4;
constexpr int cellPadding = 12;
// The header of the names keeps room for a symbol, and its text begins where those of the rows do.
constexpr int namePadding = 9;
constexpr int symbolGap = 6;
constexpr int sizeWidth = 96;
constexpr int dateWidth = 156;
constexpr double unusableOpacity = 0.4;
constexpr QSize screenReserve(16, 48);  // for the window's borders, which are known once it shows

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
    const std::pair<const char*, const char*> buttons[] = {{"backButton", "arrow.left"},
                                                           {"forwardButton", "arrow.right"},
                                                           {"toParentButton", "arrow.up"},
                                                           {"newFolderButton", "folder.badge.plus"}};
    for (const auto& [button, symbol] : buttons)
        if (auto* const found = panel.findChild<QToolButton*>(QLatin1String(button))) {
            found->setIcon(Symbol::icon(QLatin1String(symbol), Palette::textSoft));
            found->setIconSize({symbolSide, symbolSide});
        }
    // One way to see the files is enough, the one that shows when each was changed.
    for (const char* const button : {"listModeButton", "detailModeButton"})
        if (auto* const found = panel.findChild<QToolButton*>(QLatin1String(button)))
            found->hide();
    if (const auto* const box = panel.findChild<QDialogButtonBox*>())
        for (auto* const button : box->buttons())
            button->setIcon({});
}

/// A file, a folder or a place, in each column of its row: symbol and text on a ground that is round at the row's ends.
/// The text stays where it is, selected or not.
class Rows final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        painter->save();
        paintGround(*painter, option);
        const bool isName = index.column() == name;
        QRect area = option.rect.adjusted(isName ? namePadding : cellPadding, 0, -cellPadding, 0);
        if (const auto icon = isName ? index.data(Qt::DecorationRole).value<QIcon>() : QIcon(); !icon.isNull()) {
            icon.paint(painter, QRect(area.left(), area.center().y() - symbolSide / 2 + 1, symbolSide, symbolSide));
            area.setLeft(area.left() + symbolSide + symbolGap);
        }
        const bool isUsable = index.flags().testFlag(Qt::ItemIsEnabled);
        painter->setOpacity(isUsable ? 1 : unusableOpacity);
        painter->setFont(isName ? BrandFont::bodyText() : BrandFont::secondary());
        painter->setPen(isName ? Palette::text : Palette::textSoft);
        painter->drawText(area, static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft) | Qt::TextSingleLine,
                          RowText::elided(textOf(index), painter->fontMetrics(), area.width()));
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {0, rowHeight};
    }

private:
    static void paintGround(QPainter& painter, const QStyleOptionViewItem& option) {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        if (!isSelected && !option.state.testFlag(QStyle::State_MouseOver))
            return;
        const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget);
        QRect row = option.rect;
        if (view != nullptr) {
            row.setLeft(0);
            row.setRight(view->viewport()->width() - 1);
        }
        painter.setClipRect(option.rect);
        Painting::roundedBox(painter, row.adjusted(rowInset, 0, -rowInset, 0), Radius::small,
                             isSelected ? Palette::selection() : Palette::hover);
        painter.setClipping(false);
    }

    /// As this program shows it, and not as the desktop's language would have it.
    static QString textOf(const QModelIndex& index) {
        const auto* const files = qobject_cast<const QFileSystemModel*>(index.model());
        if (files == nullptr || index.column() == name)
            return index.data().toString();
        if (index.column() == modified)
            return brandFormatted(Timestamp{static_cast<double>(files->lastModified(index).toSecsSinceEpoch())});
        static const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
        return files->isDir(index)
                   ? QString()
                   : turkish.formattedDataSize(files->size(index), 1, QLocale::DataSizeTraditionalFormat);
    }
};

/// Gives the text cursor of a field that Qt made the theme's colour.
class CaretTint final : public QObject {
public:
    explicit CaretTint(QLineEdit& field) : QObject(&field), m_field(field) { field.installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint || m_isPainting)
            return QObject::eventFilter(watched, event);
        const QScopedValueRollback painting(m_isPainting, true);
        watched->event(event);
        if (m_field.hasFocus() && !m_field.hasSelectedText()) {
            QPainter painter(&m_field);
            Painting::tintCaret(painter,
                                m_field.inputMethodQuery(Qt::ImCursorRectangle).toRectF().adjusted(-1, 0, 3, 0));
        }
        return true;
    }

private:
    QLineEdit& m_field;
    bool m_isPainting = false;
};

void showPlaces(QListView& places) {
    places.setItemDelegate(new Rows(&places));
    places.setIconSize({symbolSide, symbolSide});
    places.setTextElideMode(Qt::ElideRight);
    places.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

/// The name takes what room there is. What kind a file is, its name says already.
void showColumns(QTreeView& files) {
    files.setItemDelegate(new Rows(&files));
    files.setMouseTracking(true);
    QPalette colours = files.palette();
    colours.setColor(QPalette::Highlight, Qt::transparent);  // the rows paint their own
    files.setPalette(colours);
    files.hideColumn(kind);
    auto* const header = files.header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(name, QHeaderView::Stretch);
    for (const auto& [column, width] : {std::pair(size, sizeWidth), std::pair(modified, dateWidth)}) {
        header->setSectionResizeMode(column, QHeaderView::Fixed);
        header->resizeSection(column, width);
    }
}

}  // namespace

namespace FilePanelLook {

void keepNothing() {
    static const bool isArranged = [] {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
        return true;
    }();
    static_cast<void>(isArranged);
}

void apply(QFileDialog& panel) {
    showSymbols(panel);
    if (auto* const files = panel.findChild<QTreeView*>(QStringLiteral("treeView")))
        showColumns(*files);
    if (auto* const places = panel.findChild<QListView*>(QStringLiteral("sidebar")))
        showPlaces(*places);
    panel.setSizeGripEnabled(false);
    panel.setViewMode(QFileDialog::Detail);
    const QSize room = panel.screen()->availableGeometry().size() - screenReserve;
    panel.resize(panelSize.boundedTo(room));
    if (auto* const folder = panel.findChild<QComboBox*>(QStringLiteral("lookInCombo")))
        folder->setIconSize({symbolSide + symbolGap, symbolSide});  // the text begins right behind it
    if (auto* const field = panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit")))
        new CaretTint(*field);
    if (auto* const parts = panel.findChild<QSplitter*>(QStringLiteral("splitter"))) {
        parts->setHandleWidth(Metric::s);
        parts->setSizes({sidebarWidth, panelSize.width() - sidebarWidth});
    }
}

}  // namespace FilePanelLook
