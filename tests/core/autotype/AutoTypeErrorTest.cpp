// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeError.h"

TEST(AutoTypeErrorTest, saysWhatFailed) {
    EXPECT_EQ(AutoTypeError::accessibilityPermissionMissing().errorDescription(),
              "Otomatik yazma için Erişilebilirlik izni gerekli. Sistem Ayarları → Gizlilik ve Güvenlik → "
              "Erişilebilirlik bölümünden Brenvik'e izin verin.");
    EXPECT_EQ(AutoTypeError::noTargetApplication().errorDescription(), "Yazılacak hedef uygulama bulunamadı.");
    EXPECT_EQ(AutoTypeError::eventCreationFailed().errorDescription(), "Klavye olayı oluşturulamadı.");
    EXPECT_EQ(AutoTypeError::targetActivationFailed("Notlar").errorDescription(),
              "Notlar uygulaması ön plana getirilemedi.");
    EXPECT_EQ(AutoTypeError::targetNoLongerInFront("Notlar").errorDescription(),
              "Notlar penceresi artık ön planda olmadığı için yazma durduruldu.");
}

TEST(AutoTypeErrorTest, namesItsCase) {
    using Error = AutoTypeError;
    EXPECT_EQ(Error::accessibilityPermissionMissing().failure(), Error::Case(Error::AccessibilityPermissionMissing()));
    EXPECT_EQ(Error::noTargetApplication().failure(), Error::Case(Error::NoTargetApplication()));
    EXPECT_EQ(Error::eventCreationFailed().failure(), Error::Case(Error::EventCreationFailed()));
    EXPECT_EQ(Error::targetActivationFailed("Notlar").failure(), Error::Case(Error::TargetActivationFailed{"Notlar"}));
    EXPECT_EQ(Error::targetNoLongerInFront("Notlar").failure(), Error::Case(Error::TargetNoLongerInFront{"Notlar"}));
}

TEST(AutoTypeErrorTest, isCaughtAsAnyExceptionWithItsDescription) {
    const auto error = AutoTypeError::targetActivationFailed("Notlar");

    EXPECT_STREQ(static_cast<const std::exception&>(error).what(), "Notlar uygulaması ön plana getirilemedi.");
}
