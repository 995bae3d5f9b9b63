// SPDX-License-Identifier: MIT
#include "app/ui/settings/SettingsCards.h"

#include "app/state/GlobalHotKey.h"
#include "app/state/Preferences.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/FlowLayout.h"
#include "app/ui/components/KeyNames.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/QuickButtons.h"
#include "app/ui/components/RepeatedLook.h"
#include "app/ui/components/SequenceHint.h"
#include "app/ui/components/Slider.h"
#include "app/ui/components/TextField.h"
#include "app/ui/components/Texts.h"
#include "app/ui/settings/HotKeyRecorder.h"
#include "app/ui/settings/PermissionRow.h"
#include "app/ui/theme/Theme.h"
#include "core/autotype/AutoTypeService.h"

#include <QSignalBlocker>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono_literals;

constexpr int shortestTimeout = 5;
constexpr int longestTimeout = 120;
constexpr auto pollingInterval = 1500ms;
constexpr int rowGap = 10;
constexpr int labelGap = 6;

QString seconds() {
    return QStringLiteral("%1 sn");
}

}  // namespace

ClipboardCard::ClipboardCard(Preferences& preferences, QWidget* parent)
    : Card(QStringLiteral("Pano"), parent),
      m_preferences(preferences),
      m_value(new TextLabel({}, BrandFont::rowTitle(), Palette::accent)),
      m_slider(new Slider(QStringLiteral("Otomatik temizleme"), shortestTimeout, longestTimeout)),
      m_quickTimes(new QuickButtons({10, 12, 30, 60}, seconds(), QuickButtons::Width::natural)) {
    arrange();
    connectControls();
    showTimeout();
}

void ClipboardCard::arrange() {
    content()->setSpacing(rowGap);
    m_value->setTabularFigures(true);
    auto* const row = new QHBoxLayout;
    row->addWidget(new TextLabel(QStringLiteral("Otomatik temizleme"), BrandFont::bodyText(), Palette::text), 1);
    row->addWidget(m_value);
    content()->addLayout(row);
    content()->addWidget(m_slider);
    content()->addWidget(new Paragraph(QStringLiteral("Kopyalanan gizli değerin silinme süresi"), BrandFont::body(11),
                                       Palette::textSoft));
    content()->addWidget(m_quickTimes);
}

void ClipboardCard::connectControls() {
    connect(m_slider, &Slider::valueChanged, &m_preferences, &Preferences::setClipboardTimeout);
    connect(m_quickTimes, &QuickButtons::chosen, &m_preferences, &Preferences::setClipboardTimeout);
    connect(&m_preferences, &Preferences::clipboardTimeoutChanged, this, &ClipboardCard::showTimeout);
}

void ClipboardCard::showTimeout() {
    const QSignalBlocker showing(m_slider);  // a value that is shown is not a value that was chosen
    const double timeout = m_preferences.clipboardTimeout();
    m_slider->setValue(static_cast<int>(std::lround(std::clamp<double>(timeout, shortestTimeout, longestTimeout))));
    m_value->setText(seconds().arg(timeout, 0, 'f', 0));
    m_quickTimes->showNumber(timeout);
}

AutoTypeCard::AutoTypeCard(Preferences& preferences, AutoTypeService& autoType, QWidget* parent)
    : Card(QStringLiteral("Otomatik yazma"), parent),
      m_preferences(preferences),
      m_autoType(autoType),
      m_sequence(new TextField(QStringLiteral("Varsayılan tuş sekansı"))),
      m_reset(new Button(QStringLiteral("Varsayılana dön"))),
      m_permission(new PermissionRow) {
    arrange();
    connectControls();
    showSequence();
    showPermission();
}

void AutoTypeCard::arrange() {
    content()->setSpacing(rowGap);
    m_sequence->setMono(true);
    m_reset->setSmall(true);
    auto* const label = new FieldLabel(QStringLiteral("Varsayılan tuş sekansı"));
    label->setBuddy(m_sequence);
    auto* const field = new QVBoxLayout;
    field->setSpacing(labelGap);
    field->addWidget(label);
    field->addWidget(m_sequence);
    field->addWidget(new Paragraph(sequenceHint(), BrandFont::mono(11), Palette::textSoft));
    content()->addLayout(field);
    content()->addWidget(m_reset, 0, Qt::AlignLeading);
    content()->addWidget(m_permission);
}

void AutoTypeCard::connectControls() {
    // A screen reader's change of the text is no typing.
    connect(m_sequence, &TextField::textChanged, &m_preferences,
            [this] { m_preferences.setDefaultAutoTypeSequence(m_sequence->wholeText()); });
    connect(m_reset, &Button::clicked, &m_preferences,
            [this] { m_preferences.setDefaultAutoTypeSequence(std::string(AutoTypeService::defaultSequence)); });
    connect(&m_preferences, &Preferences::defaultAutoTypeSequenceChanged, this, &AutoTypeCard::showSequence);
    connect(m_permission, &PermissionRow::permissionWanted, this,
            [this] { m_autoType.requestAccessibilityPermission(); });
    new RepeatedLook(this, pollingInterval, [this] { showPermission(); });
}

void AutoTypeCard::showSequence() {
    const auto& sequence = m_preferences.defaultAutoTypeSequence();
    if (m_sequence->wholeText() == sequence)  // setting the same text would take the cursor to its end
        return;
    const QSignalBlocker showing(m_sequence);
    m_sequence->setWholeText(sequence);
    m_sequence->end(false);
}

void AutoTypeCard::showPermission() {
    m_permission->showGranted(m_autoType.hasAccessibilityPermission(), m_autoType.canRequestAccessibilityPermission()
                                                                           ? PermissionRow::Asking::possible
                                                                           : PermissionRow::Asking::impossible);
}

HotKeyCard::HotKeyCard(Preferences& preferences, GlobalHotKey& hotKey, QWidget* parent)
    : Card(QStringLiteral("Genel kısayol"), parent),
      m_preferences(preferences),
      m_hotKey(hotKey),
      m_recorder(new HotKeyRecorder(preferences, hotKey)),
      m_reset(new Button(QStringLiteral("Varsayılana dön  (⌘⌥A)"), Button::Variant::ghost)),
      m_rejected(
          new TextLabel(QStringLiteral("En az bir değiştirici tuş gerekli"), BrandFont::label(), Palette::danger)),
      m_refused(new Paragraph({}, BrandFont::body(11), Palette::warn)),
      m_spoken(new Announcement(this)) {
    arrange();
    connectControls();
    showState();
    showKeyNames();
}

void HotKeyCard::arrange() {
    content()->setSpacing(rowGap);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(Metric::xs);
    texts->addWidget(
        new TextLabel(QStringLiteral("Her uygulamadan otomatik yazma"), BrandFont::rowTitle(), Palette::text));
    texts->addWidget(
        new Paragraph(QStringLiteral("Herhangi bir uygulamadayken bu kısayola bas; ön plandaki pencerenin başlığıyla "
                                     "eşleşen kayıt otomatik yazılır."),
                      BrandFont::secondary(), Palette::textSoft));
    auto* const row = new QWidget;
    auto* const flow = new FlowLayout(Metric::s, row);
    flow->addWidget(m_recorder);
    m_reset->setSmall(true);
    // The two take turns, so that nothing moves when a recording starts or ends.
    auto* const hint = new QWidget;
    auto* const line = new QHBoxLayout(hint);
    line->setContentsMargins(Metric::s, 0, Metric::s, 0);
    line->addWidget(new TextLabel(HotKeyRecorder::hint(), BrandFont::body(12), Palette::textSoft));
    auto* const beside = new QWidget;
    auto* const turns = new QStackedLayout(beside);
    turns->addWidget(m_reset);
    turns->addWidget(hint);
    flow->addWidget(beside);
    connect(m_recorder, &HotKeyRecorder::recordingChanged, turns, &QStackedLayout::setCurrentIndex);
    m_rejected->hide();
    m_refused->hide();
    content()->addLayout(texts);
    content()->addWidget(row);
    content()->addWidget(m_rejected);
    content()->addWidget(m_refused);
}

void HotKeyCard::connectControls() {
    connect(m_recorder, &HotKeyRecorder::rejectedChanged, this, [this](bool isRejected) {
        m_rejected->setVisible(isRejected);
        if (isRejected)
            emit messageAppeared();
    });
    connect(m_reset, &Button::clicked, &m_preferences, [this] {
        m_preferences.setHotKeyCode(HotKeyService::defaultKeyCode);
        m_preferences.setHotKeyModifiers(HotKeyService::defaultModifiers);
    });
    // Queued: on the way from one combination to another there may be one in between that is refused.
    connect(&m_hotKey, &GlobalHotKey::stateChanged, this, &HotKeyCard::showState, Qt::QueuedConnection);
    new RepeatedLook(this, pollingInterval, [this] { look(); });
}

/// At what changes elsewhere: who has the combination, and the keyboard's layout.
void HotKeyCard::look() {
    m_hotKey.tryAgain();
    showState();
    showKeyNames();
}

void HotKeyCard::showState() {
    const bool wasShown = !m_refused->isHidden();
    const bool isShown = m_hotKey.isRefused();
    m_refused->setText(
        m_hotKey.isPossible()
            ? QStringLiteral("Bu kısayol şu anda devrede değil; başka bir uygulama kullanıyor olabilir. Başka bir "
                             "kombinasyon seçebilirsin.")
            : QStringLiteral("Bu masaüstünde genel kısayol kullanılamıyor."));
    m_refused->setVisible(isShown);
    m_recorder->setNote(isShown ? m_refused->text() : QString());
    if (!isShown || wasShown || !isVisible())
        return;
    m_spoken->say(m_refused->text());
    emit messageAppeared();
}

void HotKeyCard::showKeyNames() {
    m_recorder->showKeyNames();
    m_reset->setKeyNames(qtText(KeyNames::describe(HotKey(), m_hotKey.layout())));
}
