// SPDX-License-Identifier: MIT
#include "platform/x11/XSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

/// The property as a settings daemon writes it (XSETTINGS, version 0.5).
class Property {
public:
    explicit Property(bool isBigEndian) : m_isBigEndian(isBigEndian) {
        m_bytes = {std::uint8_t(isBigEndian ? 1 : 0), 0, 0, 0};
        number(7, 4);
    }
    Property& count(std::uint32_t settings) { return number(settings, 4); }
    Property& head(std::uint8_t kind, const std::string& name) {
        number(kind, 1).number(0, 1).number(static_cast<std::uint32_t>(name.size()), 2).padded(name);
        return number(3, 4);
    }
    Property& number(std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i)
            m_bytes.push_back(std::uint8_t(value >> (8 * (m_isBigEndian ? size - 1 - i : i))));
        return *this;
    }
    Property& padded(const std::string& text) {
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
        while (m_bytes.size() % 4 != 0)
            m_bytes.push_back(0);
        return *this;
    }
    const Bytes& bytes() const { return m_bytes; }

private:
    bool m_isBigEndian;
    Bytes m_bytes;
};

Bytes settings(bool isBigEndian, std::uint32_t animations) {
    return Property(isBigEndian)
        .count(4)
        .head(1, "Net/ThemeName")
        .number(7, 4)
        .padded("Adwaita")
        .head(2, "Gtk/Colour")
        .number(0, 4)
        .number(0, 4)
        .head(0, "Gtk/EnableAnimations")
        .number(animations, 4)
        .head(0, "Xft/DPI")
        .number(static_cast<std::uint32_t>(-1), 4)
        .bytes();
}

TEST(XSettingsTest, findsAnIntegerAmongOtherSettingsInEitherByteOrder) {
    for (const bool isBigEndian : {false, true}) {
        EXPECT_EQ(XSettings::integerIn(settings(isBigEndian, 1), "Gtk/EnableAnimations"), 1);
        EXPECT_EQ(XSettings::integerIn(settings(isBigEndian, 0), "Gtk/EnableAnimations"), 0);
        EXPECT_EQ(XSettings::integerIn(settings(isBigEndian, 0), "Xft/DPI"), -1);
    }
}

TEST(XSettingsTest, whatIsNotThereOrNoIntegerIsNone) {
    EXPECT_FALSE(XSettings::integerIn(settings(false, 1), "Gtk/Unknown"));
    EXPECT_FALSE(XSettings::integerIn(settings(false, 1), "Net/ThemeName"));
    EXPECT_FALSE(XSettings::integerIn({}, "Xft/DPI"));
}

TEST(XSettingsTest, aPropertyThatIsCutShortAnywhereHasNoMoreThanWhatIsWhole) {
    const auto whole = settings(false, 1);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(XSettings::integerIn(std::span(whole).first(size), "Xft/DPI")) << size;
}

TEST(XSettingsTest, aCountAndLengthsThatLieEndTheReading) {
    EXPECT_FALSE(XSettings::integerIn(Property(false).count(0xFFFFFFFF).bytes(), "Xft/DPI"));
    EXPECT_FALSE(XSettings::integerIn(
        Property(false).count(2).head(1, "A").number(0xFFFFFFFF, 4).head(0, "Xft/DPI").number(1, 4).bytes(),
        "Xft/DPI"));
    EXPECT_FALSE(XSettings::integerIn(
        Property(false).count(2).head(9, "A").number(0, 4).head(0, "Xft/DPI").number(1, 4).bytes(), "Xft/DPI"));
}

TEST(XSettingsTest, withoutADisplayThereIsNone) {
    setenv("DISPLAY", ":4711", 1);
    EXPECT_FALSE(XSettings::integer("Xft/DPI"));
    unsetenv("DISPLAY");
}

}  // namespace
