// SPDX-License-Identifier: MIT
#include "app/ui/detail/EntryDetailView.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "app/ui/commands/CommandButton.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int edge = 20;
constexpr int widest = 720;           // the eye still follows a row to its end
constexpr int mostSpareAtSide = 160;  // beyond, all would be in a corner of a large screen
constexpr int tileSide = 44;
constexpr int titleSize = 22;
constexpr int mostTitleLines = 3;

bool showTheSame(const AutoTypeWindowAssociation& a, const AutoTypeWindowAssociation& b) {
    return a.window == b.window && a.sequence == b.sequence;
}

bool showTheSame(const SharedArray<KdbxEntry>& a, const SharedArray<KdbxEntry>& b) {
    return a.sharesStorageWith(b) ||
           std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const KdbxEntry& x, const KdbxEntry& y) {
               return &x == &y || (x.title == y.title && x.modified == y.modified);
           });
}

/// Whether two states of an entry look the same but for the time of access, which every copy of a field changes.
/// Texts are compared byte by byte: the same text in another spelling may well look different.
bool showTheSame(const KdbxEntry& a, const KdbxEntry& b) {
    return a.hasSameContent(b) &&
           std::ranges::equal(a.autoTypeWindowAssociations, b.autoTypeWindowAssociations,
                              [](const auto& x, const auto& y) { return showTheSame(x, y); }) &&
           a.created == b.created && a.modified == b.modified && showTheSame(a.historyItems, b.historyItems);
}

}  // namespace

EntryDetailView::EntryDetailView(const Environment& environment, QWidget* parent)
    : ScrollPage({edge, edge, edge, edge}, parent), m_environment(environment) {
    makeHeader();
    arrange();
    connectControls();
}

void EntryDetailView::makeHeader() {
    m_tile = new IconTile(0, tileSide);
    m_title = new Paragraph({}, BrandFont::display(titleSize), Palette::text);
    m_title->setMostLines(mostTitleLines);
    m_title->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_title->setMinimumHeight(tileSide);
    m_edit = makeCommandButton(Command::ID::edit);
    m_edit->setFramed(true);

    m_header = new QWidget;
    auto* const row = new QHBoxLayout(m_header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metric::m);
    row->addWidget(m_tile, 0, Qt::AlignTop);
    row->addWidget(m_title, 1);
    // At the height of the title's first line, however many follow.
    auto* const edit = new QVBoxLayout;
    edit->setSpacing(0);
    edit->addSpacing((tileSide - Metric::controlHeight) / 2);
    edit->addWidget(m_edit);
    edit->addStretch(1);
    row->addLayout(edit);
}

void EntryDetailView::arrange() {
    setMaximumContentWidth(widest);
    setSpareRoomAtSide(mostSpareAtSide);
    content()->addWidget(m_header);
    content()->addStretch(1);
}

void EntryDetailView::connectControls() {
    connect(m_edit, &IconButton::clicked, this, [this] {
        if (m_entry)
            Command::of(Command::ID::edit)(m_environment.state, &*m_entry);
    });
    connect(&m_environment.preferences, &Preferences::defaultAutoTypeSequenceChanged, this, [this] {
        if (m_entry)
            rebuild();
    });
}

void EntryDetailView::show(const KdbxEntry& entry) {
    const bool isAnother = !m_entry || m_entry->id != entry.id;
    const bool looksDifferent = isAnother || m_isExpired != entry.isExpired() || !showTheSame(*m_entry, entry);
    if (isAnother)
        m_revealed = {};
    m_entry = entry;
    m_isExpired = entry.isExpired();
    if (!looksDifferent) {
        m_parts->showAccessed();
        return;
    }
    showHeader();
    rebuild();
    if (isAnother)
        placeAt(0);
}

void EntryDetailView::showHeader() {
    m_tile->setIconID(m_entry->iconID);
    m_title->setText(m_entry->title.empty() ? QStringLiteral("Adsız kayıt") : LongText::beginning(m_entry->title));
}

/// Puts a new content in the old one's place. The control that has the focus gives it to its successor, and what was
/// to be seen stays where it was.
void EntryDetailView::rebuild() {
    const int scrollPosition = verticalScrollBar()->value();
    setUpdatesEnabled(false);
    auto* const former = std::exchange(m_parts, new EntryDetailContent(m_environment, *m_entry, m_revealed));
    m_parts->resize(m_header->width(), m_parts->height());  // or all is laid out for a width that never shows
    content()->insertWidget(1, m_parts);
    connect(m_parts, &EntryDetailContent::reflowed, this, &EntryDetailView::reflow);
    m_parts->show();
    takeTabOrder();
    if (former != nullptr) {
        const auto* focused = window()->focusWidget();  // also while another window has the keyboard
        if (focused != nullptr && former->isAncestorOf(focused)) {
            auto* const successor = m_parts->findChild<QWidget*>(focused->objectName());
            (successor != nullptr && successor->isEnabled() ? successor : m_edit)->setFocus(Qt::OtherFocusReason);
        }
        content()->removeWidget(former);
        former->hide();
        former->deleteLater();  // one of its buttons may be what led here
    }
    placeAt(scrollPosition);
    setUpdatesEnabled(true);
}

/// Tab goes through the content right after the header, whenever it was made.
void EntryDetailView::takeTabOrder() {
    QWidget* former = m_edit;
    for (auto* const stop : m_parts->stops()) {
        setTabOrder(former, stop);
        former = stop;
    }
}

/// Gives a row its new height at once. By itself the wish goes up one widget a turn of the event loop, and what stands
/// on the way is squeezed meanwhile.
void EntryDetailView::reflow(QWidget* row) {
    row->updateGeometry();
    for (auto* around = row->parentWidget(); around != widget(); around = around->parentWidget())
        around->layout()->activate();
    placeAt(verticalScrollBar()->value());
}

/// The scroll bar knows how far it goes only when the layout has run.
void EntryDetailView::placeAt(int scrollPosition) {
    QEvent now(QEvent::LayoutRequest);
    QApplication::sendEvent(widget(), &now);
    verticalScrollBar()->setValue(scrollPosition);
}

void EntryDetailView::forget() {
    delete std::exchange(m_parts, nullptr);
    m_entry.reset();
    m_revealed = {};
    m_title->clear();
}
