// SPDX-License-Identifier: MIT
#include "app/ui/components/EmptyStateView.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int tileSide = 56;
constexpr int symbolSide = 24;
constexpr int messageWidth = 280;
constexpr int usualHeight = 176;  // of the tile and the texts, with a way out

/// A quiet symbol on a tile of its own: an empty state has no entry whose tint it could take.
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
    m_top = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding);
    m_column->addItem(m_top);
    m_column->addWidget(new QuietTile(symbol, this), 0, Qt::AlignHCenter);
    m_column->addSpacing(Metric::l);
    m_column->addLayout(centred(heading));
    m_column->addSpacing(Metric::s);
    m_column->addLayout(centred(sentence));
    m_column->addStretch();
}

void EmptyStateView::standBeside(int headroom) {
    m_headroom = headroom;
}

void EmptyStateView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (!m_headroom)
        return;
    const int content = m_column->totalHeightForWidth(width()) - m_top->sizeHint().height();
    const int top = (height() + *m_headroom - usualHeight) / 2 - *m_headroom - Metric::l;
    m_top->changeSize(0, std::clamp(top, 0, std::max(0, height() - content)), QSizePolicy::Minimum, QSizePolicy::Fixed);
    m_column->invalidate();
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
