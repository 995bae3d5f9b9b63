// SPDX-License-Identifier: MIT
#include "app/ui/EntryDetailView.h"

#include "app/state/AppState.h"
#include "app/ui/Texts.h"
#include "app/ui/Theme.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/FlowLayout.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/TextField.h"

#include <QKeyEvent>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int edge = 20;
constexpr int tileSide = 44;
constexpr int titleSize = 22;
constexpr std::size_t fewestDots = 8;
constexpr std::size_t mostDots = 32;

QString dotsFor(const SecureString& password) {
    auto text = password.value();
    const auto count = std::clamp(Text::characterCount(text), fewestDots, mostDots);
    wipe(text);
    return QString(static_cast<qsizetype>(count), QChar(0x2022));
}

}  // namespace

EntryDetailView::EntryDetailView(const Environment& environment, QWidget* parent)
    : QScrollArea(parent),
      m_state(environment.state),
      m_tile(new IconTile(0, tileSide)),
      m_title(new QStackedWidget),
      m_titleText(new TextLabel({}, BrandFont::display(titleSize), Palette::text)),
      m_titleField(new TextField(tr("Başlık"))),
      m_rename(new IconButton(QStringLiteral("pencil"), tr("Başlığı değiştir"))) {
    arrange();
    connectControls();
}

void EntryDetailView::arrange() {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* const content = new QWidget;
    m_column = new QVBoxLayout(content);
    m_column->setContentsMargins(edge, edge, edge, edge);
    m_column->setSpacing(Metric::m);
    m_column->addWidget(makeTitle());
    m_column->addSpacing(Metric::xs);
    m_column->addStretch(1);
    setWidget(content);
}

QWidget* EntryDetailView::makeTitle() {
    m_title->addWidget(m_titleText);
    m_title->addWidget(m_titleField);
    m_title->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_title->setFixedHeight(tileSide);
    m_titleField->installEventFilter(this);
    m_rename->setFramed(true);

    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metric::m);
    row->addWidget(m_tile);
    row->addWidget(m_title, 1);
    row->addWidget(m_rename);
    return line;
}

void EntryDetailView::connectControls() {
    connect(m_rename, &IconButton::clicked, this, &EntryDetailView::startRenaming);
    connect(m_titleField, &TextField::editingFinished, this, &EntryDetailView::finishRenaming);
}

void EntryDetailView::show(const KdbxEntry& entry) {
    if (m_entry && m_entry->id != entry.id)
        cancelRenaming();
    m_entry = entry;
    m_tile->setIconID(entry.iconID);
    m_titleText->setText(entry.title.empty() ? tr("Adsız kayıt") : qtText(entry.title));
    showFields();
}

void EntryDetailView::forget() {
    cancelRenaming();
    m_entry.reset();
    m_titleText->clear();
    delete std::exchange(m_fields, nullptr);
}

void EntryDetailView::showFields() {
    delete std::exchange(m_fields, nullptr);
    m_fields = new QWidget;
    auto* const column = new QVBoxLayout(m_fields);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metric::m);

    auto* const credentials = new Card;
    addRow(*credentials, tr("Kullanıcı adı"), qtText(m_entry->username), BrandFont::bodyText());
    credentials->addDivider();
    addRow(*credentials, tr("Parola"), dotsFor(m_entry->password), BrandFont::mono(13));
    column->addWidget(credentials);

    if (!m_entry->url.empty() || !m_entry->tags.empty()) {
        auto* const location = new Card;
        if (!m_entry->url.empty())
            addRow(*location, tr("Adres"), qtText(m_entry->url), BrandFont::bodyText());
        if (!m_entry->tags.empty()) {
            location->content()->addWidget(new FieldLabel(tr("Etiketler")));
            auto* const tags = new QWidget;
            auto* const flow = new FlowLayout(Metric::xs, tags);
            for (const auto& tag : m_entry->tags)
                flow->addWidget(new Badge(qtText(tag), Palette::textSoft));
            location->content()->addWidget(tags);
        }
        column->addWidget(location);
    }
    if (!m_entry->notes.empty()) {
        auto* const notes = new Card(tr("Notlar"));
        auto* const text = new Paragraph(qtText(m_entry->notes), BrandFont::bodyText(), Palette::text);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse);
        notes->content()->addWidget(text);
        column->addWidget(notes);
    }
    m_column->insertWidget(m_column->count() - 1, m_fields);
}

void EntryDetailView::addRow(Card& card, const QString& label, const QString& value, const QFont& font) {
    auto* const row = new QWidget;
    auto* const lines = new QVBoxLayout(row);
    lines->setContentsMargins(0, 0, 0, 0);
    lines->setSpacing(Metric::xs);
    auto* const text = new TextLabel(value.isEmpty() ? QStringLiteral("—") : value, font, Palette::text);
    text->setAccessibleName(label + QStringLiteral(": ") + text->text());
    lines->addWidget(new FieldLabel(label));
    lines->addWidget(text);
    card.content()->addWidget(row);
}

void EntryDetailView::startRenaming() {
    if (!m_entry)
        return;
    m_isRenaming = true;
    m_titleField->setText(qtText(m_entry->title));
    m_title->setCurrentWidget(m_titleField);
    m_titleField->setFocus();
    m_titleField->selectAll();
}

void EntryDetailView::finishRenaming() {
    if (!m_entry || !m_isRenaming)
        return;
    auto entry = *m_entry;
    entry.title = vaultText(m_titleField->text());
    cancelRenaming();
    if (entry.title != m_entry->title)
        m_state.updateEntry(std::move(entry));
}

void EntryDetailView::cancelRenaming() {
    m_isRenaming = false;  // before the field goes, which it takes for the end of editing
    const bool hadFocus = m_titleField->hasFocus();
    m_title->setCurrentWidget(m_titleText);
    if (hadFocus)
        m_rename->setFocus();
}

bool EntryDetailView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_titleField && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        cancelRenaming();
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}
