// SPDX-License-Identifier: MIT
#include "platform/posix/FileMessages.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

TEST(FileMessagesTest, everyReasonOfTheSystemHasItsWords) {
    const std::pair<int, const char*> reasons[] = {
        {ENOENT, "dosya ya da klasör bulunamadı"},
        {EACCES, "erişim izni yok"},
        {EPERM, "bu işleme izin verilmiyor"},
        {ENOSPC, "diskte yer kalmadı"},
        {EDQUOT, "disk kotası doldu"},
        {EROFS, "disk salt okunur"},
        {EIO, "diskte okuma ya da yazma hatası oluştu"},
        {EISDIR, "bu bir klasör"},
        {ENOTDIR, "yoldaki bir öge klasör değil"},
        {ELOOP, "sembolik bağlar döngü oluşturuyor"},
        {ENAMETOOLONG, "dosya adı ya da yolu çok uzun"},
        {EFBIG, "dosya çok büyük"},
        {EOVERFLOW, "dosya çok büyük"},
        {ENOMEM, "yeterli bellek yok"},
        {EMFILE, "çok fazla dosya açık"},
        {ENFILE, "çok fazla dosya açık"},
        {EBUSY, "dosya başka bir işlem tarafından kullanılıyor"},
        {ETXTBSY, "dosya başka bir işlem tarafından kullanılıyor"},
        {EAGAIN, "dosya şu anda kullanılamıyor"},
        {ENODEV, "aygıt bulunamadı"},
        {ENXIO, "aygıt bulunamadı"},
        {ESTALE, "ağ diskindeki dosyaya artık ulaşılamıyor"},
        {ETIMEDOUT, "disk zamanında yanıt vermedi"},
        {EHOSTDOWN, "ağ diskine ulaşılamıyor"},
        {EHOSTUNREACH, "ağ diskine ulaşılamıyor"},
        {ENOTCONN, "ağ diskine ulaşılamıyor"},
        {EINVAL, "disk bu işlemi kabul etmedi"},
        {ENOTSUP, "disk bu işlemi desteklemiyor"},
        {ENOSYS, "disk bu işlemi desteklemiyor"},
    };
    for (const auto& [code, text] : reasons)
        EXPECT_EQ(FileMessages::reason(code), text) << code;
}

TEST(FileMessagesTest, anUnknownReasonIsReportedByItsNumber) {
    EXPECT_EQ(FileMessages::reason(4711), "beklenmeyen sistem hatası 4711");
}

TEST(FileMessagesTest, theMessageNamesTheFileAndCarriesTheCode) {
    const auto read = FileMessages::cannotRead("/ev/Kasam.kdbx", EIO);
    EXPECT_EQ(read.errorDescription(), "“Kasam.kdbx” okunamadı: diskte okuma ya da yazma hatası oluştu.");
    EXPECT_EQ(read.code(), EIO);

    const auto write = FileMessages::cannotWrite("/ev/Kasam.kdbx", ENOSPC);
    EXPECT_EQ(write.errorDescription(), "“Kasam.kdbx” kaydedilemedi: diskte yer kalmadı.");
    EXPECT_EQ(write.code(), ENOSPC);
}

TEST(FileMessagesTest, aNameThatIsNoTextIsShownAsOne) {
    EXPECT_EQ(FileMessages::cannotRead("/ev/\xFF", EIO).errorDescription(),
              "“\uFFFD” okunamadı: diskte okuma ya da yazma hatası oluştu.");
}

}  // namespace
