// SPDX-License-Identifier: MIT
#include "app/ui/EntryDetailView.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "app/ui/Texts.h"
#include "app/ui/Theme.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"

#include <QApplication>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int edge = 20;
constexpr int widest = 720;
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
    return a.title == b.title && a.username == b.username && a.password == b.password && a.url == b.url &&
           a.notes == b.notes && a.iconID == b.iconID && a.tags == b.tags && a.customFields == b.customFields &&
           a.protectedCustomFields == b.protectedCustomFields && a.autoTypeEnabled == b.autoTypeEnabled &&
           a.autoTypeSequence == b.autoTypeSequence &&
           std::ranges::equal(a.autoTypeWindowAssociations, b.autoTypeWindowAssociations,
                              [](const auto& x, const auto& y) { return showTheSame(x, y); }) &&
           a.created == b.created && a.modified == b.modified && a.expires == b.expires &&
           a.expiryTime == b.expiryTime && showTheSame(a.historyItems, b.historyItems);
}

/// What scrolls. A layout's least height is the one at its least width; here the height follows from the width alone.
class Page final : public QWidget {
public:
    [[nodiscard]] QSize minimumSizeHint() const override { return {}; }
};

}  // namespace

EntryDetailView::EntryDetailView(const Environment& environment, QWidget* parent)
    : QScrollArea(parent), m_environment(environment) {
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
    m_edit = new IconButton(QStringLiteral("pencil"), tr("Düzenle (⌘E)"));
    m_edit->setFramed(true);

    m_header = new QWidget;
    auto* const row = new QHBoxLayout(m_header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metric::m);
    row->addWidget(m_tile, 0, Qt::AlignTop);
    row->addWidget(m_title, 1);
    row->addWidget(m_edit, 0, Qt::AlignTop);
}

void EntryDetailView::arrange() {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* const page = new Page;
    auto* const column = new QVBoxLayout(page);
    column->setContentsMargins(edge, edge, edge, edge);
    column->setSpacing(Metric::m);
    column->addWidget(m_header);
    column->addStretch(1);
    setWidget(page);
    verticalScrollBar()->installEventFilter(this);
}

bool EntryDetailView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == verticalScrollBar() && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        keepEdges();
    return QScrollArea::eventFilter(watched, event);
}

void EntryDetailView::resizeEvent(QResizeEvent* event) {
    keepEdges();
    QScrollArea::resizeEvent(event);
}

/// The scroll bar stands in the trailing edge, so that what it scrolls is as wide with it as without. In a wide column
/// the rows end where the eye can still follow them.
void EntryDetailView::keepEdges() {
    const auto* bar = verticalScrollBar();
    const int barWidth = bar->isVisibleTo(this) ? bar->sizeHint().width() : 0;
    const int trailing = std::max({width() - edge - widest, edge, barWidth}) - barWidth;
    widget()->layout()->setContentsMargins(layoutDirection() == Qt::RightToLeft ? QMargins(trailing, edge, edge, edge)
                                                                                : QMargins(edge, edge, trailing, edge));
}

void EntryDetailView::connectControls() {
    connect(m_edit, &IconButton::clicked, this, [this] {
        if (m_entry)
            m_environment.state.setRoute(AppState::Route::editEntry(m_entry->id));
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
        m_content->showAccessed();
        return;
    }
    showHeader();
    rebuild();
    if (isAnother)
        placeAt(0);
}

void EntryDetailView::showHeader() {
    m_tile->setIconID(m_entry->iconID);
    m_title->setText(m_entry->title.empty() ? tr("Adsız kayıt") : qtText(m_entry->title));
}

/// Puts a new content in the old one's place. The control that has the focus gives it to its successor, and what was
/// to be seen stays where it was.
void EntryDetailView::rebuild() {
    const int scrollPosition = verticalScrollBar()->value();
    setUpdatesEnabled(false);
    auto* const former = std::exchange(m_content, new EntryDetailContent(m_environment, *m_entry, m_revealed));
    auto* const column = static_cast<QVBoxLayout*>(widget()->layout());
    column->insertWidget(1, m_content);
    connect(m_content, &EntryDetailContent::reflowed, this, &EntryDetailView::reflow);
    m_content->show();
    takeTabOrder();
    if (former != nullptr) {
        const auto* focused = former->isAncestorOf(QApplication::focusWidget()) ? QApplication::focusWidget() : nullptr;
        if (focused != nullptr) {
            auto* const successor = m_content->findChild<QWidget*>(focused->objectName());
            (successor != nullptr && successor->isEnabled() ? successor : m_edit)->setFocus(Qt::OtherFocusReason);
        }
        column->removeWidget(former);
        former->hide();
        former->deleteLater();  // one of its buttons may be what led here
    }
    placeAt(scrollPosition);
    setUpdatesEnabled(true);
}

/// Tab goes through the content right after the header, whenever it was made.
void EntryDetailView::takeTabOrder() {
    QWidget* former = m_edit;
    for (auto* const stop : m_content->stops()) {
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
    delete std::exchange(m_content, nullptr);
    m_entry.reset();
    m_revealed = {};
    m_title->clear();
}
