// SPDX-License-Identifier: MIT
#include "app/ui/unlock/UnlockView.h"

#include "app/state/AppState.h"
#include "app/ui/components/Accessible.h"
#include "app/ui/components/Badge.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/EmptyStateView.h"
#include "app/ui/components/FilePanels.h"
#include "app/ui/components/FormField.h"
#include "app/ui/components/IconButton.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/SecretField.h"
#include "app/ui/components/StrengthMeter.h"
#include "app/ui/components/SymbolMark.h"
#include "app/ui/components/Texts.h"
#include "app/ui/components/WaitCursor.h"
#include "app/ui/theme/Theme.h"
#include "app/ui/unlock/DerivationProgress.h"
#include "app/ui/unlock/ShakingBanner.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

constexpr int sideMargin = 40;
constexpr int topMargin = 30;
constexpr int bottomMargin = 22;
constexpr int markSide = 52;
constexpr int titleSize = 24;
constexpr int tileSide = 32;
constexpr int smallTextSize = 10;
constexpr int formSpacing = 18;
constexpr int actionSide = 38;
constexpr int keyRowHeight = 30;
constexpr int keySymbolSide = 14;

/// The card's ground. Its least height is the one at its own width, not that of its paragraphs at none.
class CardGround final : public QWidget {
public:
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {0, layout()->totalMinimumHeightForWidth(UnlockView::cardWidth)};
    }
};

QVBoxLayout* bareColumn(QWidget* widget, int spacing) {
    auto* const column = new QVBoxLayout(widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

QHBoxLayout* bareRow(QWidget* widget, int spacing) {
    auto* const row = new QHBoxLayout(widget);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(spacing);
    return row;
}

/// A folder as the user knows it: what lies in his own begins with "~". That one itself has its whole path, since the
/// sign alone says little.
QString shortened(const QString& folder) {
    const QString home = QDir::homePath();
    if (folder.startsWith(home + QLatin1Char('/')))
        return QLatin1Char('~') + folder.mid(home.size());
    return folder;
}

}  // namespace

UnlockView::UnlockView(AppState& state, QWidget* parent)
    : QScrollArea(parent),
      m_state(state),
      m_card(new CardGround),
      m_subtitle(new TextLabel({}, BrandFont::secondary(), Palette::textSoft)),
      m_fileName(new TextLabel({}, BrandFont::body(12, QFont::DemiBold), Palette::text)),
      m_folder(new TextLabel({}, BrandFont::body(smallTextSize), Palette::textSoft)),
      m_password(new SecretField(QStringLiteral("Ana parola"))),
      m_confirmation(new SecretField(QStringLiteral("Parolayı doğrula"))),
      m_strength(new StrengthMeter),
      m_mismatch(new TextLabel(QStringLiteral("Parolalar eşleşmiyor."), BrandFont::label(), Palette::danger)),
      m_chooseKeyFile(new Button(QStringLiteral("Dosya seç…"))),
      m_keyFileName(new TextLabel({}, BrandFont::body(12, QFont::DemiBold), Palette::success)),
      m_banner(new ShakingBanner),
      m_chooserBanner(new ShakingBanner),
      m_submit(new Button({}, Button::Variant::primary)),
      m_progress(new DerivationProgress(state)) {
    makeControls();
    arrange();
    connectControls();
    startOver();
}

// The controls go after this and give the focus away as they do: nobody is there any more to follow it.
UnlockView::~UnlockView() {
    disconnect(qApp, nullptr, this, nullptr);
    disconnect(verticalScrollBar(), nullptr, this, nullptr);
}

void UnlockView::makeControls() {
    for (auto* const field : {m_password, m_confirmation})
        field->setSize(TextField::Size::large);
    m_confirmation->setPlaceholderText(QStringLiteral("Tekrar yaz"));
    m_folder->setElideMode(Qt::ElideMiddle);
    m_chooseKeyFile->setSymbol(QStringLiteral("key.horizontal"));
    m_submit->setLarge(true);
    m_submit->setSymbol(QStringLiteral("lock.open.fill"));
    m_submit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void UnlockView::arrange() {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);

    m_form = makeForm();
    m_chooser = makeChooser();
    auto* const column = new QVBoxLayout(m_card);
    column->setContentsMargins(sideMargin, topMargin, sideMargin, bottomMargin);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addSpacing(Metric::xl);
    column->addWidget(m_form);
    column->addWidget(m_chooser);
    column->addSpacing(Metric::xxl);
    column->addStretch();
    column->addWidget(makeFooter(), 0, Qt::AlignHCenter);
    setWidget(m_card);
    m_card->installEventFilter(this);
    verticalScrollBar()->installEventFilter(this);
    // On a screen that is lower than the card, what has the focus is in view.
    connect(qApp, &QApplication::focusChanged, this, &UnlockView::revealFocus);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, &UnlockView::revealFocus);
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
    auto* const column = bareColumn(form, formSpacing);
    column->addWidget(makePathCard());
    column->addWidget(new FormField(QStringLiteral("Ana parola"), m_password));
    column->addWidget(makeConfirmation());
    m_keyFileField = new FormField(QStringLiteral("Anahtar dosyası"), makeKeyFileField());
    column->addWidget(m_keyFileField);
    column->addWidget(m_banner);
    column->addWidget(makeActionRow());
    return form;
}

QWidget* UnlockView::makeConfirmation() {
    m_mismatch->hide();
    m_strength->hide();
    m_confirmationBlock = new QWidget;
    auto* const column = bareColumn(m_confirmationBlock, 10);
    column->addWidget(new FormField(QStringLiteral("Parolayı doğrula"), m_confirmation));
    column->addWidget(m_strength);
    column->addWidget(m_mismatch);
    return m_confirmationBlock;
}

QWidget* UnlockView::makePathCard() {
    auto* const card = new Card;
    card->content()->setContentsMargins(Metric::m, 10, Metric::m, 10);
    auto* const names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(m_fileName);
    names->addWidget(m_folder);
    auto* const change = new Button(QStringLiteral("Değiştir"));
    change->setSmall(true);
    connect(change, &Button::clicked, this, &UnlockView::chooseDatabase);

    auto* const row = new QHBoxLayout;
    row->setSpacing(Metric::m);
    row->addWidget(new SymbolTile(QStringLiteral("lock.doc"), Palette::accent, tileSide));
    row->addLayout(names, 1);
    row->addWidget(change);
    card->content()->addLayout(row);
    return card;
}

QWidget* UnlockView::makeKeyFileField() {
    m_chosenKeyFile = new QWidget;
    auto* const chosen = bareRow(m_chosenKeyFile, Metric::s);
    auto* const remove = new Button(QStringLiteral("Kaldır"));
    remove->setSmall(true);
    connect(remove, &Button::clicked, this, [this] { setKeyFile(std::nullopt); });
    chosen->addWidget(new SymbolMark(QStringLiteral("key.horizontal"), Palette::success, keySymbolSide));
    chosen->addWidget(m_keyFileName, 1);
    chosen->addWidget(remove);

    auto* const field = new QWidget;
    Accessible::setRole(*field, QAccessible::Grouping);
    field->setMinimumHeight(keyRowHeight);
    auto* const row = bareRow(field, 0);
    row->addWidget(m_chooseKeyFile, 0, Qt::AlignLeft);
    row->addWidget(m_chosenKeyFile, 1);
    return field;
}

QWidget* UnlockView::makeActionRow() {
    const auto framed = [this](const QString& symbol, const QString& tip, void (UnlockView::*act)()) {
        auto* const button = new IconButton(symbol, tip);
        button->setFramed(true);
        button->setSides(actionSide, 16);
        connect(button, &IconButton::clicked, this, act);
        return button;
    };
    m_actions = new QWidget;
    auto* const row = bareRow(m_actions, Metric::s);
    row->addWidget(m_submit, 1);
    row->addWidget(
        framed(QStringLiteral("folder"), QStringLiteral("Başka bir veritabanı aç"), &UnlockView::chooseDatabase));
    row->addWidget(framed(QStringLiteral("doc.badge.plus"), QStringLiteral("Yeni veritabanı oluştur"),
                          &UnlockView::chooseNewDatabase));
    m_progress->setLarge(true);
    m_progress->hide();
    auto* const place = new QWidget;
    place->setFixedHeight(actionSide);
    auto* const column = bareColumn(place, 0);
    column->addWidget(m_actions);
    column->addWidget(m_progress);
    return place;
}

QWidget* UnlockView::makeChooser() {
    auto* const chooser =
        new EmptyStateView(QStringLiteral("lock.doc"), QStringLiteral("Henüz bir kasa yok"),
                           QStringLiteral("Var olan bir .kdbx dosyasını aç ya da sıfırdan yeni bir kasa oluştur."));
    auto* const open = new Button(QStringLiteral("Veritabanı aç…"), Button::Variant::primary);
    auto* const create = new Button(QStringLiteral("Yeni kasa…"));
    connect(open, &Button::clicked, this, &UnlockView::chooseDatabase);
    connect(create, &Button::clicked, this, &UnlockView::chooseNewDatabase);
    auto* const buttons = new QWidget;
    auto* const row = bareRow(buttons, Metric::s);
    row->addWidget(open);
    row->addWidget(create);
    chooser->addBelow(buttons);
    auto* const block = new QWidget;
    auto* const column = bareColumn(block, formSpacing);
    column->addWidget(chooser);
    column->addWidget(m_chooserBanner);
    return block;
}

// Constant words, whatever the vault at hand uses.
QWidget* UnlockView::makeFooter() {
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

void UnlockView::connectControls() {
    connect(m_password, &SecretField::textChanged, this, &UnlockView::showSubmit);
    connect(m_confirmation, &SecretField::textChanged, this, &UnlockView::showSubmit);
    connect(m_password, &SecretField::revealedChanged, m_confirmation, &SecretField::setRevealed);
    connect(m_confirmation, &SecretField::revealedChanged, m_password, &SecretField::setRevealed);
    connect(m_chooseKeyFile, &Button::clicked, this, &UnlockView::chooseKeyFile);
    connect(m_submit, &Button::clicked, this, &UnlockView::submit);
    for (auto* const banner : {m_banner, m_chooserBanner})
        connect(banner, &ShakingBanner::dismissed, this, [this] { m_state.setLastError(std::nullopt); });
    connect(&m_state, &AppState::databaseURLChanged, this, &UnlockView::takeUpDatabase);
    connect(&m_state, &AppState::offersCreationChanged, this, &UnlockView::takeUpDatabase);
    connect(&m_state, &AppState::databaseFileLookedAt, this, &UnlockView::answerFile);
    connect(&m_state, &AppState::lastErrorChanged, this, &UnlockView::answerError);
}

void UnlockView::startOver() {
    m_password->setRevealed(false);
    m_isBusy = false;
    takeUpDatabase();
    showError();
}

void UnlockView::setDeriving(bool isDeriving) {
    if (isDeriving == m_progress->isVisibleTo(this))
        return;
    if (isDeriving && !isVisible())
        return;
    m_actions->setVisible(!isDeriving);
    m_progress->setVisible(isDeriving);
    if (isDeriving)
        m_progress->firstStop()->setFocus();
    for (int i = 0; i + 1 < m_form->layout()->count(); ++i)  // all but the place of the buttons, which is the last
        if (auto* const part = m_form->layout()->itemAt(i)->widget())
            part->setEnabled(!isDeriving);
    if (!isDeriving)
        m_password->setFocus();
}

/// Another file is another form: what was typed for the old one goes, and so does its key file.
void UnlockView::takeUpDatabase() {
    m_password->setSecret({});
    m_confirmation->setSecret({});
    setKeyFile(std::nullopt);
    m_isCreating = m_state.offersCreation();
    showDatabase();
    showMode();
    // An open vault that is saved elsewhere has another file too, and its focus in another screen.
    if (m_state.databaseURL() && m_state.isLocked())
        m_password->setFocus();
}

void UnlockView::showDatabase() {
    const auto& url = m_state.databaseURL();
    m_form->setVisible(url.has_value());
    m_chooser->setVisible(!url.has_value());
    if (!url)
        return;
    m_fileName->setText(qtPath(url->filename()));
    m_folder->setText(shortened(qtPath(url->parent_path())));
}

void UnlockView::showMode() {
    m_subtitle->setText(m_isCreating ? QStringLiteral("Ana parolanı belirle, kasayı mühürleyelim.")
                                     : QStringLiteral("Parolaların yerel, şifreli ve sende."));
    m_password->setPlaceholderText(m_isCreating ? QStringLiteral("Güçlü bir parola seç")
                                                : QStringLiteral("Ana parolan"));
    m_confirmationBlock->setVisible(m_isCreating);
    m_submit->setText(m_isCreating ? QStringLiteral("Kasayı oluştur") : QStringLiteral("Kilidi aç"));
    m_submit->setSymbol(m_isCreating ? QStringLiteral("lock.fill") : QStringLiteral("lock.open.fill"));
    showSubmit();
}

void UnlockView::showKeyFile() {
    m_chooseKeyFile->setVisible(!m_keyFile);
    m_chosenKeyFile->setVisible(m_keyFile.has_value());
    m_keyFileField->setHint(m_keyFile ? QString() : QStringLiteral("İsteğe bağlı — ikinci bir faktör."));
    m_keyFileName->setText(m_keyFile ? qtPath(m_keyFile->filename()) : QString());
}

void UnlockView::showSubmit() {
    const bool differs = !m_confirmation->text().isEmpty() && m_confirmation->text() != m_password->text();
    m_mismatch->setVisible(differs);
    m_strength->setVisible(m_isCreating && !m_password->text().isEmpty());
    m_strength->showStrengthOf(m_isCreating ? m_password->text() : QString());
    m_submit->setEnabled(canSubmit());
}

void UnlockView::showError() {
    const auto& error = m_state.lastError();
    for (auto* const banner : {m_banner, m_chooserBanner}) {
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
    m_password->setSecret({});
    m_password->setFocus();
}

/// A vault that has come back, as on a stick that was plugged in, is there to be opened: nothing is sealed over it, and
/// what was typed for a new one is not tried on it.
void UnlockView::answerFile() {
    if (!m_isCreating || m_isBusy || !m_state.isLocked() || m_state.offersCreation())
        return;
    takeUpDatabase();
    m_state.setNotice(
        vaultText(QStringLiteral("“%1” yeniden yerinde. Ana parolanla açabilirsin.").arg(m_fileName->text())));
}

bool UnlockView::canSubmit() const {
    if (!m_state.databaseURL() || m_isBusy)
        return false;
    if (m_isCreating)
        return !m_password->text().isEmpty() && m_password->text() == m_confirmation->text();
    return !m_password->text().isEmpty() || m_keyFile;
}

void UnlockView::openOrSeal() {
    const WaitCursor waiting;
    if (m_isCreating)
        m_state.sealDatabase(*m_state.databaseURL(), m_password->secret(), m_keyFile);
    else
        m_state.unlock(m_password->secret(), m_keyFile);
}

void UnlockView::submit() {
    if (!canSubmit())
        return;
    m_isBusy = true;
    showSubmit();
    openOrSeal();
    if (!m_state.isLocked()) {
        m_password->setSecret({});
        m_confirmation->setSecret({});
    }
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
    setKeyFile(FilePanels::chooseKeyFile(this, m_state.databaseURL()));
}

void UnlockView::setKeyFile(std::optional<std::filesystem::path> file) {
    m_keyFile = std::move(file);
    showKeyFile();
    showSubmit();
}

int UnlockView::cardHeight() const {
    return m_card->layout()->totalHeightForWidth(cardWidth - barWidth());
}

/// What the scroll bar takes of the card's width, while it shows.
int UnlockView::barWidth() const {
    return verticalScrollBar()->isVisibleTo(this) ? verticalScrollBar()->sizeHint().width() : 0;
}

/// Nothing moves aside for the scroll bar: it stands in the card's margin.
void UnlockView::makeRoomForBar() {
    m_card->layout()->setContentsMargins(sideMargin, topMargin, sideMargin - barWidth(), bottomMargin);
}

void UnlockView::revealFocus() {
    auto* const focus = QApplication::focusWidget();
    if (focus == nullptr || !m_card->isAncestorOf(focus))
        return;
    m_card->layout()->activate();
    ensureWidgetVisible(focus, 0, Metric::xl);
}

/// Return is the way on, from wherever on the card: the fields let it through to here, so that it counts once. Where
/// there is nothing to submit, it presses the button that has the focus.
void UnlockView::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QScrollArea::keyPressEvent(event);
    if (canSubmit())
        submit();
    else if (auto* const button = qobject_cast<QAbstractButton*>(focusWidget()); button && button->hasFocus())
        button->click();
}

bool UnlockView::eventFilter(QObject* watched, QEvent* event) {
    const bool isLaidOut = QScrollArea::eventFilter(watched, event);
    const auto type = event->type();
    if (watched == verticalScrollBar() && (type == QEvent::Show || type == QEvent::Hide))
        makeRoomForBar();
    if (watched == m_card && type == QEvent::LayoutRequest)
        emit cardHeightChanged(cardHeight());
    return isLaidOut;
}
