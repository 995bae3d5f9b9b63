// SPDX-License-Identifier: MIT
#pragma once

#include <concepts>
#include <exception>
#include <optional>
#include <string>

/// A typed failure in words: its type and case, as in "KdbxError.invalidCredentials", and its message.
struct Failure {
    std::string name;
    std::string message;
};

/// The failure that an exception is; nothing for an exception of any other type.
std::optional<Failure> failureOf(const std::exception& exception);

/// What a call ends in: "TYPE.case: message", or "nothing" where it succeeds.
template <std::invocable Call>
std::string outcomeOf(Call call) {
    try {
        (void)call();
    } catch (const std::exception& exception) {
        const auto failure = failureOf(exception);
        return failure ? failure->name + ": " + failure->message : std::string("untyped: ") + exception.what();
    }
    return "nothing";
}

/// Outcomes of the cases that carry a text.
inline std::string corruptedData(const std::string& text) {
    return "KdbxError.corruptedData: Veritabanı bozuk: " + text;
}
inline std::string unsupportedKdf(const std::string& text) {
    return "KdbxError.unsupportedKdf: Desteklenmeyen anahtar türetme fonksiyonu: " + text;
}
inline std::string unsupportedCipher(const std::string& text) {
    return "KdbxError.unsupportedCipher: Desteklenmeyen şifreleme algoritması: " + text;
}
inline std::string cryptoFailure(const std::string& text) {
    return "KdbxError.cryptoFailure: Şifreleme hatası: " + text;
}
inline std::string xmlParseFailure(const std::string& text) {
    return "KdbxError.xmlParseFailure: XML çözümlenemedi: " + text;
}
inline std::string shortData(long long wanted, long long left) {
    return corruptedData("beklenenden kısa veri (" + std::to_string(wanted) + " bayt istendi, " + std::to_string(left) +
                         " kaldı)");
}
inline std::string blockHmacMismatch(int index) {
    return "KdbxError.blockHmacMismatch: Veri bloğu " + std::to_string(index) + " bütünlük kontrolünden geçemedi.";
}
inline constexpr auto notAKdbxFile = "KdbxError.notAKdbxFile: Bu bir KeePass veritabanı dosyası değil.";
inline constexpr auto invalidCredentials = "KdbxError.invalidCredentials: Ana parola veya anahtar dosyası hatalı.";
inline constexpr auto headerHashMismatch =
    "KdbxError.headerHashMismatch: Başlık bütünlük kontrolü başarısız — dosya değiştirilmiş olabilir.";
