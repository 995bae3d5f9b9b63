// SPDX-License-Identifier: MIT
#include "app/BrenvikApp.h"
#include "app/CommandLine.h"
#include "app/StartupFailures.h"
#include "platform/dbus/ApplicationService.h"
#include "platform/dbus/FileURI.h"
#include "platform/dbus/SessionBus.h"
#include "platform/posix/ProcessHardening.h"
#include "platform/qt/TerminationSignals.h"
#include "platform/x11/XDisplay.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

constexpr const char* platformVariable = "QT_QPA_PLATFORM";

/// Prefers X wherever there is a display of it, XWayland's included: only there the window keeps its position, the hot
/// key works and the clipboard's changes are counted exactly.
class PlatformChoice {
public:
    PlatformChoice() : m_isOurs(!qEnvironmentVariableIsSet(platformVariable) && XDisplay::canBeOpened()) {
        if (m_isOurs)
            qputenv(platformVariable, "xcb");
    }
    /// Once Qt has read it: the programs that we start choose for themselves.
    void takeBack() const {
        if (m_isOurs)
            qunsetenv(platformVariable);
    }

private:
    bool m_isOurs;
};

void speakTurkish(QTranslator& translator) {
    QLocale::setDefault(QLocale(QLocale::Turkish));
    if (translator.load(QStringLiteral("qtbase_tr"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&translator);
    QApplication::setApplicationDisplayName(QStringLiteral("Brenvik"));
}

/// What the launcher calls this start, so that its window may come to the front. Qt would take it for its first window
/// and forget it, but it may be another start's window that comes.
std::string takeStartupID() {
    for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
        if (const auto id = qgetenv(variable); !id.isEmpty())
            return id.toStdString();
    return {};
}

ApplicationWish wishOf(const CommandLine& line, std::string startupID) {
    if (line.files.empty())
        return {ApplicationWish::Activate(), std::move(startupID)};
    ApplicationWish::Open open;
    for (const auto& file : line.files)
        open.uris.push_back(FileURI::of(file));
    return {std::move(open), std::move(startupID)};
}

}  // namespace

int main(int argumentCount, char* arguments[]) {
    ProcessHardening::keepMemoryPrivate();
    const auto given = [&] { return std::vector<std::string>(arguments + 1, arguments + argumentCount); };
    if (const auto status = CommandLine::answer(given(), CommandLine::Reading::first))
        return *status;
    const auto startupID = takeStartupID();
    const PlatformChoice platform;
    const SessionBus bus;
    std::optional<StartupFailures> failures(std::in_place);
    QApplication application(argumentCount, arguments);
    failures.reset();
    platform.takeBack();
    if (const auto status = CommandLine::answer(given(), CommandLine::Reading::leftOver))
        return *status;
    QApplication::setApplicationName(QStringLiteral("brenvik"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.brenvik.Brenvik"));
    ApplicationService service;  // its answer comes while the window is made
    bus.takeBack();
    QTranslator translator;
    speakTurkish(translator);
    const TerminationSignals endings;
    BrenvikApp brenvik(application);
    const auto line = CommandLine::read(given());
    const auto wish = wishOf(line, startupID);
    if (line.isService ? service.isTaken() : service.handOver(wish))
        return EXIT_SUCCESS;
    if (line.isService)
        brenvik.serve(service);
    else
        brenvik.serve(service, wish);
    return QApplication::exec();
}
