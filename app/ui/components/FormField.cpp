// SPDX-License-Identifier: MIT
#include "app/ui/components/FormField.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Theme.h"

namespace {

constexpr int labelGap = 6;

}  // namespace

FormField::FormField(const QString& label, QWidget* content, QWidget* parent)
    : QWidget(parent), m_hint(new Paragraph({}, BrandFont::label(), Palette::textSoft, this)) {
    auto* const title = new FieldLabel(label, this);
    title->setBuddy(content);
    if (content->accessibleName().isEmpty())
        content->setAccessibleName(label);

    auto* const column = bareColumn(this, labelGap);
    column->addWidget(title);
    column->addWidget(content);
    column->addWidget(m_hint);
    m_hint->hide();
}

void FormField::setHint(const QString& hint) {
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}
