// SPDX-License-Identifier: MIT
#include "platform/dbus/FileURI.h"

#include <gtest/gtest.h>

namespace {

TEST(FileURITest, eachPathComesThrough) {
    std::string every = "/";
    for (int letter = 1; letter < 256; ++letter)
        every += static_cast<char>(letter);
    for (const auto& path : {std::string("/a/Boşluklu ad #?%20.kdbx"), std::string("/\xff\xfe"), every})
        EXPECT_EQ(FileURI::path(FileURI::of(path)), path);
}

TEST(FileURITest, nothingButPlainCharactersAreInAURI) {
    EXPECT_EQ(FileURI::of("/bir iki/ğ.kdbx"), "file:///bir%20iki/%C4%9F.kdbx");
}

TEST(FileURITest, eachWayToWriteAFileOfThisMachineIsRead) {
    for (const auto* uri : {"file:///a%20b", "file:/a%20b", "FILE:///a b", "file://localhost/a%20b", "/a b"})
        EXPECT_EQ(FileURI::path(uri), "/a b") << uri;
}

TEST(FileURITest, anythingElseIsNone) {
    for (const auto* uri :
         {"", "a", "sftp://makine/a", "file://makine/a", "file:a", "file://", "file:///a%00b", "https:/a"})
        EXPECT_FALSE(FileURI::path(uri)) << uri;
}

}  // namespace
