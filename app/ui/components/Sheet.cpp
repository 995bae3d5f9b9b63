// SPDX-License-Identifier: MIT
#include "app/ui/components/Sheet.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/ScrollPage.h"
#include "app/ui/components/TabStops.h"
#include "app/ui/theme/Motion.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QVariantAnimation>

namespace {

constexpr int footerHeight = 56;
constexpr int margin = 40;       // distance of a sheet from the window's edges
constexpr int smallMargin = 24;  // the same in a window that is short of room
constexpr int roomyHeight = 560;
constexpr int rise = 8;           // points that a sheet comes up while it fades in
constexpr double dimming = 0.55;  // of the backdrop
constexpr int shadowWidth = 28;
constexpr int shadowDrop = 6;

/// So that nothing jumps when the widget hides.
QSizePolicy retaining(QSizePolicy policy) {
    policy.setRetainSizeWhenHidden(true);
    return policy;
}

}  // namespace

SheetCard::SheetCard(QSize smallest, QSize ideal, QWidget* parent)
    : QWidget(parent), m_smallest(smallest), m_ideal(ideal) {
    setFocusPolicy(Qt::NoFocus);
    Accessible::setRole(*this, QAccessible::Dialog);
}

SheetCard::SheetCard(QWidget* content, QSize size) : SheetCard(size, size) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metric::xl, Metric::xl, Metric::xl, Metric::xl);
    column->addWidget(content);
}

void SheetCard::setSizes(QSize smallest, QSize ideal) {
    m_smallest = smallest;
    m_ideal = ideal;
    updateGeometry();
}

void SheetCard::setConfirmEnabled(bool isEnabled) {
    if (std::exchange(m_isConfirmEnabled, isEnabled) != isEnabled)
        emit confirmEnabledChanged(isEnabled);
}

void SheetCard::setFirstField(QWidget* field) {
    m_firstField = field;
}

QWidget* SheetCard::firstField() const {
    return m_firstField ? m_firstField.data() : TabStops::first(*this);
}

void SheetCard::orderTabs() {
    TabStops::orderAsRead(*this);
}

void SheetCard::confirm() {
    if (m_isConfirmEnabled)
        emit confirmed();
}

void SheetCard::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::panel, Palette::elevated, Palette::line);
}

void SheetCard::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        return emit cancelled();
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QWidget::keyPressEvent(event);
    auto* const button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    if (button != nullptr && !button->isCheckable() && !event->modifiers().testFlag(Qt::ControlModifier))
        button->click();
    else
        confirm();
}

SheetScaffold::SheetScaffold(const QString& title, const QString& cancelTitle, const QString& confirmTitle,
                             QWidget* parent)
    : SheetCard({380, 320}, {560, 640}, parent),
      m_title(new TextLabel(title, BrandFont::sheetTitle(), Palette::text, this)),
      m_subtitle(new TextLabel({}, BrandFont::secondary(), Palette::textSoft, this)),
      m_scrolledEdge(new HairlineDivider(Qt::Horizontal, this)),
      m_scroll(new ScrollPage({Metric::xl, Metric::xs, Metric::xl, Metric::l}, this)),
      m_cancel(new Button(cancelTitle, Button::Variant::ghost, this)),
      m_confirm(new Button(confirmTitle, Button::Variant::primary, this)) {
    setAccessibleName(title);
    arrange();
    connect(m_cancel, &Button::clicked, this, &SheetScaffold::cancelled);
    connect(m_confirm, &Button::clicked, this, &SheetScaffold::confirmed);
    connect(this, &SheetScaffold::confirmEnabledChanged, m_confirm, &Button::setEnabled);
    connect(qApp, &QApplication::focusChanged, this, &SheetScaffold::revealFocus);
}

// The controls are destroyed after this and give the focus away as they are: there is nothing left to follow it.
SheetScaffold::~SheetScaffold() {
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(m_scroll->verticalScrollBar(), nullptr, this, nullptr);
}

void SheetScaffold::arrange() {
    m_subtitle->hide();
    m_scrolledEdge->setSizePolicy(retaining(m_scrolledEdge->sizePolicy()));
    auto* const bar = m_scroll->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, &SheetScaffold::revealFocus);
    connect(bar, &QScrollBar::valueChanged, this, &SheetScaffold::showScrolling);
    showScrolling();

    auto* const heading = new QVBoxLayout;
    heading->setContentsMargins(Metric::xl, Metric::xl, Metric::xl, Metric::m);
    heading->setSpacing(2);
    heading->addWidget(m_title);
    heading->addWidget(m_subtitle);

    auto* const footer = new QHBoxLayout;
    footer->setContentsMargins(Metric::xl, 0, Metric::xl, 0);
    footer->setSpacing(Metric::s);
    footer->addStretch();
    footer->addWidget(m_cancel);
    footer->addWidget(m_confirm);
    auto* const footerBox = new QWidget(this);
    footerBox->setFixedHeight(footerHeight);
    footerBox->setLayout(footer);

    auto* const column = bareColumn(this, 0);
    column->addLayout(heading);
    column->addWidget(m_scrolledEdge);
    column->addWidget(m_scroll, 1);
    column->addWidget(new HairlineDivider(Qt::Horizontal, this));
    column->addWidget(footerBox);
}

/// A form that has moved up goes under an edge.
void SheetScaffold::showScrolling() {
    m_scrolledEdge->setVisible(m_scroll->verticalScrollBar()->value() > 0);
}

QVBoxLayout* SheetScaffold::content() const noexcept {
    return m_scroll->content();
}

void SheetScaffold::setBody(QWidget* body) {
    delete layout()->replaceWidget(m_scroll, body);
    static_cast<QVBoxLayout*>(layout())->setStretchFactor(body, 1);
    m_scroll->hide();
}

void SheetScaffold::setSubtitle(const QString& subtitle) {
    m_subtitle->setText(subtitle);
    m_subtitle->setVisible(!subtitle.isEmpty());
}

/// Scrolls to the control with the focus. A control that was added just now has its place once the form has grown.
void SheetScaffold::revealFocus() {
    auto* const focus = QApplication::focusWidget();
    if (focus != nullptr && m_scroll->widget()->isAncestorOf(focus))
        m_scroll->ensureWidgetVisible(focus, 0, Metric::xxl);
}

SheetHost::SheetHost(QWidget* below, QWidget* parent)
    : QWidget(parent), m_below(below), m_motion(new QVariantAnimation(this)) {
    setFocusPolicy(Qt::NoFocus);
    hide();
    parent->installEventFilter(this);
    m_motion->setEasingCurve(Motion::curve);
    connect(m_motion, &QVariantAnimation::valueChanged, this, [this](const QVariant& shown) {
        m_shown = shown.toDouble();
        placeSheet();
        update();
    });
}

void SheetHost::present(QWidget* sheet) {
    const bool isFirst = m_sheet == nullptr;
    if (isFirst) {
        m_formerFocus = window()->focusWidget();
    } else {
        m_sheet->hide();
        m_sheet->deleteLater();
    }
    m_sheet = sheet;
    sheet->setParent(this);
    if (m_below)
        m_below->setEnabled(false);
    setAttribute(Qt::WA_TransparentForMouseEvents, false);
    setGeometry(parentWidget()->rect());
    raise();
    show();
    placeSheet();
    sheet->show();
    focusFirstField();
    if (isFirst)
        fadeTo(1);
}

void SheetHost::focusFirstField() {
    auto* field = TabStops::first(*m_sheet);
    if (auto* const card = qobject_cast<SheetCard*>(m_sheet)) {
        card->orderTabs();
        field = card->firstField();
    }
    if (field != nullptr)
        field->setFocus(Qt::OtherFocusReason);
}

void SheetHost::dismiss() {
    if (!m_sheet)
        return;
    m_sheet->hide();
    m_sheet->deleteLater();
    m_sheet = nullptr;
    if (m_below)
        m_below->setEnabled(true);
    giveFocusBack();
    setAttribute(Qt::WA_TransparentForMouseEvents);  // the window is usable while the backdrop fades
    fadeTo(0, [this] {
        if (!m_sheet)
            hide();
    });
}

void SheetHost::giveFocusBack() {
    // What had the focus may be on a screen that shows no longer, or the very thing that the sheet was for.
    auto* const former = std::exchange(m_formerFocus, nullptr).data();
    if (former && former->isVisible() && former->isEnabled())
        former->setFocus(Qt::OtherFocusReason);
    else
        emit focusLost();
}

void SheetHost::fadeTo(double opacity, std::function<void()> then) {
    m_motion->stop();
    disconnect(m_motion, &QVariantAnimation::finished, this, nullptr);
    if (then)
        connect(m_motion, &QVariantAnimation::finished, this, std::move(then), Qt::SingleShotConnection);
    m_motion->setDuration(Motion::milliseconds());
    m_motion->setStartValue(m_shown);
    m_motion->setEndValue(opacity);
    m_motion->start();
}

void SheetHost::placeSheet() {
    if (!m_sheet)
        return;
    const int edge = height() < roomyHeight ? smallMargin : margin;
    const QSize room = size() - QSize(2 * edge, 2 * edge);
    const QSize card = m_sheet->sizeHint().boundedTo(room).expandedTo(m_sheet->minimumSizeHint().boundedTo(size()));
    const int down = qRound((1 - m_shown) * rise);
    m_sheet->setGeometry(QRect(QPoint((width() - card.width()) / 2, (height() - card.height()) / 2 + down), card));
}

void SheetHost::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Palette::withOpacity(Qt::black, dimming * m_shown));
    if (m_sheet)
        Painting::shadow(painter, m_sheet->geometry(), Radius::panel, shadowWidth, shadowDrop, m_shown);
}

void SheetHost::mousePressEvent(QMouseEvent*) {
    // The backdrop takes clicks, so that none reaches what lies below.
}

bool SheetHost::focusNextPrevChild(bool next) {
    return m_sheet && TabStops::move(*m_sheet, next);
}

bool SheetHost::eventFilter(QObject* watched, QEvent* event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
        placeSheet();
    }
    return false;
}
