// SPDX-License-Identifier: MIT
#include "app/ui/editor/CustomFieldRow.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/SecretField.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QGridLayout>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace {

constexpr int narrowestRow = 400;  // below this, the value goes under its name

}  // namespace

CustomFieldRow::CustomFieldRow(const Value& value, ClipboardService& clipboard, QWidget* parent)
    : QWidget(parent),
      m_key(new TextField(QStringLiteral("Alan adı"), this)),
      m_value(new SecretField(QStringLiteral("Değer"), this)),
      m_protection(new IconButton(QStringLiteral("lock.fill"), QStringLiteral("Korumalı"), this)),
      m_remove(new IconButton(QStringLiteral("trash"), QStringLiteral("Alanı sil"), this)),
      m_isProtected(value.isProtected) {
    Accessible::setRole(*this, QAccessible::Grouping);
    m_key->setPlaceholderText(QStringLiteral("Alan adı"));
    m_key->setWholeText(value.key);
    m_value->setPlaceholderText(QStringLiteral("Değer"));
    m_value->setWholeText(value.value);
    m_value->setCopying([&clipboard](std::string_view secret) { clipboard.copySecret(secret); });
    connect(m_protection, &IconButton::clicked, this, [this] {
        m_isProtected = !m_isProtected;
        showProtection();
    });
    connect(m_remove, &IconButton::clicked, this, &CustomFieldRow::removed);
    connect(m_key, &TextField::textChanged, this, &CustomFieldRow::tellName);
    tellName();
    arrange(false);
    showProtection();
}

void CustomFieldRow::arrange(bool isStacked) {
    delete layout();
    auto* const cells = new QGridLayout(this);
    cells->setContentsMargins(0, 0, 0, 0);
    cells->setHorizontalSpacing(Metric::xs);
    cells->setVerticalSpacing(Metric::s);
    if (isStacked) {
        cells->addWidget(m_key, 0, 0);
        cells->addWidget(m_value, 1, 0, 1, 3);
    } else {
        cells->addWidget(m_key, 0, 0);
        cells->addItem(new QSpacerItem(Metric::xs, 0), 0, 1);
        cells->addWidget(m_value, 0, 2);
        cells->setColumnStretch(2, 3);
    }
    cells->addWidget(m_protection, 0, isStacked ? 1 : 3);
    cells->addWidget(m_remove, 0, isStacked ? 2 : 4);
    cells->setColumnStretch(0, 2);
}

void CustomFieldRow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const auto isNarrow = [](int width) { return width < narrowestRow; };
    if (!event->oldSize().isValid() || isNarrow(event->oldSize().width()) != isNarrow(width()))
        arrange(isNarrow(width()));
}

CustomFieldRow::Value CustomFieldRow::value() const {
    return {.key = m_key->wholeText(), .value = m_value->secret(), .isProtected = m_isProtected};
}

/// The controls of all rows are called the same; a screen reader distinguishes them by what is around them.
void CustomFieldRow::tellName() {
    setAccessibleName(m_key->text().isEmpty() ? QStringLiteral("Adsız alan") : LongText::beginning(m_key->text()));
}

void CustomFieldRow::showProtection() {
    m_protection->setSymbol(m_isProtected ? QStringLiteral("lock.fill") : QStringLiteral("lock.open"));
    m_protection->setTip(m_isProtected ? QStringLiteral("Korumalı") : QStringLiteral("Düz metin"));
    m_protection->setTint(m_isProtected ? Palette::text : Palette::textSoft);
    m_value->setMasking(m_isProtected);
}

CustomFieldsCard::CustomFieldsCard(ClipboardService& clipboard, QWidget* parent)
    : Card(QStringLiteral("Özel alanlar"), parent),
      m_clipboard(clipboard),
      m_add(new Button(QStringLiteral("Alan ekle"), Button::Variant::secondary)),
      m_nothing(new Paragraph(QStringLiteral("Henüz özel alan yok."), BrandFont::secondary(), Palette::textSoft)) {
    m_add->setSmall(true);
    m_add->setSymbol(QStringLiteral("plus"));
    headingLine()->addWidget(m_add);
    content()->addWidget(m_nothing);
    connect(m_add, &Button::clicked, this, &CustomFieldsCard::addEmpty);
}

CustomFieldRow& CustomFieldsCard::add(const CustomFieldRow::Value& value) {
    auto* const row = new CustomFieldRow(value, m_clipboard);
    m_rows.append(row);
    content()->addWidget(row);
    connect(row, &CustomFieldRow::removed, this, [this, row] { remove(row); });
    showEmptiness();
    return *row;
}

void CustomFieldsCard::addEmpty() {
    auto& row = add({});
    row.show();
    emit rowsChanged();
    row.keyField()->setFocus(Qt::OtherFocusReason);
}

/// The focus stays where the eye is: on the row that moves up, else on the one above, else on the way to a new one.
void CustomFieldsCard::remove(CustomFieldRow* row) {
    const auto place = m_rows.indexOf(row);
    m_rows.removeAt(place);
    if (m_rows.isEmpty())
        m_add->setFocus(Qt::OtherFocusReason);
    else
        m_rows.at(std::min(place, m_rows.size() - 1))->removeButton()->setFocus(Qt::OtherFocusReason);
    row->hide();
    row->deleteLater();
    showEmptiness();
    emit rowsChanged();
}

void CustomFieldsCard::showEmptiness() {
    m_nothing->setVisible(m_rows.isEmpty());
}
