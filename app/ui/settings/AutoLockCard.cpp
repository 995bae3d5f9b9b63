// SPDX-License-Identifier: MIT
#include "app/ui/settings/AutoLockCard.h"

#include "app/state/Preferences.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/QuickButtons.h"
#include "app/ui/components/Slider.h"
#include "app/ui/components/Toggle.h"
#include "app/ui/theme/Theme.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int rowGap = 10;
constexpr int longestTime = static_cast<int>(Preferences::longestLockAfterMinutes);

QString minutes() {
    return QStringLiteral("%1 dk");
}

QString never() {
    return QStringLiteral("Kapalı");
}

QString timeTitle() {
    return QStringLiteral("Boştayken kilitle");
}

QString sessionHint() {
    return QStringLiteral(
        "Ekran kilitlendiğinde, başka bir kullanıcıya geçildiğinde ve bilgisayar uyuduğunda. Kaydedilemeyen bir "
        "değişiklik varsa kasa açık kalır.");
}

}  // namespace

AutoLockCard::AutoLockCard(Preferences& preferences, QWidget* parent)
    : Card(QStringLiteral("Kilit"), parent),
      m_preferences(preferences),
      m_value(new TextLabel({}, BrandFont::rowTitle(), Palette::accent)),
      m_slider(new Slider(timeTitle(), 0, longestTime)),
      m_quickTimes(new QuickButtons({0, 5, 15, 30}, minutes(), QuickButtons::Width::natural)),
      m_withSession(new Toggle(QStringLiteral("Oturum kilitlenince kasayı da kilitle"))) {
    arrange();
    connectControls();
    showMinutes();
    showSession();
}

void AutoLockCard::arrange() {
    content()->setSpacing(rowGap);
    m_value->setTabularFigures(true);
    m_quickTimes->nameNumber(0, never());
    m_withSession->setAccessibleDescription(sessionHint());
    auto* const row = new QHBoxLayout;
    row->addWidget(new TextLabel(timeTitle(), BrandFont::bodyText(), Palette::text), 1);
    row->addWidget(m_value);
    content()->addLayout(row);
    content()->addWidget(m_slider);
    content()->addWidget(new Paragraph(QStringLiteral("Klavye ve fare bu süre boyunca kullanılmazsa kasa kilitlenir."),
                                       BrandFont::body(11), Palette::textSoft));
    content()->addWidget(m_quickTimes);
    addDivider();
    content()->addWidget(m_withSession);
    content()->addWidget(new Paragraph(sessionHint(), BrandFont::body(11), Palette::textSoft));
}

void AutoLockCard::connectControls() {
    connect(m_slider, &Slider::valueChanged, &m_preferences, &Preferences::setLockAfterMinutes);
    connect(m_quickTimes, &QuickButtons::chosen, &m_preferences, &Preferences::setLockAfterMinutes);
    connect(m_withSession, &Toggle::toggled, &m_preferences, [this](bool isOn) {
        if (isOn != m_preferences.lockWithSession())  // else it is only shown
            m_preferences.setLockWithSession(isOn);
    });
    connect(&m_preferences, &Preferences::lockAfterMinutesChanged, this, &AutoLockCard::showMinutes);
    connect(&m_preferences, &Preferences::lockWithSessionChanged, this, &AutoLockCard::showSession);
}

void AutoLockCard::showMinutes() {
    const QSignalBlocker showing(m_slider);  // a value that is shown is not a value that was chosen
    const auto time = static_cast<int>(m_preferences.lockAfterMinutes());
    m_slider->setValue(time);
    m_value->setText(time == 0 ? never() : minutes().arg(time));
    m_quickTimes->showNumber(time);
}

void AutoLockCard::showSession() {
    m_withSession->setChecked(m_preferences.lockWithSession());
}
