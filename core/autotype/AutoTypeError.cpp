// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeError.h"

#include "core/primitives/Overloaded.h"

#include <utility>

namespace {

using namespace std::string_literals;

std::string describe(const AutoTypeError::Case& failure) {
    return std::visit(
        Overloaded{[](const AutoTypeError::AccessibilityPermissionMissing&) {
                       return "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve "
                              "Güvenlik → Erişilebilirlik bölümünden Brenvik'e izin verin."s;
                   },
                   [](const AutoTypeError::NoTargetApplication&) { return "Yazılacak hedef uygulama bulunamadı."s; },
                   [](const AutoTypeError::EventCreationFailed&) { return "Klavye olayı oluşturulamadı."s; },
                   [](const AutoTypeError::TargetActivationFailed& error) {
                       return error.applicationName + " uygulaması ön plana getirilemedi.";
                   },
                   [](const AutoTypeError::TargetNoLongerInFront& error) {
                       return error.applicationName + " penceresi artık ön planda olmadığı için yazma durduruldu.";
                   }},
        failure);
}

}  // namespace

AutoTypeError::AutoTypeError(Case failure) : m_failure(std::move(failure)), m_description(describe(m_failure)) {}

AutoTypeError AutoTypeError::accessibilityPermissionMissing() {
    return AutoTypeError(AccessibilityPermissionMissing{});
}

AutoTypeError AutoTypeError::noTargetApplication() {
    return AutoTypeError(NoTargetApplication{});
}

AutoTypeError AutoTypeError::eventCreationFailed() {
    return AutoTypeError(EventCreationFailed{});
}

AutoTypeError AutoTypeError::targetActivationFailed(std::string applicationName) {
    return AutoTypeError(TargetActivationFailed{std::move(applicationName)});
}

AutoTypeError AutoTypeError::targetNoLongerInFront(std::string applicationName) {
    return AutoTypeError(TargetNoLongerInFront{std::move(applicationName)});
}
