// SPDX-License-Identifier: MIT
#include "app/ui/components/EmptyStateView.h"

#include "app/ui/Symbol.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Accessible.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Painting.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int tileSide = 56;
constexpr int symbolSide = 24;
constexpr int messageWidth = 280;

/// A quiet symbol on a tile of its own: an empty place has no entry whose tint it could take.
class QuietTile final : public QWidget {
public:
    QuietTile(QString symbol, QWidget* parent) : QWidget(parent), m_symbol(std::move(symbol)) {
        setFixedSize(tileSide, tileSide);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        Painting::roundedBox(painter, rect(), Radius::panel, Palette::surface, Palette::line);
        const double inset = (tileSide - symbolSide) / 2.0;
        Symbol::paint(painter, QRectF(inset, inset, symbolSide, symbolSide), m_symbol, Palette::textMuted);
    }

private:
    QString m_symbol;
};

}  // namespace

EmptyStateView::EmptyStateView(const QString& symbol, const QString& title, const QString& message, QWidget* parent)
    : QWidget(parent), m_column(new QVBoxLayout(this)) {
    Accessible::setRole(*this, QAccessible::Grouping);
    setAccessibleName(title);
    auto* const heading = new Paragraph(title, BrandFont::sectionTitle(), Palette::text);
    auto* const sentence = new Paragraph(message, BrandFont::secondary(), Palette::textSoft);

    m_column->setContentsMargins(Metric::l, Metric::l, Metric::l, Metric::l);
    m_column->setSpacing(0);
    m_column->addStretch();
    m_column->addWidget(new QuietTile(symbol, this), 0, Qt::AlignHCenter);
    m_column->addSpacing(Metric::l);
    m_column->addLayout(centred(heading));
    m_column->addSpacing(Metric::s);
    m_column->addLayout(centred(sentence));
    m_column->addStretch();
}

/// A line with a text in its middle. The text is given its height for its width here; by an alignment it is not.
QLayout* EmptyStateView::centred(Paragraph* text) {
    text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    text->setMaximumWidth(messageWidth);
    auto* const line = new QHBoxLayout;
    line->addStretch();
    line->addWidget(text, 1);
    line->addStretch();
    return line;
}

void EmptyStateView::setAction(const QString& title, std::function<void()> action) {
    auto* const button = new Button(title, Button::Variant::secondary, this);
    connect(button, &Button::clicked, this, std::move(action));
    addBelow(button);
}

void EmptyStateView::addBelow(QWidget* widget) {
    m_column->insertSpacing(m_column->count() - 1, Metric::l);
    m_column->insertWidget(m_column->count() - 1, widget, 0, Qt::AlignHCenter);
}
