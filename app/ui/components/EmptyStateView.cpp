// SPDX-License-Identifier: MIT
#include "app/ui/components/EmptyStateView.h"

#include "app/ui/Theme.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"

#include <QVBoxLayout>

namespace {

constexpr int tileSide = 56;
constexpr int messageWidth = 280;

}  // namespace

EmptyStateView::EmptyStateView(const QString& symbol, const QString& title, const QString& message, QWidget* parent)
    : QWidget(parent), m_column(new QVBoxLayout) {
    setAccessibleName(title);
    auto* const heading = new TextLabel(title, BrandFont::sectionTitle(), Palette::text, this);
    heading->setAlignment(Qt::AlignCenter);
    auto* const sentence = new Paragraph(message, BrandFont::secondary(), Palette::textSoft, this);
    sentence->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    sentence->setFixedWidth(messageWidth);
    sentence->setMinimumHeight(
        sentence->heightForWidth(messageWidth));  // a centred widget is given no height for its width

    m_column->setSpacing(Metric::s);
    m_column->addStretch();
    m_column->addWidget(new SymbolTile(symbol, Palette::textSoft, tileSide, this), 0, Qt::AlignHCenter);
    m_column->addSpacing(Metric::s);
    m_column->addWidget(heading, 0, Qt::AlignHCenter);
    m_column->addWidget(sentence, 0, Qt::AlignHCenter);
    m_column->addStretch();
    setLayout(m_column);
}

void EmptyStateView::setAction(const QString& title, std::function<void()> action) {
    auto* const button = new Button(title, Button::Variant::secondary, this);
    connect(button, &Button::clicked, this, std::move(action));
    addBelow(button);
}

void EmptyStateView::addBelow(QWidget* widget) {
    m_column->insertSpacing(m_column->count() - 1, Metric::s);
    m_column->insertWidget(m_column->count() - 1, widget, 0, Qt::AlignHCenter);
}
