// SPDX-License-Identifier: MIT
#include "app/ui/editor/EntryEditView.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/Preferences.h"
#include "app/state/VaultChanges.h"
#include "app/state/WipedAtEnd.h"
#include "app/ui/components/AdaptiveRow.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/FormField.h"
#include "app/ui/components/IconPicker.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SecretField.h"
#include "app/ui/components/SequenceCard.h"
#include "app/ui/components/SequenceHint.h"
#include "app/ui/components/StrengthMeter.h"
#include "app/ui/components/TextArea.h"
#include "app/ui/components/Texts.h"
#include "app/ui/components/Toggle.h"
#include "app/ui/editor/CustomFieldRow.h"
#include "app/ui/editor/DateTimeField.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QHBoxLayout>
#include <QPointer>

#include <ranges>
#include <string_view>

namespace {

constexpr QSize smallest(380, 320);
constexpr QSize ideal(560, 640);
constexpr double yearInSeconds = 31536000;  // of 365 days
constexpr int narrowestPair = 400;          // below this, two fields are one under the other

std::string joined(const std::vector<std::string>& tags) {
    std::string text;
    for (const auto& tag : tags)
        text += (text.empty() ? "" : ", ") + tag;
    return text;
}

}  // namespace

EntryEditView::EntryEditView(const Environment& environment, Mode mode, QWidget* parent)
    : SheetScaffold(std::holds_alternative<Edit>(mode) ? QStringLiteral("Kaydı düzenle") : QStringLiteral("Yeni kayıt"),
                    QStringLiteral("Vazgeç"),
                    std::holds_alternative<Edit>(mode) ? QStringLiteral("Kaydet") : QStringLiteral("Oluştur"), parent),
      m_state(environment.state),
      m_preferences(environment.preferences),
      m_clipboard(environment.clipboard),
      m_mode(std::move(mode)) {
    setSizes(smallest, ideal);
    makeControls();
    arrange();
    connectControls();
    load();
    showTitle();
    showStrength();
    showExpiry();
    showAutoType();
    keepTyped();
}

void EntryEditView::makeControls() {
    m_icon = new IconPicker(KdbxEntry::defaultIconID);
    m_title = new TextField(QStringLiteral("Başlık"));
    m_title->setPlaceholderText(QStringLiteral("örn. GitHub"));
    m_username = new TextField(QStringLiteral("Kullanıcı adı"));
    m_username->setPlaceholderText(QStringLiteral("ad@ornek.com"));
    m_url = new TextField(QStringLiteral("Adres"));
    m_url->setPlaceholderText(QStringLiteral("https://…"));
    m_tags = new TextField(QStringLiteral("Etiketler"));
    m_tags->setPlaceholderText(QStringLiteral("iş, kritik"));
    m_expires = new Toggle(QStringLiteral("Son kullanma tarihi var"));
    m_expires->setSide(Toggle::Side::leading);
    m_expiryDate = new DateTimeField(QStringLiteral("Son kullanma tarihi"));
    m_expiryDate->setTimestamp({Timestamp::now().seconds + yearInSeconds});

    m_password = new SecretField(QStringLiteral("Parola"));
    m_password->setCopying([this](std::string_view secret) { m_clipboard.copySecret(secret); });
    m_strength = new StrengthMeter;

    m_autoTypeEnabled = new Toggle(QStringLiteral("Bu kayıt için etkin"));
    m_autoTypeEnabled->setChecked(true);
    m_sequence = new SequenceCard(QStringLiteral("Özel sekans kullan"), sequenceHint());
    m_defaultSequence =
        new Paragraph(QStringLiteral("Varsayılan: %1").arg(qtText(m_preferences.defaultAutoTypeSequence())),
                      BrandFont::secondary(), Palette::textSoft);
    m_sequence->content()->insertWidget(1, m_autoTypeEnabled);  // below the heading
    m_sequence->content()->addWidget(m_defaultSequence);

    m_customFields = new CustomFieldsCard(m_clipboard);
    m_notes = new TextArea(QStringLiteral("Notlar"));
}

void EntryEditView::arrange() {
    content()->addWidget(makeBasicsCard());
    content()->addWidget(makePasswordCard());
    content()->addWidget(m_sequence);
    content()->addWidget(m_customFields);
    content()->addWidget(makeNotesCard());
    setFirstField(m_title);
}

QWidget* EntryEditView::makeBasicsCard() {
    auto* const card = new Card;
    auto* const heading = new QHBoxLayout;
    heading->setSpacing(Metric::m);
    heading->addWidget(new FormField(QStringLiteral("Simge"), m_icon));
    heading->addWidget(new FormField(QStringLiteral("Başlık"), m_title), 1);
    auto* const account = new AdaptiveRow(narrowestPair);
    account->add(new FormField(QStringLiteral("Kullanıcı adı"), m_username));
    account->add(new FormField(QStringLiteral("Adres"), m_url));
    auto* const tags = new FormField(QStringLiteral("Etiketler"), m_tags);
    tags->setHint(QStringLiteral("Virgülle ayır."));
    auto* const expiry = new AdaptiveRow(narrowestPair);
    expiry->add(m_expires);
    expiry->add(m_expiryDate, 0);
    expiry->setMinimumHeight(Metric::controlHeight);  // with and without the date, so that nothing below it moves

    card->content()->addLayout(heading);
    card->content()->addWidget(account);
    card->content()->addWidget(tags);
    card->content()->addWidget(expiry);
    return card;
}

QWidget* EntryEditView::makePasswordCard() {
    auto* const card = new Card;
    auto* const generate = new Button(QStringLiteral("Parola üret"), Button::Variant::secondary);
    generate->setSymbol(QStringLiteral("arrow.triangle.2.circlepath"));
    connect(generate, &Button::clicked, this, &EntryEditView::generatePassword);
    auto* const open = new Button(QStringLiteral("Üreteci aç…"), Button::Variant::ghost);
    connect(open, &Button::clicked, this, &EntryEditView::openGenerator);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(Metric::s);
    buttons->addWidget(generate);
    buttons->addWidget(open);
    buttons->addStretch();

    card->content()->addWidget(new FormField(QStringLiteral("Parola"), m_password));
    card->content()->addWidget(m_strength);
    card->content()->addLayout(buttons);
    return card;
}

QWidget* EntryEditView::makeNotesCard() {
    auto* const card = new Card(QStringLiteral("Notlar"));
    card->content()->addWidget(m_notes);
    return card;
}

void EntryEditView::connectControls() {
    connect(m_title, &TextField::textChanged, this, &EntryEditView::showTitle);
    connect(m_password, &SecretField::textChanged, this, &EntryEditView::showStrength);
    connect(m_expires, &Toggle::toggled, this, &EntryEditView::showExpiry);
    connect(m_autoTypeEnabled, &Toggle::toggled, this, &EntryEditView::showAutoType);
    connect(m_sequence, &SequenceCard::inheritedChanged, this, &EntryEditView::showAutoType);
    connect(m_customFields, &CustomFieldsCard::rowsChanged, this, &EntryEditView::orderTabs);
    connect(this, &EntryEditView::cancelled, this, &EntryEditView::dismiss);
    connect(this, &EntryEditView::confirmed, this, &EntryEditView::commit);
}

void EntryEditView::load() {
    const auto* const edit = std::get_if<Edit>(&m_mode);
    if (!edit)
        return;
    const auto& entry = edit->entry;
    m_title->setWholeText(entry.title);
    m_title->end(false);
    m_username->setWholeText(entry.username);
    m_url->setWholeText(entry.url);
    m_notes->setWholeText(qtText(entry.notes));
    m_icon->setIconID(entry.iconID);
    auto password = entry.password.value();
    const WipedAtEnd passwordEnd(password);
    m_password->setWholeText(password);
    m_tags->setWholeText(joined(entry.tags));
    m_expires->setChecked(entry.expires);
    if (entry.expiryTime)
        m_expiryDate->setTimestamp(*entry.expiryTime);
    m_autoTypeEnabled->setChecked(entry.autoTypeEnabled);
    m_sequence->suggest(m_preferences.defaultAutoTypeSequence());
    m_sequence->setSequence(entry.autoTypeSequence);
    for (const auto& [key, value] : entry.customFields)
        m_customFields->add({.key = key, .value = value, .isProtected = entry.protectedCustomFields.contains(key)});
}

void EntryEditView::followVault() {
    auto* const edit = std::get_if<Edit>(&m_mode);
    const auto* const stored = edit ? GroupTree::findEntry(*m_state.root(), edit->entry.id) : nullptr;
    if (stored)
        edit->entry = *stored;
}

void EntryEditView::showTitle() {
    setSubtitle(m_title->text());
    setConfirmEnabled(m_title->hasContent());
}

void EntryEditView::showStrength() {
    m_strength->showStrengthOf(m_password->text());
}

void EntryEditView::showExpiry() {
    m_expiryDate->setVisible(m_expires->isChecked());
}

void EntryEditView::showAutoType() {
    const bool isEnabled = m_autoTypeEnabled->isChecked();
    m_sequence->setOffered(isEnabled);
    m_defaultSequence->setVisible(isEnabled && m_sequence->isInherited());
}

void EntryEditView::generatePassword() {
    auto password = PasswordGenerator::generate(m_preferences.generatorOptions());
    const WipedAtEnd passwordEnd(password);
    m_password->setSecret(qtText(password));
    m_password->setRevealed(true);
}

void EntryEditView::openGenerator() {
    m_state.setRoute(AppState::Route::generator(std::nullopt));
}

KdbxEntry EntryEditView::editedEntry() const {
    const auto* const edit = std::get_if<Edit>(&m_mode);
    auto entry = edit ? edit->entry : KdbxEntry();
    entry.title = Text::trimmingWhitespace(m_title->wholeText());
    entry.username = m_username->wholeText();
    auto password = m_password->secret();
    const WipedAtEnd passwordEnd(password);
    entry.password = SecureString(password);
    entry.url = Text::trimmingWhitespace(m_url->wholeText());
    entry.notes = vaultText(m_notes->wholeText());
    entry.iconID = m_icon->iconID();
    takeTags(entry);
    entry.expires = m_expires->isChecked();
    entry.expiryTime = entry.expires ? std::optional(m_expiryDate->timestamp()) : std::nullopt;
    entry.autoTypeEnabled = m_autoTypeEnabled->isChecked();
    entry.autoTypeSequence = m_sequence->sequence();
    takeCustomFields(entry);
    return entry;
}

/// Tags that were not edited stay as they are, also where one has a comma in it.
void EntryEditView::takeTags(KdbxEntry& entry) const {
    const auto text = m_tags->wholeText();
    if (text == joined(entry.tags))
        return;
    entry.tags.clear();
    for (const auto piece : std::views::split(text, ','))
        if (const auto tag = Text::trimmingWhitespace({piece.begin(), piece.end()}); !tag.empty())
            entry.tags.emplace_back(tag);
}

/// Of rows with one name the last has the value, and any can make it a protected one.
void EntryEditView::takeCustomFields(KdbxEntry& entry) const {
    entry.customFields.clear();
    entry.protectedCustomFields.clear();
    for (const auto* const row : m_customFields->rows()) {
        auto field = row->value();
        const WipedAtEnd valueEnd(field.value);
        const std::string key(Text::trimmingWhitespace(field.key));
        if (key.empty())
            continue;
        entry.customFields.insert_or_assign(key, field.value);
        if (field.isProtected)
            entry.protectedCustomFields.insert(key);
    }
}

/// A session that ends while the form is open keeps what was typed.
void EntryEditView::keepTyped() {
    m_untouched = editedEntry();
    m_state.setFormContent(
        [view = QPointer(this)](KdbxDatabase& database) { return view && view->applyTyped(database); });
}

bool EntryEditView::applyTyped(KdbxDatabase& database) const {
    auto entry = editedEntry();
    if (entry.hasSameContent(m_untouched))
        return false;
    const auto now = Timestamp::now();
    const auto* const create = std::get_if<Create>(&m_mode);
    if (!create)
        return VaultChanges::replaceEntry(database, std::move(entry), now);
    entry.created = now;
    entry.modified = now;
    return VaultChanges::addEntry(database, std::move(entry), create->groupID, now);
}

void EntryEditView::commit() {
    auto entry = editedEntry();
    entry.modified = Timestamp::now();
    if (const auto* const create = std::get_if<Create>(&m_mode)) {
        entry.created = entry.modified;
        m_state.addEntry(std::move(entry), create->groupID);
    } else {
        m_state.updateEntry(std::move(entry));
    }
    dismiss();
}

void EntryEditView::dismiss() {
    m_state.setRoute(std::nullopt);
}
