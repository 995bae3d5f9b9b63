// SPDX-License-Identifier: MIT
#include "app/ui/unlock/UnlockView.h"

#include "app/state/AppState.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/BareLayout.h"
#include "app/ui/components/FilePanels.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Texts.h"
#include "app/ui/components/WaitCursor.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/unlock/KeyFileField.h"
#include "app/ui/unlock/MasterPasswordFields.h"
#include "app/ui/unlock/NoVaultView.h"
#include "app/ui/unlock/ShakingBanner.h"
#include "app/ui/unlock/UnlockActions.h"
#include "app/ui/unlock/VaultPathCard.h"

#include <QAbstractButton>
#include <QKeyEvent>

namespace {

constexpr int markSide = 52;
constexpr int titleSize = 24;
constexpr int formSpacing = 18;

/// Constant words, whatever the vault at hand uses.
QWidget* makeFooter() {
    auto* const footer = new QWidget;
    auto* const row = bareRow(footer, Metric::xl);
    const auto badge = [&](const QString& text, const QString& symbol) {
        auto* const bare = new Badge(text, Palette::textMuted, symbol);
        bare->setBare(true);
        row->addWidget(bare);
    };
    badge(QStringLiteral("KDBX 4.x"), QStringLiteral("doc.badge.gearshape"));
    badge(QStringLiteral("Argon2id"), QStringLiteral("cpu"));
    badge(QStringLiteral("Yerel"), QStringLiteral("externaldrive"));
    return footer;
}

}  // namespace

UnlockView::UnlockView(AppState& state, QWidget* parent)
    : LockCard(parent),
      m_state(state),
      m_subtitle(new TextLabel({}, BrandFont::secondary(), Palette::textSoft)),
      m_path(new VaultPathCard),
      m_password(new MasterPasswordFields(formSpacing)),
      m_keyFile(new KeyFileField),
      m_banner(new ShakingBanner),
      m_actions(new UnlockActions(state)),
      m_noVaultBanner(new ShakingBanner),
      m_noVault(new NoVaultView(m_noVaultBanner, formSpacing)) {
    arrange();
    connectControls();
    startOver();
}

void UnlockView::arrange() {
    m_form = makeForm();
    column()->addWidget(makeHeader());
    column()->addSpacing(Metric::xl);
    column()->addWidget(m_form);
    column()->addWidget(m_noVault);
    column()->addSpacing(Metric::xxl);
    column()->addStretch();
    column()->addWidget(makeFooter(), 0, Qt::AlignHCenter);
}

QWidget* UnlockView::makeHeader() {
    auto* const header = new QWidget;
    auto* const column = bareColumn(header, 0);
    column->addWidget(new BrandMark(markSide), 0, Qt::AlignHCenter);
    column->addSpacing(Metric::l);
    column->addWidget(
        new TextLabel(QStringLiteral("Brenvik"), BrandFont::display(titleSize, QFont::ExtraBold), Palette::text), 0,
        Qt::AlignHCenter);
    column->addSpacing(Metric::xs);
    column->addWidget(m_subtitle, 0, Qt::AlignHCenter);
    return header;
}

QWidget* UnlockView::makeForm() {
    auto* const form = new QWidget;
    auto* const parts = bareColumn(form, formSpacing);
    parts->addWidget(m_path);
    parts->addWidget(m_password);
    parts->addWidget(m_keyFile);
    parts->addWidget(m_banner);
    parts->addWidget(m_actions);
    return form;
}

void UnlockView::connectControls() {
    connect(m_path, &VaultPathCard::changeWanted, this, &UnlockView::chooseDatabase);
    connect(m_password, &MasterPasswordFields::textChanged, this, &UnlockView::showSubmit);
    connect(m_keyFile, &KeyFileField::chooseWanted, this, &UnlockView::chooseKeyFile);
    connect(m_keyFile, &KeyFileField::fileChanged, this, &UnlockView::showSubmit);
    connect(m_actions, &UnlockActions::submitWanted, this, &UnlockView::submit);
    connect(m_actions, &UnlockActions::openWanted, this, &UnlockView::chooseDatabase);
    connect(m_actions, &UnlockActions::createWanted, this, &UnlockView::chooseNewDatabase);
    connect(m_noVault, &NoVaultView::openWanted, this, &UnlockView::chooseDatabase);
    connect(m_noVault, &NoVaultView::createWanted, this, &UnlockView::chooseNewDatabase);
    for (auto* const banner : {m_banner, m_noVaultBanner})
        connect(banner, &ShakingBanner::dismissed, this, [this] { m_state.setLastError(std::nullopt); });
    connect(&m_state, &AppState::databaseURLChanged, this, &UnlockView::takeUpDatabase);
    connect(&m_state, &AppState::offersCreationChanged, this, &UnlockView::takeUpDatabase);
    connect(&m_state, &AppState::databaseFileLookedAt, this, &UnlockView::answerFile);
    connect(&m_state, &AppState::lastErrorChanged, this, &UnlockView::answerError);
}

void UnlockView::startOver() {
    m_password->conceal();
    m_isBusy = false;
    takeUpDatabase();
    showError();
}

void UnlockView::setDeriving(bool isDeriving) {
    if (isDeriving == m_actions->isDeriving() || (isDeriving && !isVisible()))
        return;
    m_actions->setDeriving(isDeriving);
    for (QWidget* const part : std::initializer_list<QWidget*>{m_path, m_password, m_keyFile, m_banner})
        part->setEnabled(!isDeriving);
    if (!isDeriving)
        m_password->focusPassword();
}

/// Another file is another form: what was typed for the old one goes, and so does its key file.
void UnlockView::takeUpDatabase() {
    m_password->clear();
    m_keyFile->setFile(std::nullopt);
    m_isCreating = m_state.offersCreation();
    m_isAway = m_state.isAway();
    showDatabase();
    showMode();
    if (m_isAway)
        showWhetherAway();
    // An open vault that is saved elsewhere has another file too, and its focus in another screen.
    if (m_state.databaseURL() && m_state.isLocked())
        m_password->focusPassword();
}

void UnlockView::showDatabase() {
    const auto& url = m_state.databaseURL();
    m_form->setVisible(url.has_value());
    m_noVault->setVisible(!url.has_value());
    if (url)
        m_path->showPath(*url);
}

void UnlockView::showMode() {
    m_subtitle->setText(m_isAway       ? QStringLiteral("Kasa yerine dönünce buradan açabilirsin.")
                        : m_isCreating ? QStringLiteral("Ana parolanı belirle, kasayı mühürleyelim.")
                                       : QStringLiteral("Parolaların yerel, şifreli ve sende."));
    m_password->setCreating(m_isCreating);
    m_actions->setCreating(m_isCreating);
    showSubmit();
}

void UnlockView::showSubmit() {
    m_actions->setSubmitEnabled(canSubmit());
}

void UnlockView::showError() {
    const auto& error = m_state.lastError();
    for (auto* const banner : {m_banner, m_noVaultBanner}) {
        if (error)
            banner->setMessage(qtText(*error),
                               m_state.isNotice() ? ErrorBanner::Kind::notice : ErrorBanner::Kind::failure);
        banner->setVisible(error.has_value());  // with its words already, so that they are spoken once
    }
}

void UnlockView::answerError() {
    showError();
    if (!m_state.lastError() || m_state.isNotice() || !isVisible())
        return;
    m_banner->shake();
    m_password->clearPassword();
    m_password->focusPassword();
}

/// A vault that has come back, as on a stick that was plugged in, is there to be opened: nothing is sealed over it, and
/// what was typed for a new one is not tried on it. What was typed for one that is waited for stays.
void UnlockView::answerFile() {
    if (m_isBusy || !m_state.isLocked())
        return;
    if (m_isCreating && !m_state.offersCreation()) {
        takeUpDatabase();
        showWhetherAway();
    } else if (m_isAway != m_state.isAway()) {
        m_isAway = !m_isAway;
        showMode();
        showWhetherAway();
    }
}

void UnlockView::showWhetherAway() {
    const auto message = m_isAway ? QStringLiteral("“%1” şu anda yerinde değil.")
                                  : QStringLiteral("“%1” yeniden yerinde. Ana parolanla açabilirsin.");
    m_state.setNotice(vaultText(message.arg(qtPath(m_state.databaseURL()->filename()))));
}

bool UnlockView::canSubmit() const {
    if (!m_state.databaseURL() || m_isAway || m_isBusy)
        return false;
    if (m_isCreating)
        return !m_password->isEmpty() && m_password->isConfirmed();
    return !m_password->isEmpty() || m_keyFile->file();
}

void UnlockView::openOrSeal() {
    const WaitCursor waiting;
    if (m_isCreating)
        m_state.sealDatabase(*m_state.databaseURL(), m_password->secret(), m_keyFile->file());
    else
        m_state.unlock(m_password->secret(), m_keyFile->file());
}

void UnlockView::submit() {
    if (!canSubmit())
        return;
    m_isBusy = true;
    showSubmit();
    openOrSeal();
    if (!m_state.isLocked())
        m_password->clear();
    m_isBusy = false;
    if (m_state.isLocked() && m_isCreating && !m_state.offersCreation())
        takeUpDatabase();
    showSubmit();
}

void UnlockView::chooseDatabase() {
    if (m_isBusy)
        return;
    if (const auto file = FilePanels::chooseDatabase(this, m_state.databaseURL()))
        m_state.prepare(*file);
}

void UnlockView::chooseNewDatabase() {
    if (m_isBusy)
        return;
    if (const auto file = FilePanels::newDatabaseDestination(this, m_state.databaseURL()))
        m_state.prepareNew(file->file, AppState::Replacing(file->replaces));
}

void UnlockView::chooseKeyFile() {
    if (m_isBusy)
        return;
    m_keyFile->setFile(FilePanels::chooseKeyFile(this, m_state.databaseURL()));
}

/// Return is the way on, from wherever on the card: the fields let it through to here, so that it counts once. Where
/// there is nothing to submit, it presses the button that has the focus.
void UnlockView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return LockCard::keyPressEvent(event);
    if (canSubmit())
        submit();
    else if (auto* const button = qobject_cast<QAbstractButton*>(focusWidget()); button && button->hasFocus())
        button->click();
}
