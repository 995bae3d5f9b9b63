// SPDX-License-Identifier: MIT
#include "app/ui/components/QuickButtons.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Button.h"

#include <QHBoxLayout>

namespace {

constexpr int gap = 6;

}  // namespace

QuickButtons::QuickButtons(const QList<int>& numbers, const QString& label, Width width, QWidget* parent)
    : QWidget(parent) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    for (const int number : numbers) {
        auto* const button = new Button(label.arg(number), Button::Variant::secondary, this);
        button->setSmall(true);
        button->setCheckable(true);
        connect(button, &Button::clicked, this, [this, number] {
            emit chosen(number);
            showNumber(m_number);  // the click has turned the check round, and only the number may
        });
        m_choices.append({number, button});
        row->addWidget(button, width == Width::equal ? 1 : 0);
    }
    if (width == Width::natural)
        row->addStretch(1);
}

void QuickButtons::showNumber(double number) {
    m_number = number;
    for (const auto& choice : m_choices)
        choice.button->setChecked(choice.number == number);
}
