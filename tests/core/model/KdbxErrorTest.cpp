// SPDX-License-Identifier: MIT
#include "core/model/KdbxError.h"

#include <gtest/gtest.h>

namespace {

TEST(KdbxErrorTest, everyCaseHasItsMessage) {
    const std::pair<KdbxError, const char*> messages[] = {
        {KdbxError::unsupportedVersion(5, 65535), "Desteklenmeyen KDBX sürümü: 5.65535"},
        {KdbxError::corruptedData("veri"), "Veritabanı bozuk: veri"},
        {KdbxError::unsupportedCipher("Twofish"), "Desteklenmeyen şifreleme algoritması: Twofish"},
        {KdbxError::unsupportedKdf("kdf"), "Desteklenmeyen anahtar türetme fonksiyonu: kdf"},
        {KdbxError::blockHmacMismatch(0), "Veri bloğu 0 bütünlük kontrolünden geçemedi."},
        {KdbxError::blockHmacMismatch(1'234'567), "Veri bloğu 1234567 bütünlük kontrolünden geçemedi."},
        {KdbxError::xmlParseFailure("belge"), "XML çözümlenemedi: belge"},
        {KdbxError::cryptoFailure("-4304"), "Şifreleme hatası: -4304"},
        {KdbxError::notAKdbxFile(), "Bu bir KeePass veritabanı dosyası değil."},
        {KdbxError::invalidCredentials(), "Ana parola veya anahtar dosyası hatalı."},
        {KdbxError::headerHashMismatch(), "Başlık bütünlük kontrolü başarısız — dosya değiştirilmiş olabilir."}};
    for (const auto& [error, message] : messages) {
        EXPECT_EQ(error.errorDescription(), message);
        EXPECT_STREQ(error.what(), message);
    }
}

TEST(KdbxErrorTest, isEqualByCaseAndPayload) {
    const auto everyKind = [] {
        return std::vector{KdbxError::unsupportedVersion(3, 4), KdbxError::unsupportedVersion(4, 3),
                           KdbxError::unsupportedVersion(4, 4), KdbxError::corruptedData("a"),
                           KdbxError::corruptedData("b"),       KdbxError::unsupportedCipher("a"),
                           KdbxError::unsupportedCipher("b"),   KdbxError::unsupportedKdf("a"),
                           KdbxError::unsupportedKdf("b"),      KdbxError::blockHmacMismatch(0),
                           KdbxError::blockHmacMismatch(1),     KdbxError::xmlParseFailure("a"),
                           KdbxError::xmlParseFailure("b"),     KdbxError::cryptoFailure("a"),
                           KdbxError::cryptoFailure("b"),       KdbxError::notAKdbxFile(),
                           KdbxError::invalidCredentials(),     KdbxError::headerHashMismatch()};
    };
    const auto errors = everyKind();
    const auto same = everyKind();
    for (std::size_t i = 0; i < errors.size(); ++i)
        for (std::size_t j = 0; j < same.size(); ++j)
            EXPECT_EQ(errors[i] == same[j], i == j) << errors[i].what() << ' ' << same[j].what();
}

TEST(KdbxErrorTest, saysItsCaseWhereItIsCaught) {
    try {
        throw KdbxError::blockHmacMismatch(7);
    } catch (const KdbxError& error) {
        EXPECT_EQ(std::get<KdbxError::BlockHmacMismatch>(error.failure()).index, 7);
    }
}

}  // namespace
