// SPDX-License-Identifier: MIT
#include "app/ui/rows/RowListView.h"

#include "app/ui/rows/RowListAccessible.h"
#include "app/ui/rows/RowListModel.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace {

constexpr double dropOpacity = 0.12;
constexpr int dropLineWidth = 2;

QChar folded(QChar letter) {
    constexpr QStringView sameLetters = u"Iİı";
    return sameLetters.contains(letter) ? QChar(u'i') : letter.toLower();
}

bool isTyped(const QString& text, const QString& typed) {
    return text.size() >= typed.size() && std::equal(typed.begin(), typed.end(), text.begin(),
                                                     [](QChar a, QChar b) { return folded(a) == folded(b); });
}

QAccessibleInterface* accessibleFor(const QString&, QObject* object) {
    auto* const list = qobject_cast<RowListView*>(object);
    return list != nullptr ? new RowListAccessible(*list) : nullptr;
}

}  // namespace

RowListView::RowListView(const QString& name, QWidget* parent) : QListView(parent) {
    [[maybe_unused]] static const bool isTaught = (QAccessible::installFactory(accessibleFor), true);
    setAccessibleName(name);
    setUniformItemSizes(true);  // a hundred times the speed at 100,000 rows
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);  // follows the pointer also where it is over the row's buttons
    setViewportMargins(0, Metric::s, 0, Metric::s);
    // The ground is the column's own.
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

QList<RowVerb> RowListView::verbs(const QModelIndex& index) const {
    return m_verbs && index.isValid() ? m_verbs(index) : QList<RowVerb>();
}

void RowListView::setVerbs(std::function<QList<RowVerb>(const QModelIndex&)> verbs) {
    m_verbs = std::move(verbs);
}

std::optional<bool> RowListView::isExpanded(const QModelIndex& index) const {
    return m_expansion && index.isValid() ? m_expansion(index) : std::nullopt;
}

void RowListView::setExpansion(std::function<std::optional<bool>(const QModelIndex&)> isExpanded) {
    m_expansion = std::move(isExpanded);
}

void RowListView::tellExpansion(int row) {
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent expansion(this, changed);
    expansion.setChild(row);
    QAccessible::updateAccessibility(&expansion);
}

void RowListView::setMark(std::optional<RowMark> mark) {
    if (std::exchange(m_mark, mark) != mark)
        viewport()->update();
}

// Qt's own search asks for each text in full and in one letter case; a list of 100,000 would stop at each letter.
void RowListView::keyboardSearch(const QString& typed) {
    const auto& rows = *qobject_cast<const RowListModel*>(model());
    const int count = rows.rowCount();
    if (count == 0 || typed.isEmpty())
        return;
    const bool goesOn = m_lastTyped.isValid() && m_lastTyped.elapsed() < QApplication::keyboardInputInterval();
    m_lastTyped.start();
    m_typed = goesOn ? m_typed + typed : typed;
    // One letter again and again goes through all that begin with it; a word stays for as long as it fits.
    const bool isOneLetter = m_typed.count(m_typed.front()) == m_typed.size();
    const QString wanted = isOneLetter ? m_typed.left(1) : m_typed;
    const int first = isOneLetter ? currentIndex().row() + 1 : std::max(currentIndex().row(), 0);
    for (int step = 0; step < count; ++step) {
        const int row = (first + step) % count;
        if (isTyped(rows.beginningOf(row, wanted.size()), wanted)) {
            selectionModel()->setCurrentIndex(rows.index(row), QItemSelectionModel::ClearAndSelect);
            return;
        }
    }
}

bool RowListView::viewportEvent(QEvent* event) {
    switch (event->type()) {
        case QEvent::HoverEnter:
        case QEvent::HoverMove:
            m_pointer = static_cast<QHoverEvent*>(event)->position().toPoint();
            break;
        case QEvent::HoverLeave:
        case QEvent::Leave:
            m_pointer = std::nullopt;
            break;
        default:
            break;
    }
    const bool isAnswered = QListView::viewportEvent(event);
    showHover();
    return isAnswered;
}

void RowListView::forgetPointer() {
    QHoverEvent leave(QEvent::HoverLeave, QPointF(-1, -1), QPointF(-1, -1), QPointF(-1, -1));
    viewportEvent(&leave);
}

/// Rows have moved; the pointer may rest on another one now.
void RowListView::followPointer() {
    if (m_pointer) {
        QHoverEvent move(QEvent::HoverMove, *m_pointer, viewport()->mapToGlobal(QPointF(*m_pointer)), *m_pointer);
        QListView::viewportEvent(&move);
    }
    showHover();
    emit hoverMoved();
}

void RowListView::showHover() {
    const auto hovered = m_pointer ? indexAt(*m_pointer) : QModelIndex();
    if (m_hovered == hovered)
        return;
    m_hovered = hovered;
    emit hoverMoved();
}

void RowListView::scrollContentsBy(int dx, int dy) {
    QListView::scrollContentsBy(dx, dy);
    followPointer();
}

void RowListView::updateGeometries() {
    QListView::updateGeometries();
    followPointer();
}

// Qt would announce that the focus is on the row, also while a search field has it and each letter makes another list.
void RowListView::currentChanged(const QModelIndex& current, const QModelIndex& former) {
    if (hasFocus())
        QListView::currentChanged(current, former);
    else
        QAbstractItemView::currentChanged(current, former);
}

bool RowListView::showsFocus(const QStyleOptionViewItem& option) {
    const auto* const list = qobject_cast<const RowListView*>(option.widget);
    return option.state.testFlag(QStyle::State_HasFocus) && (!list || list->m_isKeyboardUsed);
}

void RowListView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    // The ground lies beneath the row's text, the lines above it.
    const bool isGround = m_mark && m_mark->shape == RowMark::Shape::ground;
    if (isGround)
        paintMark(painter);
    painter.end();
    QListView::paintEvent(event);
    if (!m_mark || isGround)
        return;
    painter.begin(viewport());
    paintMark(painter);
}

void RowListView::paintMark(QPainter& painter) const {
    const auto index = model()->index(m_mark->row, 0);
    if (!index.isValid())
        return;
    const QRect row = visualRect(index).adjusted(Metric::s, 0, -Metric::s, 0);
    const auto line = [&](int y) {
        Painting::roundedBox(painter,
                             QRectF(row.left(), std::max(0, y - dropLineWidth / 2), row.width(), dropLineWidth),
                             Radius::pill, Palette::accent);
    };
    switch (m_mark->shape) {
        case RowMark::Shape::ground:
            if (!selectionModel()->isSelected(index))
                Painting::roundedBox(painter, row, Radius::control, Palette::withOpacity(Palette::accent, dropOpacity));
            break;
        case RowMark::Shape::lineAbove:
            return line(row.top());
        case RowMark::Shape::lineBelow:
            return line(row.bottom() + 1);
        case RowMark::Shape::outline:
            return Painting::roundedBox(painter, row, Radius::control, {}, Palette::lineStrong);
    }
}

void RowListView::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();
    if (event->reason() == QContextMenuEvent::Keyboard)
        return requestMenu(currentIndex());
    if (const auto index = indexAt(event->pos()); index.isValid())
        emit menuRequested(index, event->globalPos());
}

void RowListView::requestMenu(const QModelIndex& index) {
    if (!index.isValid())
        return;
    scrollTo(index);
    const QRect row = visualRect(index);
    const QPoint corner = layoutDirection() == Qt::RightToLeft ? row.bottomRight() - QPoint(Metric::xxl, 0)
                                                               : row.bottomLeft() + QPoint(Metric::xxl, 0);
    emit menuRequested(index, viewport()->mapToGlobal(corner));
}

void RowListView::keyPressEvent(QKeyEvent* event) {
    m_isKeyboardUsed = true;
    viewport()->update();
    // What a row is copied as is decided by the commands; the base class would put its title on the clipboard.
    if (event->matches(QKeySequence::Copy))
        return event->ignore();
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier)
        return requestMenu(currentIndex());
    QListView::keyPressEvent(event);
}

void RowListView::focusInEvent(QFocusEvent* event) {
    const auto reason = event->reason();
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        m_isKeyboardUsed = true;
    QListView::focusInEvent(event);
    if (!currentIndex().isValid() && model()->rowCount() > 0)
        selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::NoUpdate);
    // After Qt has reported the list.
    QMetaObject::invokeMethod(this, &RowListView::tellFocus, Qt::QueuedConnection);
    viewport()->update();
}

/// Reports the row that has the keyboard; the list has been reported already.
void RowListView::tellFocus() {
    if (!hasFocus() || !currentIndex().isValid())
        return;
    QAccessibleEvent focus(this, QAccessible::Focus);
    focus.setChild(currentIndex().row());
    QAccessible::updateAccessibility(&focus);
}

// Only the left button selects: a menu is for the row that it is opened on, whatever is selected.
void RowListView::mousePressEvent(QMouseEvent* event) {
    m_isKeyboardUsed = false;
    m_doubleClicked = QModelIndex();
    if (event->button() != Qt::LeftButton)
        return event->accept();
    m_pressed = indexAt(event->position().toPoint());
    QListView::mousePressEvent(event);
    viewport()->update();
}

void RowListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return event->accept();
    QListView::mouseDoubleClickEvent(event);
    m_doubleClicked = indexAt(event->position().toPoint());
}

void RowListView::mouseReleaseEvent(QMouseEvent* event) {
    QListView::mouseReleaseEvent(event);
    const QModelIndex index = std::exchange(m_doubleClicked, QPersistentModelIndex());
    if (event->button() == Qt::LeftButton && index.isValid() && indexAt(event->position().toPoint()) == index)
        emit clickedTwice(index);
}

void RowListView::startDrag(Qt::DropActions) {
    if (m_pressed.isValid())
        emit dragStarted(m_pressed);
}
