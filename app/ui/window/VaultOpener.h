// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/window/DisabledOthers.h"
#include "app/ui/window/OpenQuestion.h"

#include <QObject>

#include <filesystem>
#include <optional>

class AppState;
class Commands;
class SheetHost;

/// Opens vaults that are asked for from outside, as by a double click on their file. What the user is in the middle of
/// is ended first: a derivation or a panel is waited for, and unsaved work is asked about.
class VaultOpener : public QObject {
    Q_OBJECT

public:
    VaultOpener(AppState& state, Commands& commands, QWidget& window);

    /// Makes the file the current vault, locked, as soon as nothing stands against it. The current one stays as it is.
    /// Of several that wait the last one counts.
    void open(std::filesystem::path file);

    [[nodiscard]] bool isAsking() const;

signals:
    void askingChanged();

private:
    void proceed();
    void ask(OpenQuestion::Unsaved unsaved);
    void answer(void (VaultOpener::*act)());
    void openNow();
    void saveAndOpen();
    void forget();
    void dismiss();

    AppState& m_state;
    Commands& m_commands;
    QWidget& m_window;
    SheetHost* m_host;
    DisabledOthers m_others;
    std::optional<std::filesystem::path> m_wanted;
};
