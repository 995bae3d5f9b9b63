// SPDX-License-Identifier: MIT
#include "app/ui/components/QuickButtons.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/theme/Theme.h"

#include <QSignalBlocker>

namespace {

constexpr int gap = 6;

}  // namespace

QuickButtons::QuickButtons(const QList<int>& numbers, const QString& label, Width width, QWidget* parent)
    : QWidget(parent) {
    auto* const row = bareRow(this, gap);
    for (const int number : numbers) {
        auto* const button = new Button(label.arg(number), Button::Variant::secondary, this);
        Accessible::setRole(*button, QAccessible::RadioButton);
        button->setSmall(true);
        button->setCheckable(true);
        // A click turns the check round, and so does a screen reader, which does not click.
        connect(button, &Button::toggled, this, [this, number] {
            emit chosen(number);
            showNumber(m_number);  // only the number may turn a check round
        });
        m_choices.append({number, button});
        row->addWidget(button, width == Width::equal ? 1 : 0);
    }
    if (width == Width::natural)
        row->addStretch(1);
}

void QuickButtons::nameNumber(int number, const QString& text) {
    for (const auto& choice : m_choices)
        if (choice.number == number)
            choice.button->setText(text);
}

void QuickButtons::showNumber(double number) {
    m_number = number;
    for (const auto& choice : m_choices) {
        const QSignalBlocker showing(choice.button);
        choice.button->setChecked(choice.number == number);
    }
}
