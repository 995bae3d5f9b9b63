// SPDX-License-Identifier: MIT
#include "core/model/KdbxError.h"

#include "core/primitives/Overloaded.h"

#include <utility>

namespace {

using namespace std::string_literals;

std::string describe(const KdbxError::Case& failure) {
    return std::visit(
        Overloaded{
            [](const KdbxError::UnsupportedVersion& e) {
                return "Desteklenmeyen KDBX sürümü: " + std::to_string(e.major) + "." + std::to_string(e.minor);
            },
            [](const KdbxError::CorruptedData& e) { return "Veritabanı bozuk: " + e.text; },
            [](const KdbxError::UnsupportedCipher& e) { return "Desteklenmeyen şifreleme algoritması: " + e.text; },
            [](const KdbxError::UnsupportedKdf& e) { return "Desteklenmeyen anahtar türetme fonksiyonu: " + e.text; },
            [](const KdbxError::BlockHmacMismatch& e) {
                return "Veri bloğu " + std::to_string(e.index) + " bütünlük kontrolünden geçemedi.";
            },
            [](const KdbxError::XmlParseFailure& e) { return "XML çözümlenemedi: " + e.text; },
            [](const KdbxError::CryptoFailure& e) { return "Şifreleme hatası: " + e.text; },
            [](const KdbxError::NotAKdbxFile&) { return "Bu bir KeePass veritabanı dosyası değil."s; },
            [](const KdbxError::InvalidCredentials&) { return "Ana parola veya anahtar dosyası hatalı."s; },
            [](const KdbxError::HeaderHashMismatch&) {
                return "Başlık bütünlük kontrolü başarısız — dosya değiştirilmiş olabilir."s;
            },
            [](const KdbxError::NestedTooDeep&) {
                return "Gruplar ve kayıtlar bu kadar derin iç içe geçemez; böyle bir kasa bir daha açılamaz."s;
            },
        },
        failure);
}

}  // namespace

KdbxError::KdbxError(Case failure) : m_failure(std::move(failure)), m_description(describe(m_failure)) {}

KdbxError KdbxError::unsupportedVersion(std::uint16_t major, std::uint16_t minor) {
    return KdbxError(UnsupportedVersion{major, minor});
}

KdbxError KdbxError::corruptedData(std::string text) {
    return KdbxError(CorruptedData{std::move(text)});
}

KdbxError KdbxError::unsupportedCipher(std::string text) {
    return KdbxError(UnsupportedCipher{std::move(text)});
}

KdbxError KdbxError::unsupportedKdf(std::string text) {
    return KdbxError(UnsupportedKdf{std::move(text)});
}

KdbxError KdbxError::blockHmacMismatch(std::int64_t index) {
    return KdbxError(BlockHmacMismatch{index});
}

KdbxError KdbxError::xmlParseFailure(std::string text) {
    return KdbxError(XmlParseFailure{std::move(text)});
}

KdbxError KdbxError::cryptoFailure(std::string text) {
    return KdbxError(CryptoFailure{std::move(text)});
}

KdbxError KdbxError::notAKdbxFile() {
    return KdbxError(NotAKdbxFile{});
}

KdbxError KdbxError::invalidCredentials() {
    return KdbxError(InvalidCredentials{});
}

KdbxError KdbxError::headerHashMismatch() {
    return KdbxError(HeaderHashMismatch{});
}

KdbxError KdbxError::nestedTooDeep() {
    return KdbxError(NestedTooDeep{});
}
