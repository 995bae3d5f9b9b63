// SPDX-License-Identifier: MIT
#include "platform/posix/FileMessages.h"

#include "core/text/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace {

struct Reason {
    int code;
    std::string_view text;
};

constexpr std::array reasons{
    Reason{ENOENT, "dosya ya da klasör bulunamadı"},
    Reason{EACCES, "erişim izni yok"},
    Reason{EPERM, "bu işleme izin verilmiyor"},
    Reason{ENOSPC, "diskte yer kalmadı"},
    Reason{EDQUOT, "disk kotası doldu"},
    Reason{EROFS, "disk salt okunur"},
    Reason{EIO, "diskte okuma ya da yazma hatası oluştu"},
    Reason{EISDIR, "bu bir klasör"},
    Reason{ENOTDIR, "yoldaki bir öge klasör değil"},
    Reason{ELOOP, "sembolik bağlar döngü oluşturuyor"},
    Reason{ENAMETOOLONG, "dosya adı ya da yolu çok uzun"},
    Reason{EFBIG, "dosya çok büyük"},
    Reason{ENOMEM, "yeterli bellek yok"},
    Reason{EMFILE, "çok fazla dosya açık"},
    Reason{ENFILE, "çok fazla dosya açık"},
    Reason{EBUSY, "dosya başka bir işlem tarafından kullanılıyor"},
    Reason{ETXTBSY, "dosya başka bir işlem tarafından kullanılıyor"},
    Reason{EAGAIN, "dosya şu anda kullanılamıyor"},
    Reason{ENODEV, "aygıt bulunamadı"},
    Reason{ENXIO, "aygıt bulunamadı"},
    Reason{ESTALE, "ağ diskindeki dosyaya artık ulaşılamıyor"},
    Reason{ETIMEDOUT, "disk zamanında yanıt vermedi"},
    Reason{EHOSTDOWN, "ağ diskine ulaşılamıyor"},
    Reason{EHOSTUNREACH, "ağ diskine ulaşılamıyor"},
    Reason{ENOTCONN, "ağ diskine ulaşılamıyor"},
    Reason{EINVAL, "disk bu işlemi kabul etmedi"},
    Reason{ENOTSUP, "disk bu işlemi desteklemiyor"},
    Reason{ENOSYS, "disk bu işlemi desteklemiyor"},
    Reason{EOVERFLOW, "dosya çok büyük"},
};

FileError fileError(const std::filesystem::path& file, std::string_view verb, int code, std::string_view reason) {
    // A file's name is bytes; what is shown is text.
    std::string text = "“" + Text::repairingUTF8(bytesOf(file.filename().native())) + "” ";
    text.append(verb).append(": ").append(reason).append(".");
    return {code, std::move(text)};
}

}  // namespace

std::string FileMessages::reason(int code) {
    const auto known = std::find_if(reasons.begin(), reasons.end(), [&](const Reason& r) { return r.code == code; });
    return known != reasons.end() ? std::string(known->text) : "beklenmeyen sistem hatası " + std::to_string(code);
}

FileError FileMessages::cannotRead(const std::filesystem::path& file, int code) {
    return cannotRead(file, code, reason(code));
}

FileError FileMessages::cannotRead(const std::filesystem::path& file, int code, std::string_view reason) {
    return fileError(file, "okunamadı", code, reason);
}

FileError FileMessages::cannotWrite(const std::filesystem::path& file, int code) {
    return cannotWrite(file, code, reason(code));
}

FileError FileMessages::cannotWrite(const std::filesystem::path& file, int code, std::string_view reason) {
    return fileError(file, "kaydedilemedi", code, reason);
}
