// SPDX-License-Identifier: MIT
#include "app/ui/window/SpokenChanges.h"

#include "app/state/AppState.h"
#include "app/ui/components/Announcement.h"
#include "app/ui/components/Texts.h"
#include "core/clipboard/ClipboardService.h"

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto spokenFor = 5s;

/// What a step has done, by its name; empty where the focus goes to what has changed and is spoken by itself.
QString outcomeOf(const QString& label) {
    const auto several = QStringLiteral(" Kaydı Sil");
    if (label.endsWith(several))
        return QStringLiteral("%1 kayıt silindi").arg(label.chopped(several.size()));
    if (label == QStringLiteral("Kaydı Sil"))
        return QStringLiteral("Kayıt silindi");
    if (label == QStringLiteral("Grubu Sil"))
        return QStringLiteral("Grup silindi");
    if (label == QStringLiteral("Kayıtları Taşı"))
        return QStringLiteral("Kayıtlar taşındı");
    if (label == QStringLiteral("Grubu Taşı"))
        return QStringLiteral("Grup taşındı");
    return label == QStringLiteral("Sırayı Değiştir") ? QStringLiteral("Sıra değişti") : QString();
}

QString messageOf(const AppState::Change& change) {
    const QString label = qtText(change.label);
    switch (change.kind) {
        case AppState::Change::Kind::made:
            return outcomeOf(label);
        case AppState::Change::Kind::undone:
            return QStringLiteral("Geri alındı: %1").arg(label);
        case AppState::Change::Kind::redone:
            return QStringLiteral("Yinelendi: %1").arg(label);
    }
    return {};
}

}  // namespace

SpokenChanges::SpokenChanges(const Environment& environment, QWidget& window)
    : QObject(&window),
      m_environment(environment),
      m_spoken(new Announcement(&window)),
      m_wipes(environment.clipboard.wipeCount()) {
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, m_spoken, [this] { m_spoken->say({}); });
    connect(&environment.state, &AppState::lastChangeMade, this, &SpokenChanges::sayChange);
    m_clipboard = environment.clipboard.observe([this] { sayWipe(); });
}

void SpokenChanges::sayChange() {
    say(messageOf(m_environment.state.lastChange()));
}

/// A countdown may also end because another program has something on the clipboard, which is left there.
void SpokenChanges::sayWipe() {
    if (std::exchange(m_wipes, m_environment.clipboard.wipeCount()) != m_wipes)
        say(QStringLiteral("Pano temizlendi"));
}

/// Also what was said a moment ago.
void SpokenChanges::say(const QString& message) {
    if (message.isEmpty())
        return;
    m_spoken->say({});
    m_spoken->say(message);
    m_end.start(spokenFor);
}
