// SPDX-License-Identifier: MIT
#include "app/Activation.h"

#include "app/state/AppState.h"
#include "app/state/GlobalHotKey.h"
#include "app/ui/window/MainWindow.h"
#include "core/platform/Scheduler.h"
#include "core/primitives/Overloaded.h"
#include "platform/dbus/FileURI.h"
#include "platform/x11/XActivation.h"

#include <QApplication>
#include <QPointer>

namespace {

using namespace std::chrono_literals;

constexpr auto restWithoutWindow = 10s;  // for what the bus has started the program for
constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";

bool isOnX() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

}  // namespace

Activation::Activation(Services services) : m_services(services) {
    connect(&m_services.service, &ApplicationService::wished, this, &Activation::fulfil);
    endUnlessShown(restWithoutWindow);
}

void Activation::begin(const ApplicationWish& ownWish) {
    m_services.window.bringUp();
    if (const auto* const files = std::get_if<ApplicationWish::Open>(&ownWish.what))
        open(*files);
}

void Activation::fulfil(const ApplicationWish& wish) {
    std::visit(Overloaded{
                   [&](const ApplicationWish::Activate&) { bringToFront(wish.startupID); },
                   [&](const ApplicationWish::Open& files) {
                       bringToFront(wish.startupID);
                       open(files);
                   },
                   [&](ApplicationWish::Action action) { act(action, wish.startupID); },
               },
               wish.what);
    endUnlessShown(0s);
}

void Activation::act(ApplicationWish::Action action, const std::string& startupID) {
    switch (action) {
        case ApplicationWish::Action::lock:
            return m_services.window.perform(Command::ID::lock);
        case ApplicationWish::Action::save:
            return m_services.window.perform(Command::ID::save);
        case ApplicationWish::Action::autoType:
            return m_services.hotKey.press();
        case ApplicationWish::Action::generate:
            bringToFront(startupID);
            if (QApplication::activeModalWidget() == nullptr)
                m_services.window.perform(Command::ID::generate);
            return;
    }
}

/// There is one vault at a time: of several the first one that can be opened at all.
void Activation::open(const ApplicationWish::Open& open) {
    std::vector<std::filesystem::path> files;
    for (const auto& uri : open.uris)
        if (auto file = FileURI::path(uri))
            files.push_back(std::move(*file));
    if (!files.empty())
        m_services.window.openVault(files.front());
    if (files.size() < open.uris.size())
        m_services.state.setNotice("Yalnızca bu bilgisayardaki dosyalar açılabilir.");
    else if (files.size() > 1)
        m_services.state.setNotice("Aynı anda tek kasa açılır; öteki dosyalar açılmadı.");
}

/// What has been shown just now is there for the window manager when the loop turns again.
void Activation::bringToFront(const std::string& startupID) {
    m_services.window.bringUp();
    m_services.scheduler.after(0s, [activation = QPointer<Activation>(this), startupID] {
        if (activation)
            activation->activate(startupID);
    });
}

void Activation::activate(const std::string& startupID) {
    auto& window = m_services.window;
    if (isOnX())
        return XActivation::activate(static_cast<std::uint32_t>(window.winId()), startupID);
    if (!startupID.empty())
        qputenv(tokenVariable, QByteArray::fromStdString(startupID));
    window.activateWindow();
}

/// Without a window the user would not know that the program runs, and there is no vault that it could have open.
void Activation::endUnlessShown(std::chrono::seconds wait) {
    m_services.scheduler.after(wait, [activation = QPointer<Activation>(this)] {
        if (activation && !activation->m_services.window.isVisible())
            QCoreApplication::quit();
    });
}
