// SPDX-License-Identifier: MIT
#include "app/ui/window/AboutView.h"

#include "app/ui/components/Accessible.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace {

constexpr int sheetWidth = 360;
constexpr int markSide = 52;

Paragraph* centred(const QString& text, const QFont& font, const QColor& colour) {
    auto* const paragraph = new Paragraph(text, font, colour);
    paragraph->setAlignment(Qt::AlignHCenter);
    return paragraph;
}

}  // namespace

AboutView::AboutView(QWidget* parent) : QWidget(parent) {
    Accessible::setRole(*this, QAccessible::Dialog);
    setAccessibleName(QStringLiteral("Brenvik Hakkında"));
    auto* const close = new Button(QStringLiteral("Kapat"));
    connect(close, &Button::clicked, this, &AboutView::dismissed);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metric::xl, Metric::xxl, Metric::xl, Metric::xl);
    column->setSpacing(Metric::xs);
    column->addWidget(new BrandMark(markSide), 0, Qt::AlignHCenter);
    column->addSpacing(Metric::m);
    column->addWidget(new TextLabel(QStringLiteral("Brenvik"), BrandFont::sheetTitle(), Palette::text), 0,
                      Qt::AlignHCenter);
    column->addWidget(new TextLabel(QStringLiteral("Sürüm %1").arg(QStringLiteral(BRENVIK_VERSION)),
                                    BrandFont::secondary(), Palette::textSoft),
                      0, Qt::AlignHCenter);
    column->addSpacing(Metric::m);
    column->addWidget(
        centred(QStringLiteral("Parolaların yerel, şifreli ve sende."), BrandFont::bodyText(), Palette::text));
    column->addSpacing(Metric::s);
    column->addWidget(
        centred(QStringLiteral("MIT lisansıyla özgür yazılım. Yazı tipi Inter (SIL OFL 1.1), simgeler Bootstrap "
                               "Icons (MIT), arayüz Qt (LGPL 3)."),
                BrandFont::label(), Palette::textSoft));
    column->addStretch();
    column->addSpacing(Metric::l);
    column->addWidget(close, 0, Qt::AlignHCenter);
}

QSize AboutView::sizeHint() const {
    return {sheetWidth, layout()->totalHeightForWidth(sheetWidth)};
}

void AboutView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::roundedBox(painter, rect(), Radius::panel, Palette::elevated, Palette::line);
}

void AboutView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        emit dismissed();
    else
        QWidget::keyPressEvent(event);
}
