// SPDX-License-Identifier: MIT
#include "app/ui/unlock/KeyFileField.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SymbolMark.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

namespace {

constexpr int rowHeight = 30;
constexpr int symbolSide = 14;

}  // namespace

KeyFileField::KeyFileField(QWidget* parent) : KeyFileField(new QWidget, parent) {}

KeyFileField::KeyFileField(QWidget* content, QWidget* parent)
    : FormField(QStringLiteral("Anahtar dosyası"), content, parent),
      m_choose(new Button(QStringLiteral("Dosya seç…"))),
      m_chosen(new QWidget),
      m_name(new TextLabel({}, BrandFont::body(12, QFont::DemiBold), Palette::success)) {
    m_choose->setSymbol(QStringLiteral("key.horizontal"));
    connect(m_choose, &Button::clicked, this, &KeyFileField::chooseWanted);
    auto* const remove = new Button(QStringLiteral("Kaldır"));
    remove->setSmall(true);
    connect(remove, &Button::clicked, this, [this] { setFile(std::nullopt); });

    auto* const chosen = bareRow(m_chosen, Metric::s);
    chosen->addWidget(new SymbolMark(QStringLiteral("key.horizontal"), Palette::success, symbolSide));
    chosen->addWidget(m_name, 1);
    chosen->addWidget(remove);
    Accessible::setRole(*content, QAccessible::Grouping);
    content->setMinimumHeight(rowHeight);
    auto* const row = bareRow(content, 0);
    row->addWidget(m_choose, 0, Qt::AlignLeft);
    row->addWidget(m_chosen, 1);
    setFile(std::nullopt);
}

void KeyFileField::setFile(std::optional<std::filesystem::path> file) {
    m_file = std::move(file);
    m_choose->setVisible(!m_file);
    m_chosen->setVisible(m_file.has_value());
    setHint(m_file ? QString() : QStringLiteral("İsteğe bağlı — ikinci bir faktör."));
    m_name->setText(m_file ? qtPath(m_file->filename()) : QString());
    emit fileChanged();
}
