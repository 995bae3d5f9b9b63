// SPDX-License-Identifier: MIT
#include "app/ui/components/FormField.h"

#include "app/ui/components/Labels.h"
#include "app/ui/theme/Theme.h"

#include <QVBoxLayout>

namespace {

constexpr int labelGap = 6;

}  // namespace

FormField::FormField(const QString& label, QWidget* content, QWidget* parent)
    : QWidget(parent),
      m_hint(new Paragraph({}, BrandFont::label(), Palette::textSoft, this)),
      m_error(new Paragraph({}, BrandFont::label(), Palette::danger, this)) {
    auto* const title = new FieldLabel(label, this);
    title->setBuddy(content);
    if (content->accessibleName().isEmpty())
        content->setAccessibleName(label);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(labelGap);
    column->addWidget(title);
    column->addWidget(content);
    column->addWidget(m_hint);
    column->addWidget(m_error);
    m_hint->hide();
    m_error->hide();
}

void FormField::setHint(const QString& hint) {
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}

void FormField::setError(const QString& error) {
    m_error->setText(error);
    m_error->setVisible(!error.isEmpty());
}
