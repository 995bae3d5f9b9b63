// SPDX-License-Identifier: MIT
#include "app/ui/components/SearchField.h"

#include "app/ui/components/IconButton.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>

namespace {

constexpr int glassSide = 14;
constexpr int glassInset = 10;
constexpr int clearSide = 22;
constexpr int narrowest = 120;
constexpr int ideal = 260;
constexpr int widest = 380;
constexpr int mostLetters = 4000;  // more than anybody looks for, where a whole text was pasted

}  // namespace

SearchField::SearchField(const QString& placeholder, QWidget* parent)
    : TextField(placeholder, parent),
      m_clear(new IconButton(QStringLiteral("xmark.circle.fill"), QStringLiteral("Aramayı temizle"), this)) {
    setPlaceholderText(placeholder);
    setMaxLength(mostLetters);
    setMinimumWidth(narrowest);
    setMaximumWidth(widest);
    setLeadingRoom(glassSide + glassInset - 2);
    setTrailingRoom(clearSide - 4);
    m_clear->setSides(clearSide, 12);
    m_clear->hide();
    connect(m_clear, &IconButton::clicked, this, &SearchField::clear);
    connect(this, &SearchField::textChanged, m_clear,
            [this](const QString& text) { m_clear->setVisible(!text.isEmpty()); });
}

QSize SearchField::sizeHint() const {
    return {ideal, TextField::sizeHint().height()};
}

void SearchField::keyPressEvent(QKeyEvent* event) {
    if ((event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return TextField::keyPressEvent(event);
    switch (event->key()) {
        case Qt::Key_Escape:
            clear();
            return emit finished();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return emit firstResultWanted();
        case Qt::Key_Down:
            return emit resultsWanted();
        default:
            TextField::keyPressEvent(event);
    }
}

void SearchField::paintEvent(QPaintEvent* event) {
    TextField::paintEvent(event);
    QPainter painter(this);
    const int left = layoutDirection() == Qt::RightToLeft ? width() - glassInset - glassSide : glassInset;
    Symbol::paint(painter, QRectF(left, (height() - glassSide) / 2.0, glassSide, glassSide),
                  QStringLiteral("magnifyingglass"), Palette::textSoft);
}

void SearchField::resizeEvent(QResizeEvent* event) {
    TextField::resizeEvent(event);
    const int gap = (height() - clearSide) / 2;
    m_clear->move(layoutDirection() == Qt::RightToLeft ? gap : width() - clearSide - gap, gap);
}

void SearchField::dragEnterEvent(QDragEnterEvent* event) {
    const QObject* source = event->source();
    if (source && source != this)
        return event->ignore();
    TextField::dragEnterEvent(event);
}
