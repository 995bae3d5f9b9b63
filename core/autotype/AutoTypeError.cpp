// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeError.h"

#include "core/primitives/Overloaded.h"

std::string AutoTypeErrorCases::describe(const Case& failure) {
    using namespace std::string_literals;
    return std::visit(
        Overloaded{[](const AccessibilityPermissionMissing&) {
                       return "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve "
                              "Güvenlik → Erişilebilirlik bölümünden Brenvik'e izin verin."s;
                   },
                   [](const NoTargetApplication&) { return "Yazılacak hedef uygulama bulunamadı."s; },
                   [](const EventCreationFailed&) { return "Klavye olayı oluşturulamadı."s; },
                   [](const TargetActivationFailed& error) {
                       return error.applicationName + " uygulaması ön plana getirilemedi.";
                   },
                   [](const TargetNoLongerInFront& error) {
                       return error.applicationName + " penceresi artık ön planda olmadığı için yazma durduruldu.";
                   }},
        failure);
}
