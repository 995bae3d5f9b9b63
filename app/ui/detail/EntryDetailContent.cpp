// SPDX-License-Identifier: MIT
#include "app/ui/detail/EntryDetailContent.h"

#include "app/state/AppState.h"
#include "app/state/Preferences.h"
#include "app/ui/commands/Command.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/BrandDate.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/CopyButton.h"
#include "app/ui/components/EyeButton.h"
#include "app/ui/components/FieldRow.h"
#include "app/ui/components/FlowLayout.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/MetaStat.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/PagedText.h"
#include "app/ui/components/SecretText.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr SecretText::Dots passwordDots{.fewest = 8, .most = 32};
constexpr SecretText::Dots customFieldDots{.fewest = 6, .most = 24};
constexpr std::size_t shownVersions = 6;
constexpr int rowSymbol = 14;
constexpr int copyMargin = 12;  // a copy button has no ground: its word is what is seen at the edge
constexpr int widgetGap = 6;    // from a label to what is no text

QWidget* flow(std::initializer_list<QWidget*> parts, int spacing) {
    auto* const line = new QWidget;
    auto* const layout = new FlowLayout(spacing, line);
    for (auto* const part : parts)
        layout->addWidget(part);
    return line;
}

/// What is typed, in the face of what is typed.
Paragraph* sequenceText(const std::string& sequence) {
    return new Paragraph(sequence.empty() ? QStringLiteral("—") : LongText::beginning(sequence), BrandFont::mono(12),
                         Palette::textSoft);
}

/// One line for each pair; a sequence that has no room beside its window goes under it.
QWidget* associationLines(const std::vector<AutoTypeWindowAssociation>& associations) {
    auto* const lines = new QWidget;
    auto* const column = new QVBoxLayout(lines);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Metric::s);
    for (const auto& association : associations) {
        auto* const line = flow(
            {new TextLabel(LongText::beginning(association.window), BrandFont::bodyText(), Palette::text)}, Metric::xs);
        if (association.sequence)
            line->layout()->addWidget(new TextLabel(QStringLiteral("→ ") + LongText::beginning(*association.sequence),
                                                    BrandFont::mono(12), Palette::textSoft));
        column->addWidget(line);
    }
    return lines;
}

QWidget* versionLine(const KdbxEntry& version) {
    auto* const line = new QWidget;
    auto* const row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Metric::m);
    const QString title = version.title.empty() ? QStringLiteral("Adsız") : LongText::beginning(version.title);
    auto* const date = new TextLabel(brandFormatted(version.modified), BrandFont::secondary(), Palette::textSoft);
    date->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    row->addWidget(new TextLabel(title, BrandFont::bodyText(), Palette::text), 1);
    row->addWidget(date);
    return line;
}

}  // namespace

EntryDetailContent::EntryDetailContent(const Environment& environment, const KdbxEntry& entry, Revealed& revealed,
                                       QWidget* parent)
    : QWidget(parent),
      m_environment(environment),
      m_entry(entry),
      m_revealed(revealed),
      m_column(new QVBoxLayout(this)) {
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(Metric::m);
    addBadges();
    addActions();
    addCredentials();
    addLocation();
    addCustomFields();
    addAutoType();
    addNotes();
    addTimestamps();
    addHistory();
}

void EntryDetailContent::addBadges() {
    auto* const badges = flow({}, Metric::s);
    if (m_entry.isExpired())
        badges->layout()->addWidget(
            new Badge(QStringLiteral("Süresi doldu"), Palette::warn, QStringLiteral("clock.badge.exclamationmark")));
    if (!m_entry.autoTypeEnabled)
        badges->layout()->addWidget(
            new Badge(QStringLiteral("Otomatik yazma kapalı"), Palette::textMuted, QStringLiteral("keyboard")));
    if (badges->layout()->isEmpty())
        delete badges;
    else
        m_column->addWidget(badges);
}

void EntryDetailContent::addActions() {
    const auto& copyUsername = Command::of(Command::ID::copyUsername);
    auto* const username = new CopyButton(QStringLiteral("Kullanıcı"), copyUsername.symbol, copyUsername.text());
    username->setObjectName(QStringLiteral("actions.username"));
    username->setEnabled(!m_entry.username.empty());
    connect(username, &Button::clicked, this, [this, &copyUsername] { copyUsername(m_environment.state, &m_entry); });
    const auto& copyPassword = Command::of(Command::ID::copyPassword);
    auto* const password = new CopyButton(QStringLiteral("Parola"), QStringLiteral("key"), copyPassword.text());
    password->setObjectName(QStringLiteral("actions.password"));
    password->setEnabled(!m_entry.password.isEmpty());
    connect(password, &Button::clicked, this, [this, &copyPassword] { copyPassword(m_environment.state, &m_entry); });
    const auto& autoType = Command::of(Command::ID::autoType);
    auto* const type = new Button(autoType.text());
    type->setObjectName(QStringLiteral("actions.autoType"));
    type->setSymbol(autoType.symbol);
    connect(type, &Button::clicked, this, [this, &autoType] { autoType(m_environment.state, &m_entry); });
    m_column->addWidget(flow({username, password, type}, Metric::s));
}

/// A card of rows with lines between them, which are as far from the text as the card's edge is.
Card* EntryDetailContent::addRowsCard() {
    auto* const card = new Card;
    card->content()->setContentsMargins(Metric::l, Metric::m, copyMargin, Metric::m);
    m_column->addWidget(card);
    return card;
}

void EntryDetailContent::addCredentials() {
    auto* const card = addRowsCard();
    const QString username = QStringLiteral("Kullanıcı adı");
    auto* const usernameRow = valueRow(username, QStringLiteral("username"), m_entry.username);
    addCopy(*usernameRow, QStringLiteral("username"), username, !m_entry.username.empty(),
            [this] { m_environment.state.copyUsername(&m_entry); });
    card->content()->addWidget(usernameRow);
    card->addDivider();

    const QString password = QStringLiteral("Parola");
    auto* const secret = new SecretText(m_entry.password, passwordDots, password);
    secret->setRevealed(m_revealed.password);
    auto* const passwordRow = new FieldRow(password, secret);
    addEye(*passwordRow, *secret, QStringLiteral("password"), password,
           [this] { return m_revealed.password = !m_revealed.password; });
    addCopy(*passwordRow, QStringLiteral("password"), password, !m_entry.password.isEmpty(),
            [this] { m_environment.state.copyPassword(&m_entry); });
    card->content()->addWidget(passwordRow);
}

void EntryDetailContent::addLocation() {
    if (m_entry.url.empty() && m_entry.tags.empty())
        return;
    auto* const card = addRowsCard();
    if (!m_entry.url.empty()) {
        const QString address = QStringLiteral("Adres");
        auto* const row = valueRow(address, QStringLiteral("url"), m_entry.url);
        const auto& openURL = Command::of(Command::ID::openURL);
        auto* const open = new IconButton(openURL.symbol, openURL.text());
        open->setObjectName(QStringLiteral("url.open"));
        open->setSides(Metric::controlHeight, rowSymbol);
        open->setAccessibleDescription(address);
        connect(open, &IconButton::clicked, this, [this, &openURL] { openURL(m_environment.state, &m_entry); });
        row->addAction(open);
        addCopy(*row, QStringLiteral("url"), address, true, [this] { m_environment.state.copyURL(&m_entry); });
        card->content()->addWidget(row);
    }
    if (!m_entry.url.empty() && !m_entry.tags.empty())
        card->addDivider();
    if (!m_entry.tags.empty())
        card->content()->addWidget(tagsRow());
}

FieldRow* EntryDetailContent::tagsRow() {
    auto* const tags = flow({}, Metric::s);
    for (const auto& tag : m_entry.tags)
        tags->layout()->addWidget(new Badge(LongText::beginning(tag), Palette::textSoft));
    auto* const row = new FieldRow(QStringLiteral("Etiketler"), tags);
    row->setLabelGap(widgetGap);
    return row;
}

void EntryDetailContent::addCustomFields() {
    if (m_entry.customFields.empty())
        return;
    auto* const card = new Card(QStringLiteral("Özel alanlar"));
    card->content()->setContentsMargins(Metric::l, Metric::l, copyMargin, Metric::l);
    for (const auto& [name, value] : m_entry.customFields)
        card->content()->addWidget(customFieldRow(name, value));
    m_column->addWidget(card);
}

FieldRow* EntryDetailContent::customFieldRow(const std::string& name, const std::string& value) {
    const QString label = LongText::beginning(name);
    const QString key = QStringLiteral("field ") + label;
    if (!m_entry.protectedCustomFields.contains(name)) {
        auto* const row = valueRow(label, key, value);
        addCopy(*row, key, label, !value.empty(),
                [this, name] { m_environment.clipboard.copyPlain(m_entry.customFields.at(name)); });
        return row;
    }
    auto* const secret = new SecretText(std::string_view(value), customFieldDots, label);
    secret->setRevealed(m_revealed.customFields.contains(name));
    auto* const row = new FieldRow(label, secret);
    addEye(*row, *secret, key, label, [this, name] {
        auto& revealed = m_revealed.customFields;
        const bool isRevealed = revealed.erase(name) == 0;
        if (isRevealed)
            revealed.insert(name);
        return isRevealed;
    });
    addCopy(*row, key, label, !value.empty(),
            [this, name] { m_environment.clipboard.copySecret(m_entry.customFields.at(name)); });
    return row;
}

/// A value of a few lines, or else one whose pages are turned.
FieldRow* EntryDetailContent::valueRow(const QString& label, const QString& key, const std::string& value) {
    if (value.size() <= LongText::mostLetters)
        return new FieldRow(label, qtText(value));
    auto* const pages = new PagedText(label, key, value);
    auto* const row = new FieldRow(label, pages);
    connect(pages, &PagedText::turned, this, [this, row] { emit reflowed(row); });
    return row;
}

/// An eye at the row's end. `turnRound` gives whether the secret shows from now on.
void EntryDetailContent::addEye(FieldRow& row, SecretText& secret, const QString& key, const QString& field,
                                std::function<bool()> turnRound) {
    auto* const eye = new EyeButton;
    const auto show = [eye, &secret](bool isRevealed) {
        secret.setRevealed(isRevealed);
        eye->showRevealed(isRevealed);
    };
    show(secret.isRevealed());
    eye->setObjectName(key + QStringLiteral(".reveal"));
    eye->setSides(Metric::controlHeight, rowSymbol);
    eye->setAccessibleDescription(field);
    connect(eye, &IconButton::clicked, this, [this, show, &row, turnRound = std::move(turnRound)] {
        show(turnRound());
        emit reflowed(&row);
    });
    row.addAction(eye);
}

void EntryDetailContent::addCopy(FieldRow& row, const QString& key, const QString& field, bool hasText,
                                 std::function<void()> copy) {
    auto* const button = new CopyButton(field);
    button->setObjectName(key + QStringLiteral(".copy"));
    button->setEnabled(hasText);
    connect(button, &CopyButton::clicked, this, std::move(copy));
    row.addAction(button);
}

void EntryDetailContent::addAutoType() {
    const auto& own = m_entry.autoTypeSequence;
    auto* const card = new Card(QStringLiteral("Otomatik yazma"));
    card->headingLine()->addWidget(
        new Badge(own ? QStringLiteral("Özel") : QStringLiteral("Varsayılan"), Palette::textSoft));
    card->content()->addWidget(sequenceText(own ? *own : m_environment.preferences.defaultAutoTypeSequence()));
    if (!m_entry.autoTypeWindowAssociations.empty()) {
        auto* const windows =
            new FieldRow(QStringLiteral("Pencere eşleşmeleri"), associationLines(m_entry.autoTypeWindowAssociations));
        windows->setLabelGap(widgetGap);
        card->content()->addWidget(windows);
    }
    m_column->addWidget(card);
}

void EntryDetailContent::addNotes() {
    if (m_entry.notes.empty())
        return;
    auto* const card = new Card(QStringLiteral("Notlar"));
    auto* const text = new PagedText(QStringLiteral("Notlar"), QStringLiteral("notes"), m_entry.notes);
    connect(text, &PagedText::turned, this, [this, text] { emit reflowed(text); });
    if (text->pageCount() > 1) {
        auto* const copy = new CopyButton(QStringLiteral("Notlar"));
        copy->setObjectName(QStringLiteral("notes.copy"));
        connect(copy, &CopyButton::clicked, this, [this] { m_environment.clipboard.copyPlain(m_entry.notes); });
        card->headingLine()->addWidget(copy);
    }
    card->content()->addWidget(text);
    m_column->addWidget(card);
}

void EntryDetailContent::addTimestamps() {
    m_accessed = new MetaStat(QStringLiteral("Erişildi"), brandFormatted(m_entry.accessed));
    auto* const times =
        flow({new MetaStat(QStringLiteral("Oluşturuldu"), brandFormatted(m_entry.created)),
              new MetaStat(QStringLiteral("Değiştirildi"), brandFormatted(m_entry.modified)), m_accessed},
             Metric::m);
    if (m_entry.expires && m_entry.expiryTime)
        times->layout()->addWidget(new MetaStat(QStringLiteral("Son kullanma"), brandFormatted(*m_entry.expiryTime)));
    auto* const card = new Card;
    card->content()->addWidget(times);
    m_column->addWidget(card);
}

void EntryDetailContent::addHistory() {
    const auto& versions = m_entry.historyItems;
    if (versions.empty())
        return;
    auto* const card = new Card(QStringLiteral("Geçmiş"));
    card->headingLine()->addWidget(new TextLabel(QStringLiteral("%1 sürüm").arg(Numbers::grouped(versions.size())),
                                                 BrandFont::secondary(), Palette::textMuted));
    const auto shown = std::min(versions.size(), shownVersions);
    for (std::size_t i = 1; i <= shown; ++i)
        card->content()->addWidget(versionLine(versions[versions.size() - i]));
    m_column->addWidget(card);
}

void EntryDetailContent::showAccessed() {
    m_accessed->setValue(brandFormatted(m_entry.accessed));
}

std::vector<QWidget*> EntryDetailContent::stops() const {
    std::vector<QWidget*> stops;
    for (auto* const widget : findChildren<QWidget*>())
        if ((widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->objectName().isEmpty())
            stops.push_back(widget);
    return stops;
}
