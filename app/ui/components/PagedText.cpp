// SPDX-License-Identifier: MIT
#include "app/ui/components/PagedText.h"

#include "app/ui/components/BareLayout.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/FlowLayout.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/SelectableText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

#include <QLocale>

#include <algorithm>

PagedText::PagedText(const QString& name, const QString& key, std::string text, QWidget* parent)
    : QWidget(parent),
      m_text(std::move(text)),
      m_pages(LongText::pagesOf(m_text)),
      m_shown(new SelectableText(name, {})) {
    m_shown->setObjectName(key);
    auto* const column = bareColumn(this, Metric::s);
    column->addWidget(m_shown);
    if (m_pages.size() > 1)
        addPager(key);
    showPage();
}

void PagedText::addPager(const QString& key) {
    m_shown->setWholeText([this] { return qtText(m_text); });
    m_place = new TextLabel({}, BrandFont::secondary(), Palette::textSoft);
    auto* const pager = new QWidget;
    auto* const line = new FlowLayout(Metric::s, pager);
    line->addWidget(m_place);
    const auto add = [&](const char* verb, const QString& text, std::vector<Button*>& side, auto target) {
        auto* const button = new Button(text, Button::Variant::secondary);
        button->setSmall(true);
        button->setObjectName(key + QLatin1Char('.') + QLatin1String(verb));
        connect(button, &Button::clicked, this, [this, target] { turnTo(target()); });
        side.push_back(button);
        line->addWidget(button);
    };
    add("first", QStringLiteral("Başa"), m_back, [] { return std::size_t{0}; });
    add("previous", QStringLiteral("Önceki"), m_back, [this] { return m_page - 1; });
    add("next", QStringLiteral("Sonraki"), m_forth, [this] { return m_page + 1; });
    add("last", QStringLiteral("Sona"), m_forth, [this] { return m_pages.size() - 1; });
    layout()->addWidget(pager);
}

void PagedText::turnTo(std::size_t page) {
    m_page = std::min(page, m_pages.size() - 1);
    showPage();
    emit turned();
}

/// The focus goes the other way where the last page is reached by a button that works no longer.
void PagedText::showPage() {
    const auto begin = m_pages[m_page];
    const auto end = m_page + 1 < m_pages.size() ? m_pages[m_page + 1] : m_text.size();
    m_shown->showText(qtText(std::string_view(m_text).substr(begin, end - begin)));
    if (m_place == nullptr)
        return;
    const QLocale locale;
    m_place->setText(QStringLiteral("Sayfa %1 / %2").arg(locale.toString(m_page + 1), locale.toString(m_pages.size())));
    const auto* const focused = window()->focusWidget();
    const bool isOurs = isAncestorOf(focused);
    for (auto* const button : m_back)
        button->setEnabled(m_page > 0);
    for (auto* const button : m_forth)
        button->setEnabled(m_page + 1 < m_pages.size());
    if (isOurs && !focused->isEnabled())
        (m_page == 0 ? m_forth.front() : m_back.back())->setFocus(Qt::OtherFocusReason);
}

QSize PagedText::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}
