// SPDX-License-Identifier: MIT
#include "app/ui/generator/PasswordGeneratorView.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/Preferences.h"
#include "app/state/WipedAtEnd.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/EyeButton.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/QuickButtons.h"
#include "app/ui/components/SelectableSecretText.h"
#include "app/ui/components/Slider.h"
#include "app/ui/components/Toggle.h"
#include "app/ui/theme/Theme.h"
#include "core/clipboard/ClipboardService.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int shortest = PasswordGenerator::shortestChoice;
constexpr int longest = PasswordGenerator::longestChoice;
constexpr QSize smallestSize(380, 320);
constexpr QSize idealSize(460, 612);
constexpr int previewSize = 16;
constexpr int longPreviewSize = 12;
constexpr int previewHeight = 48;  // for the longest password at the ideal width, so that nothing moves
constexpr int previewGap = 6;
constexpr int lengthSize = 18;
constexpr int eyeSymbol = 16;
constexpr int rowGap = Metric::xs;

}  // namespace

PasswordGeneratorView::PasswordGeneratorView(const Environment& environment, const std::optional<UUID>& applyTo,
                                             QWidget* parent)
    : SheetScaffold(QStringLiteral("Parola üreteci"), QStringLiteral("Kapat"),
                    applyTo ? QStringLiteral("Kayda uygula") : QStringLiteral("Panoya kopyala"), parent),
      m_environment(environment),
      m_applyTo(applyTo),
      m_options(environment.preferences.generatorOptions()) {
    setSizes(smallestSize, idealSize);
    for (QWidget* const card : {makePreview(), makeLength(), makeCharacterSets()})
        content()->addWidget(card);
    content()->addStretch(1);  // the warning's room, while there is none
    setFirstField(m_length);
    connectControls();
    showOptions();
    setRevealed(false);
    regenerate();
}

Card* PasswordGeneratorView::makePreview() {
    auto* const card = new Card;
    m_preview = new SelectableSecretText(QStringLiteral("Önizleme"));
    m_preview->setFontSizes(previewSize, longPreviewSize);
    m_preview->setMinimumHeight(previewHeight);
    m_eye = new EyeButton;
    m_eye->setSides(Metric::controlHeightSmall, eyeSymbol);

    auto* const copy = new Button(QStringLiteral("Kopyala"));
    copy->setSymbol(QStringLiteral("doc.on.doc"));
    connect(copy, &Button::clicked, this, &PasswordGeneratorView::copy);
    auto* const again = new Button(QStringLiteral("Yeniden üret"));
    again->setSymbol(QStringLiteral("arrow.triangle.2.circlepath"));
    connect(again, &Button::clicked, this, &PasswordGeneratorView::regenerate);
    // A click leaves the focus where it is: Return then goes on meaning the way out.
    for (QWidget* const button : std::initializer_list<QWidget*>{m_eye, copy, again})
        button->setFocusPolicy(Qt::TabFocus);

    auto* const heading = new QHBoxLayout;
    heading->addWidget(new FieldLabel(QStringLiteral("Önizleme")), 1);
    heading->addWidget(m_eye);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(Metric::s);
    buttons->addWidget(copy);
    buttons->addWidget(again);
    buttons->addStretch(1);
    card->content()->setSpacing(0);
    card->content()->addLayout(heading);
    card->content()->addWidget(m_preview);
    card->content()->addSpacing(previewGap);
    card->content()->addLayout(buttons);
    return card;
}

Card* PasswordGeneratorView::makeLength() {
    auto* const card = new Card;
    m_lengthText = new TextLabel({}, BrandFont::display(lengthSize), Palette::accent);
    m_lengthText->setTabularFigures(true);
    m_length = new Slider(QStringLiteral("Uzunluk"), shortest, longest);
    m_quickLengths = new QuickButtons({12, 16, 20, 32, 64}, QStringLiteral("%1"), QuickButtons::Width::equal);

    auto* const heading = new QHBoxLayout;
    heading->addWidget(new FieldLabel(QStringLiteral("Uzunluk")), 1);
    heading->addWidget(m_lengthText);
    card->content()->setSpacing(Metric::xs);
    card->content()->addLayout(heading);
    card->content()->addWidget(m_length);
    card->content()->addWidget(m_quickLengths);
    return card;
}

Card* PasswordGeneratorView::makeCharacterSets() {
    auto* const card = new Card;
    card->content()->setSpacing(rowGap);
    card->content()->addWidget(new FieldLabel(QStringLiteral("Karakter kümesi")));
    const std::pair<QString, Choice> rows[] = {
        {QStringLiteral("Büyük harf  A–Z"), &PasswordGenerator::Options::upper},
        {QStringLiteral("Küçük harf  a–z"), &PasswordGenerator::Options::lower},
        {QStringLiteral("Rakam  0–9"), &PasswordGenerator::Options::digits},
        {QStringLiteral("Sembol  !@#$…"), &PasswordGenerator::Options::symbols},
        {QStringLiteral("Karışabilecek karakterleri ele  (l 1 I O 0)"), &PasswordGenerator::Options::excludeAmbiguous},
    };
    for (const auto& [text, choice] : rows) {
        auto* const toggle = new Toggle(text);
        toggle->setChecked(m_options.*choice);
        connect(toggle, &Toggle::toggled, this, [this, choice = choice](bool isOn) {
            auto options = m_options;
            options.*choice = isOn;
            setOptions(options);
        });
        card->content()->addWidget(toggle);
    }
    m_warning =
        new TextLabel(QStringLiteral("En az bir karakter kümesi seçmelisin."), BrandFont::secondary(), Palette::warn);
    card->content()->addWidget(m_warning);
    return card;
}

void PasswordGeneratorView::connectControls() {
    connect(m_eye, &IconButton::clicked, this, [this] { setRevealed(!m_preview->isRevealed()); });
    connect(m_preview, &SelectableSecretText::copyRequested, this,
            [this](std::string_view part) { m_environment.clipboard.copySecret(part); });
    connect(m_length, &Slider::valueChanged, this, &PasswordGeneratorView::setLength);
    connect(m_quickLengths, &QuickButtons::chosen, this, &PasswordGeneratorView::setLength);
    connect(this, &SheetScaffold::cancelled, this, &PasswordGeneratorView::closeSheet);
    connect(this, &SheetScaffold::confirmed, this, &PasswordGeneratorView::confirm);
}

bool PasswordGeneratorView::anySetEnabled() const {
    return m_options.upper || m_options.lower || m_options.digits || m_options.symbols;
}

void PasswordGeneratorView::setLength(int length) {
    auto options = m_options;
    options.length = length;
    setOptions(options);
}

void PasswordGeneratorView::setOptions(const PasswordGenerator::Options& options) {
    if (options == m_options)
        return;
    m_options = options;
    m_environment.preferences.setGeneratorOptions(options);
    showOptions();
    regenerate();
}

void PasswordGeneratorView::regenerate() {
    auto fresh = anySetEnabled() ? PasswordGenerator::generate(m_options) : std::string();
    const WipedAtEnd freshEnd(fresh);
    m_generated = SecureString(fresh);
    m_preview->setSecret(m_generated);
    setConfirmEnabled(!m_generated.isEmpty());
}

void PasswordGeneratorView::showOptions() {
    const QSignalBlocker showing(m_length);  // a stored length that no slider gives is shown, and stays
    m_length->setValue(static_cast<int>(std::clamp<std::int64_t>(m_options.length, shortest, longest)));
    m_lengthText->setText(QString::number(m_options.length));
    m_quickLengths->showNumber(static_cast<double>(m_options.length));
    m_warning->setVisible(!anySetEnabled());
}

void PasswordGeneratorView::setRevealed(bool isRevealed) {
    m_preview->setRevealed(isRevealed);
    m_eye->showRevealed(isRevealed);
}

void PasswordGeneratorView::copy() const {
    auto password = m_generated.value();
    const WipedAtEnd passwordEnd(password);
    m_environment.clipboard.copySecret(password);
}

void PasswordGeneratorView::confirm() {
    if (m_applyTo)
        apply(*m_applyTo);
    else
        copy();
    closeSheet();
}

void PasswordGeneratorView::apply(const UUID& entryID) {
    const auto* const root = m_environment.state.root();
    auto entry = root ? GroupTree::entryWithID(*root, entryID) : std::nullopt;
    if (!entry)
        return;
    entry->password = m_generated;
    m_environment.state.updateEntry(std::move(*entry));
}

void PasswordGeneratorView::closeSheet() {
    m_environment.state.setRoute(std::nullopt);
}
