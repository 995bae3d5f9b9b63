// SPDX-License-Identifier: MIT
#include "app/ui/Commands.h"

#include "app/state/AppState.h"
#include "app/ui/FilePanels.h"
#include "app/ui/Texts.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>

Commands::Commands(const Environment& environment, QWidget& window)
    : QObject(&window),
      m_environment(environment),
      m_state(environment.state),
      m_window(window),
      m_create(make(tr("Yeni Veritabanı…"), Qt::CTRL | Qt::Key_N, &Commands::createDatabase)),
      m_open(make(tr("Veritabanı Aç…"), Qt::CTRL | Qt::Key_O, &Commands::openDatabase)),
      m_save(make(tr("Kaydet"), Qt::CTRL | Qt::Key_S, &Commands::save)),
      m_saveAs(make(tr("Farklı Kaydet…"), Qt::CTRL | Qt::SHIFT | Qt::Key_S, &Commands::saveAs)),
      m_lock(make(tr("Kasayı Kilitle"), Qt::CTRL | Qt::Key_L, &Commands::lock)),
      m_close(make(tr("Veritabanını Kapat"), Qt::CTRL | Qt::SHIFT | Qt::Key_W, &Commands::closeDatabase)),
      m_quit(new QAction(tr("Çık"), this)),
      m_undo(make(tr("Geri Al"), Qt::CTRL | Qt::Key_Z, &Commands::undo)),
      m_redo(make(tr("Yinele"), Qt::CTRL | Qt::SHIFT | Qt::Key_Z, &Commands::redo)),
      m_search(make(tr("Ara"), Qt::CTRL | Qt::Key_F, &Commands::focusSearch)) {
    m_quit->setShortcut(Qt::CTRL | Qt::Key_Q);
    connect(m_quit, &QAction::triggered, &m_window, &QWidget::close);
    for (const auto signal : {&AppState::databaseChanged, &AppState::databaseURLChanged, &AppState::isLockedChanged,
                              &AppState::isDirtyChanged, &AppState::undoLabelChanged, &AppState::redoLabelChanged})
        connect(&m_state, signal, this, &Commands::showEnabled);
    showEnabled();
}

QAction* Commands::make(const QString& text, const QKeySequence& key, void (Commands::*act)()) {
    auto* const action = new QAction(text, this);
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, act);
    return action;
}

void Commands::fill(QMenuBar& bar) {
    auto* const file = bar.addMenu(tr("Dosya"));
    file->addActions({m_create, m_open});
    file->addSeparator();
    file->addActions({m_save, m_saveAs});
    file->addSeparator();
    file->addActions({m_lock, m_close});
    file->addSeparator();
    file->addAction(m_quit);
    bar.addMenu(tr("Düzen"))->addActions({m_undo, m_redo});
    bar.addMenu(tr("Görünüm"))->addAction(m_search);
}

void Commands::showEnabled() {
    const bool hasDatabase = m_state.database().has_value();
    m_save->setEnabled(m_state.canSave() && m_state.isDirty());
    m_saveAs->setEnabled(hasDatabase);
    m_lock->setEnabled(!m_state.isLocked());
    m_close->setEnabled(hasDatabase);
    m_undo->setEnabled(m_state.canUndo());
    m_redo->setEnabled(m_state.canRedo());
    m_search->setEnabled(!m_state.isLocked());
    const auto named = [](const QString& verb, const std::optional<std::string>& label) {
        return label ? verb + QStringLiteral(" — ") + qtText(*label) : verb;
    };
    m_undo->setText(named(tr("Geri Al"), m_state.undoLabel()));
    m_redo->setText(named(tr("Yinele"), m_state.redoLabel()));
}

void Commands::createDatabase() {
    const auto file = FilePanels::newDatabaseDestination(&m_window);
    if (!file)
        return;
    m_state.setRoute(std::nullopt);
    m_state.prepare(*file);
    m_state.setStatusMessage("Ana parolayı belirleyip kasayı oluşturun.");
}

void Commands::openDatabase() {
    if (const auto file = FilePanels::chooseDatabase(&m_window))
        m_state.prepare(*file);
}

void Commands::save() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_state.save();
    QApplication::restoreOverrideCursor();
}

void Commands::saveAs() {
    const auto& url = m_state.databaseURL();
    if (const auto file =
            FilePanels::saveAsDestination(&m_window, url ? qtPath(url->filename()) : QStringLiteral("Kasam.kdbx")))
        m_state.saveAs(*file);
}

void Commands::lock() {
    m_state.lock();
}

void Commands::closeDatabase() {
    m_state.closeDatabase();
}

void Commands::undo() {
    m_state.undo();
}

void Commands::redo() {
    m_state.redo();
}

void Commands::focusSearch() {
    m_state.focusSearch();
}
