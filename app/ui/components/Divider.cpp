// SPDX-License-Identifier: MIT
#include "app/ui/components/Divider.h"

#include "app/ui/theme/Theme.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QSplitter>

#include <algorithm>

namespace {

constexpr int step = 10;
constexpr double ringOpacity = 0.22;

class DividerAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit DividerAccessible(Divider& divider)
        : QAccessibleWidget(&divider, QAccessible::Separator), m_divider(divider) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    [[nodiscard]] QAccessible::State state() const override {
        auto state = QAccessibleWidget::state();
        state.focusable = true;  // though Tab passes it by
        return state;
    }

    [[nodiscard]] QVariant currentValue() const override { return m_divider.columnWidth(); }
    void setCurrentValue(const QVariant& value) override { m_divider.setColumnWidth(value.toInt()); }
    [[nodiscard]] QVariant minimumValue() const override { return m_divider.narrowest(); }
    [[nodiscard]] QVariant maximumValue() const override { return m_divider.widest(); }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

private:
    Divider& m_divider;
};

}  // namespace

Divider::Divider(QSplitter* columns) : QSplitterHandle(Qt::Horizontal, columns) {
    connect(columns, &QSplitter::splitterMoved, this, [this] {
        QAccessibleValueChangeEvent changed(this, columnWidth());
        QAccessible::updateAccessibility(&changed);
    });
}

QAccessibleInterface* Divider::accessible(Divider& divider) {
    return new DividerAccessible(divider);
}

int Divider::columnWidth() const {
    return splitter()->sizes().value(splitter()->indexOf(const_cast<Divider*>(this)) - 1);
}

/// Where the column before it starts, from the splitter's leading edge.
int Divider::columnStart() const {
    const auto* const column = splitter()->widget(splitter()->indexOf(const_cast<Divider*>(this)) - 1);
    const bool isReversed = splitter()->layoutDirection() == Qt::RightToLeft;
    return isReversed ? splitter()->contentsRect().width() - column->geometry().right() - 1 : column->x();
}

std::pair<int, int> Divider::limits() const {
    int first = 0;
    int last = 0;
    splitter()->getRange(splitter()->indexOf(const_cast<Divider*>(this)), &first, &last);
    return {first - columnStart(), last - columnStart()};
}

void Divider::setColumnWidth(int width) {
    const int place = columnStart() + std::clamp(width, narrowest(), widest());
    const bool isReversed = splitter()->layoutDirection() == Qt::RightToLeft;
    moveSplitter(isReversed ? splitter()->contentsRect().width() - place : place);
}

void Divider::keyPressEvent(QKeyEvent* event) {
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return QSplitterHandle::keyPressEvent(event);
    const int onwards = layoutDirection() == Qt::RightToLeft ? -step : step;
    switch (event->key()) {
        case Qt::Key_Left:
            return setColumnWidth(columnWidth() - onwards);
        case Qt::Key_Right:
            return setColumnWidth(columnWidth() + onwards);
        case Qt::Key_Home:
            return setColumnWidth(narrowest());
        case Qt::Key_End:
            return setColumnWidth(widest());
        case Qt::Key_Backspace:
            return emit resetWanted();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return emit finished();
        case Qt::Key_Escape:
            return emit cancelled();
        default:
            QSplitterHandle::keyPressEvent(event);
    }
}

void Divider::mouseDoubleClickEvent(QMouseEvent*) {
    emit resetWanted();
}

void Divider::focusInEvent(QFocusEvent* event) {
    QSplitterHandle::focusInEvent(event);
    showFocus();
}

void Divider::focusOutEvent(QFocusEvent* event) {
    QSplitterHandle::focusOutEvent(event);
    showFocus();
}

void Divider::resizeEvent(QResizeEvent* event) {
    QSplitterHandle::resizeEvent(event);
    showFocus();
}

/// With the keyboard it is as wide as what takes the pointer, else the hairline alone.
void Divider::showFocus() {
    if (hasFocus())
        clearMask();
    else
        setMask(contentsRect());
    update();
}

void Divider::paintEvent(QPaintEvent* event) {
    if (!hasFocus())
        return QSplitterHandle::paintEvent(event);
    QPainter painter(this);
    painter.fillRect(rect(), Palette::withOpacity(Palette::accent, ringOpacity));
    painter.fillRect(contentsRect().adjusted(-1, 0, 1, 0), Palette::accent);
}
