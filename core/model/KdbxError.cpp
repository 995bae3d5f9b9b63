// SPDX-License-Identifier: MIT
#include "core/model/KdbxError.h"

#include "core/primitives/Overloaded.h"

std::string KdbxErrorCases::describe(const Case& failure) {
    using namespace std::string_literals;
    return std::visit(
        Overloaded{
            [](const UnsupportedVersion& e) {
                return "Desteklenmeyen KDBX sürümü: " + std::to_string(e.major) + "." + std::to_string(e.minor);
            },
            [](const CorruptedData& e) { return "Veritabanı bozuk: " + e.text; },
            [](const UnsupportedCipher& e) { return "Desteklenmeyen şifreleme algoritması: " + e.text; },
            [](const UnsupportedKdf& e) { return "Desteklenmeyen anahtar türetme fonksiyonu: " + e.text; },
            [](const BlockHmacMismatch& e) {
                return "Veri bloğu " + std::to_string(e.index) + " bütünlük kontrolünden geçemedi.";
            },
            [](const XmlParseFailure& e) { return "XML çözümlenemedi: " + e.text; },
            [](const CryptoFailure& e) { return "Şifreleme hatası: " + e.text; },
            [](const NotAKdbxFile&) { return "Bu bir KeePass veritabanı dosyası değil."s; },
            [](const InvalidCredentials&) { return "Ana parola veya anahtar dosyası hatalı."s; },
            [](const HeaderHashMismatch&) {
                return "Başlık bütünlük kontrolü başarısız — dosya değiştirilmiş olabilir."s;
            },
            [](const NestedTooDeep&) {
                return "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz."s;
            },
        },
        failure);
}
