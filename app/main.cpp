// SPDX-License-Identifier: MIT
#include "app/BrenvikApp.h"
#include "app/StartupFailures.h"
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

}  // namespace

int main(int argumentCount, char* arguments[]) {
    ProcessHardening::keepMemoryPrivate();
    const PlatformChoice platform;
    std::optional<StartupFailures> failures(std::in_place);
    QApplication application(argumentCount, arguments);
    failures.reset();
    platform.takeBack();
    QApplication::setApplicationName(QStringLiteral("brenvik"));
    QTranslator translator;
    speakTurkish(translator);
    const TerminationSignals endings;
    const BrenvikApp brenvik(application);
    return QApplication::exec();
}
