// SPDX-License-Identifier: MIT
#include "app/ui/components/FieldRow.h"

#include "app/ui/components/Labels.h"
#include "app/ui/theme/Theme.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>

namespace {

constexpr int narrowestValue = 132;
constexpr int textGap = 3;
constexpr int usualValueWidth = 200;

QWidget* valueOf(const QString& label, const QString& text) {
    auto* const value = text.isEmpty() ? new Paragraph(QStringLiteral("—"), BrandFont::bodyText(), Palette::textMuted)
                                       : new Paragraph(text, BrandFont::bodyText(), Palette::text);
    value->setAccessibleDescription(label);
    return value;
}

int heightOf(const QWidget& widget, int width) {
    return widget.hasHeightForWidth() ? widget.heightForWidth(width) : widget.sizeHint().height();
}

}  // namespace

FieldRow::FieldRow(const QString& label, QWidget* value, QWidget* parent)
    : QWidget(parent), m_labelGap(textGap), m_label(new FieldLabel(label, this)), m_value(value) {
    m_value->setParent(this);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

FieldRow::FieldRow(const QString& label, const QString& value, QWidget* parent)
    : FieldRow(label, valueOf(label, value), parent) {}

void FieldRow::setLabelGap(int gap) {
    m_labelGap = gap;
    updateGeometry();
}

void FieldRow::addAction(QWidget* control) {
    control->setParent(this);
    m_actions.push_back(control);
    updateGeometry();
}

int FieldRow::actionsWidth() const {
    int width = 0;
    for (const auto* action : m_actions)
        width += action->sizeHint().width() + (width > 0 ? Metric::xs : 0);
    return width;
}

FieldRow::Plan FieldRow::plan(int width) const {
    const int labelHeight = m_label->sizeHint().height();
    const int taken = m_actions.empty() ? 0 : actionsWidth() + Metric::s;
    const bool isStacked = taken > 0 && width - taken < narrowestValue;
    const int valueWidth = isStacked ? width : width - taken;

    int actionHeight = 0;
    for (const auto* action : m_actions)
        actionHeight = std::max(actionHeight, action->sizeHint().height());
    // Beside a value the controls are in the middle of the label and the value's first line, and stay there however
    // many lines follow. Above one they share the label's line.
    const int head = isStacked ? std::max(labelHeight, actionHeight)
                               : std::max(labelHeight + m_labelGap + m_value->minimumSizeHint().height(), actionHeight);
    const int labelTop = isStacked ? (head - labelHeight) / 2 : 0;
    const int valueTop = isStacked ? head : labelHeight + m_labelGap;

    Plan plan;
    plan.label = QRect(0, labelTop, std::max(width - taken, 0), labelHeight);
    plan.value = QRect(0, valueTop, valueWidth, heightOf(*m_value, valueWidth));
    plan.height = std::max(plan.value.bottom() + 1, head);
    int left = width - actionsWidth();
    for (const auto* action : m_actions) {
        const QSize size = action->sizeHint();
        plan.actions.emplace_back(QPoint(left, (head - size.height()) / 2), size);
        left += size.width() + Metric::xs;
    }
    return plan;
}

int FieldRow::heightForWidth(int width) const {
    return plan(width).height;
}

QSize FieldRow::sizeHint() const {
    const int width = usualValueWidth + actionsWidth();
    return {width, heightForWidth(width)};
}

QSize FieldRow::minimumSizeHint() const {
    return {actionsWidth(), m_label->sizeHint().height()};
}

bool FieldRow::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest) {  // a part has another size now
        place();
        updateGeometry();
    }
    return QWidget::event(event);
}

void FieldRow::resizeEvent(QResizeEvent*) {
    place();
}

void FieldRow::place() {
    const auto [label, value, actions, height] = plan(width());
    const auto put = [this](QWidget& widget, const QRect& area) {
        widget.setGeometry(QStyle::visualRect(layoutDirection(), rect(), area));
    };
    put(*m_label, label);
    put(*m_value, value);
    for (std::size_t i = 0; i < actions.size(); ++i)
        put(*m_actions[i], actions[i]);
}
