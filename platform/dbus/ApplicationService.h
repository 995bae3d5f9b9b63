// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

/// What the desktop, or another start of the program, asks of the one that runs.
struct ApplicationWish {
    struct Activate {};
    struct Open {
        std::vector<std::string> uris;
    };
    enum class Action : std::uint8_t { lock, save, generate, autoType };

    std::variant<Activate, Open, Action> what;
    std::string startupID;  // of what the user did, by which the desktop lets a window come to the front; may be empty
};

/// The program on the session's bus: by its name there is one in a session, which serves all others
/// (org.freedesktop.Application of the Desktop Entry Specification). Without a bus it is alone, and nothing comes.
class ApplicationService final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// Asks for the name, and does not wait for the answer.
    explicit ApplicationService(QObject* parent = nullptr);

    /// Waits for that answer: whether another start has the name.
    [[nodiscard]] bool isTaken();
    /// The same, and passes a wish on to that start. Whether it has taken it: there is nothing left to do then.
    [[nodiscard]] bool handOver(const ApplicationWish& wish);

signals:
    /// Something is asked for. The asker has its answer already: what follows may take its time.
    void wished(const ApplicationWish& wish);

public slots:  // with the names that they have on the bus. NOLINTBEGIN(readability-identifier-naming)
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameters,
                                     const QVariantMap& platformData);
    // NOLINTEND(readability-identifier-naming)

private:
    void askForName();
    void announce(ApplicationWish wish);

    QDBusConnection m_bus;
    QDBusPendingReply<uint> m_name;
};
