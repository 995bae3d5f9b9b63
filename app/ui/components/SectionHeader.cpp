// SPDX-License-Identifier: MIT
#include "app/ui/components/SectionHeader.h"

#include "app/ui/components/Labels.h"
#include "app/ui/theme/Painting.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

SectionHeader::SectionHeader(QWidget* parent)
    : QWidget(parent),
      m_title(new TextLabel({}, BrandFont::sectionTitle(), Palette::text, this)),
      m_subtitle(new TextLabel({}, BrandFont::label(), Palette::textSoft, this)),
      m_line(new QHBoxLayout(this)) {
    setFixedHeight(sectionHeight);
    auto* const titles = new QVBoxLayout;
    titles->setSpacing(2);
    titles->addStretch();
    titles->addWidget(m_title);
    titles->addWidget(m_subtitle);
    titles->addStretch();
    m_line->setContentsMargins(Metric::l, 0, Metric::m, 0);
    m_line->setSpacing(Metric::xs);
    m_line->addLayout(titles, 1);
}

void SectionHeader::setTitle(const QString& title) {
    m_title->setText(title);
}

void SectionHeader::setSubtitle(const QString& subtitle) {
    m_subtitle->setText(subtitle);
}

void SectionHeader::addAction(QWidget* control) {
    m_line->addWidget(control);
}

void SectionHeader::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    Painting::hairline(painter, QPointF(0, height() - Metric::hairline), width(), Qt::Horizontal, Palette::line);
}
