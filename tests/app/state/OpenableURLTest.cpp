// SPDX-License-Identifier: MIT
#include "app/state/OpenableURL.h"

#include <gtest/gtest.h>

namespace {

TEST(OpenableURLTest, anAddressWithoutASchemeOpensAsHttps) {
    EXPECT_EQ(openableURL("example.com"), "https://example.com");
    EXPECT_EQ(openableURL("example.com:8080/giriş?a=b#c"), "https://example.com:8080/giriş?a=b#c");
    EXPECT_EQ(openableURL("mailto:ali"), std::nullopt) << "ali is no port";
    EXPECT_EQ(openableURL("[::1]/x"), "https://[::1]/x");
}

TEST(OpenableURLTest, anAddressWithASchemeOpensAsItStands) {
    for (const std::string url :
         {"http://example.com", "ftp://example.com/a", "ssh://root@example.com:22", "HTTPS://EXAMPLE.COM",
          "file:///home/ali/kasa.txt", "x-y.z+1://a", "https://müşteri.example.com/ş", "https://a/?q=%C5%9F",
          "https://", "https://[2001:db8::1]:443/", "example.com/?next=http://other.example"})
        EXPECT_EQ(openableURL(url), url);
}

TEST(OpenableURLTest, whatIsNoURLDoesNotOpen) {
    for (const std::string text :
         {"iki kelime",      "https://a b",   "https://a/b c",  "https://a/\nb", "https://a/<b>",
          "https://a/%zz",   "https://a/%4",  "https://[::1",   "https://::1]",  "https://a/[b]",
          "1x://a",          "://a",          "https://a:port", "https://a#b#c", "https://a\\b",
          "https://a/\"b\"", "https://a/{b}", "https://a/|",    "https://a/^",   "https://a/`"})
        EXPECT_EQ(openableURL(text), std::nullopt) << text;
}

}  // namespace
