// SPDX-License-Identifier: MIT
#include "app/ui/components/MetaStat.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Theme.h"

namespace {

constexpr int narrowest = 124;  // the widest date fits, and two fit side by side in the usual column

}  // namespace

MetaStat::MetaStat(const QString& label, const QString& value, QWidget* parent)
    : QWidget(parent), m_value(new TextLabel(value, BrandFont::secondary(), Palette::text)) {
    setMinimumWidth(narrowest);
    m_value->setAccessibleDescription(label);
    auto* const lines = bareColumn(this, Metric::xs);
    lines->addWidget(new FieldLabel(label));
    lines->addWidget(m_value);
}

void MetaStat::setValue(const QString& value) {
    m_value->setText(value);
}
