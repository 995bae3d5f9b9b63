// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Card.h"

class AutoTypeService;
class Announcement;
class Button;
class GlobalHotKey;
class HotKeyRecorder;
class Paragraph;
class PermissionRow;
class Preferences;
class QuickButtons;
class Slider;
class TextField;
class TextLabel;

/// How long a copied secret stays on the clipboard.
class ClipboardCard : public Card {
    Q_OBJECT

public:
    explicit ClipboardCard(Preferences& preferences, QWidget* parent = nullptr);

private:
    void arrange();
    void connectControls();
    void showTimeout();

    Preferences& m_preferences;
    TextLabel* m_value;
    Slider* m_slider;
    QuickButtons* m_quickTimes;
};

/// The sequence of entries that have none, and whether typing is allowed. The permission is asked for again and again
/// while the card shows, since it is given elsewhere.
class AutoTypeCard : public Card {
    Q_OBJECT

public:
    AutoTypeCard(Preferences& preferences, AutoTypeService& autoType, QWidget* parent = nullptr);

private:
    void arrange();
    void connectControls();
    void showSequence();
    void showPermission();

    Preferences& m_preferences;
    AutoTypeService& m_autoType;
    TextField* m_sequence;
    Button* m_reset;
    PermissionRow* m_permission;
};

/// The combination that types into whatever application is in front, and whether it is in force. While the card shows,
/// a combination that another program has is tried again and again: nothing reports that it is free.
class HotKeyCard : public Card {
    Q_OBJECT

public:
    HotKeyCard(Preferences& preferences, GlobalHotKey& hotKey, QWidget* parent = nullptr);

signals:
    /// The card has grown by a message that the user should see.
    void messageAppeared();

private:
    void arrange();
    void connectControls();
    void look();
    void showState();
    void showKeyNames();

    Preferences& m_preferences;
    GlobalHotKey& m_hotKey;
    HotKeyRecorder* m_recorder;
    Button* m_reset;
    TextLabel* m_rejected;
    Paragraph* m_refused;
    Announcement* m_spoken;
};
