// SPDX-License-Identifier: MIT
#include "app/ui/components/EntryIcon.h"
#include "app/ui/components/StrengthMeter.h"
#include "app/ui/theme/FontRegistrar.h"
#include "app/ui/theme/Symbol.h"
#include "app/ui/theme/Theme.h"
#include "core/generator/PasswordGenerator.h"
#include "tests/app/ui/WindowProbe.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFontInfo>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <limits>

namespace {

using namespace WindowProbe;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

std::string hex(const QColor& colour) {
    return colour.name(QColor::HexRgb).toUpper().toStdString();
}

TEST(ThemeTest, thePaletteIsTheProductsOwn) {
    EXPECT_EQ(hex(Palette::canvas), "#15110E");
    EXPECT_EQ(hex(Palette::surface), "#1D1815");
    EXPECT_EQ(hex(Palette::elevated), "#252017");
    EXPECT_EQ(hex(Palette::hover), "#2E2823");
    EXPECT_EQ(hex(Palette::line), "#342D27");
    EXPECT_EQ(hex(Palette::lineStrong), "#4A4139");
    EXPECT_EQ(hex(Palette::text), "#F6F0EA");
    EXPECT_EQ(hex(Palette::textSoft), "#C3B8AD");
    EXPECT_EQ(hex(Palette::textMuted), "#8E8379");
    EXPECT_EQ(hex(Palette::accent), "#FF6B3D");
    EXPECT_EQ(hex(Palette::accentHover), "#FF804F");
    EXPECT_EQ(hex(Palette::info), "#7B92FF");
    EXPECT_EQ(hex(Palette::warn), "#FFC24B");
    EXPECT_EQ(hex(Palette::success), "#4FCB90");
    EXPECT_EQ(hex(Palette::danger), "#FF6B6B");
    EXPECT_EQ(hex(Palette::selection()), "#FF6B3D");
    EXPECT_NEAR(Palette::selection().alphaF(), 0.18, 0.001);
}

TEST(ThemeTest, radiiAndDistancesAreTheProductsOwn) {
    EXPECT_EQ(Radius::small, 6);
    EXPECT_EQ(Radius::control, 8);
    EXPECT_EQ(Radius::card, 12);
    EXPECT_EQ(Radius::panel, 16);
    EXPECT_EQ(Radius::pill, 999);
    EXPECT_EQ(Metric::hairline, 1);
    EXPECT_EQ(Metric::xs, 4);
    EXPECT_EQ(Metric::s, 8);
    EXPECT_EQ(Metric::m, 12);
    EXPECT_EQ(Metric::l, 16);
    EXPECT_EQ(Metric::xl, 24);
    EXPECT_EQ(Metric::xxl, 32);
    EXPECT_EQ(Metric::controlHeight, 30);
    EXPECT_EQ(Metric::controlHeightSmall, 24);
    EXPECT_EQ(Metric::motion, std::chrono::milliseconds(140));
}

TEST(ThemeTest, eachRoleOfTextHasItsFaceAndItsSize) {
    ASSERT_TRUE(FontRegistrar::isAvailable());
    const auto expect = [](const QFont& font, const char* family, int size) {
        EXPECT_EQ(font.family(), family);
        EXPECT_EQ(font.pixelSize(), size);
        EXPECT_EQ(QFontInfo(font).family(), family) << "and the face is there";
    };
    expect(BrandFont::screenTitle(), "Brenvik Display", 26);
    expect(BrandFont::sheetTitle(), "Brenvik Display", 19);
    expect(BrandFont::sectionTitle(), "Brenvik Text", 14);
    expect(BrandFont::rowTitle(), "Brenvik Text", 13);
    expect(BrandFont::bodyText(), "Brenvik Text", 13);
    expect(BrandFont::secondary(), "Brenvik Text", 12);
    expect(BrandFont::label(), "Brenvik Text", 11);
    expect(BrandFont::display(30), "Brenvik Display", 30);
    expect(BrandFont::body(9, QFont::DemiBold), "Brenvik Text", 9);
    EXPECT_EQ(BrandFont::body(9, QFont::DemiBold).weight(), QFont::DemiBold);
    EXPECT_EQ(BrandFont::mono(13).pixelSize(), 13);
    const QFontMetricsF mono(BrandFont::mono(13));
    EXPECT_EQ(mono.horizontalAdvance('i'), mono.horizontalAdvance('W'));
}

TEST(ThemeTest, eachEntryIconHasItsSymbol) {
    const std::map<std::int64_t, QString> symbols{{1, "globe"},
                                                  {2, "exclamationmark.triangle.fill"},
                                                  {3, "server.rack"},
                                                  {4, "wrench.and.screwdriver.fill"},
                                                  {5, "envelope.fill"},
                                                  {6, "gearshape.fill"},
                                                  {7, "note.text"},
                                                  {9, "person.crop.circle.fill"},
                                                  {10, "display"},
                                                  {11, "camera.fill"},
                                                  {12, "antenna.radiowaves.left.and.right"},
                                                  {13, "lock.fill"},
                                                  {15, "checkmark.seal.fill"},
                                                  {16, "creditcard.fill"},
                                                  {17, "printer.fill"},
                                                  {19, "envelope.badge.fill"},
                                                  {20, "terminal.fill"},
                                                  {21, "doc.text.fill"},
                                                  {22, "list.bullet.clipboard.fill"},
                                                  {24, "network"},
                                                  {25, "archivebox.fill"},
                                                  {27, "iphone"},
                                                  {29, "banknote.fill"},
                                                  {30, "shippingbox.fill"},
                                                  {34, "desktopcomputer"},
                                                  {36, "wifi"},
                                                  {37, "clock.fill"},
                                                  {43, "star.fill"},
                                                  {47, "externaldrive.fill"},
                                                  {48, "folder.fill"},
                                                  {49, "folder.fill.badge.plus"},
                                                  {50, "chart.bar.fill"},
                                                  {53, "checkmark.circle.fill"},
                                                  {60, "shield.lefthalf.filled"},
                                                  {62, "person.2.fill"},
                                                  {68, "car.fill"}};
    for (std::int64_t iconID = -2; iconID <= 80; ++iconID) {
        const auto own = symbols.find(iconID);
        EXPECT_EQ(EntryIcon::symbol(iconID), own == symbols.end() ? "key.fill" : own->second) << iconID;
    }
    for (const auto iconID : {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()})
        EXPECT_EQ(EntryIcon::symbol(iconID), "key.fill");
}

TEST(ThemeTest, anEntryIconsTintFollowsItsNumberWithoutTheSign) {
    const QColor tints[] = {Palette::accent, Palette::info, Palette::warn, Palette::success, Palette::textSoft};
    for (std::int64_t iconID = -12; iconID <= 12; ++iconID)
        EXPECT_EQ(EntryIcon::tint(iconID), tints[std::abs(iconID) % 5]) << iconID;
    EXPECT_EQ(EntryIcon::tint(std::numeric_limits<std::int64_t>::min()), Palette::success);  // 2^63 leaves 3
}

TEST(ThemeTest, aMissingFolderOfFontsIsReportedAndTheSystemsFontServes) {
    const QTemporaryDir empty;
    CaptureStdout();
    FontRegistrar::registerBundledFonts(empty.path());
    std::fflush(stdout);
    EXPECT_EQ(GetCapturedStdout(), "[Brenvik] Fonts directory missing from bundle — falling back to system fonts.\n");
    EXPECT_FALSE(FontRegistrar::isAvailable());
    EXPECT_NE(BrandFont::bodyText().family(), "Brenvik Text");
    EXPECT_EQ(BrandFont::bodyText().pixelSize(), 13);

    FontRegistrar::registerBundledFonts(QStringLiteral(BRENVIK_RESOURCES));
    EXPECT_TRUE(FontRegistrar::isAvailable());
}

/// The symbols' names that the program's sources spell: whatever has their dotted form, and the names that stand in
/// calls of what shows symbols.
std::map<QString, QString> symbolsInSources() {
    static const QRegularExpression dotted(R"re("([a-z][a-z0-9]*(?:\.[a-z0-9]+)+)")re");
    static const QRegularExpression called(
        R"re((?:IconButton|CopyButton|EmptyStateView|setSymbol|Symbol::\w+|[bB]adge|framed|\badd)\((?:[^;"]|"[^"]*"\)?,)*?)re"
        R"re(QStringLiteral\("([a-z][a-z0-9.]*)"\))re");
    static const QRegularExpression ofCommand(R"re(\.symbol = QStringLiteral\("([a-z][a-z0-9.]*)"\))re");
    std::map<QString, QString> names;
    QDirIterator sources(QStringLiteral(BRENVIK_SOURCES "/app/ui"), {"*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
    while (sources.hasNext()) {
        QFile file(sources.next());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        QString text;
        for (const auto& line : QString::fromUtf8(file.readAll()).split('\n'))
            if (!line.contains("ObjectName("))
                text += line + '\n';
        for (const auto* const pattern : {&dotted, &called, &ofCommand})
            for (auto found = pattern->globalMatch(text); found.hasNext();)
                names.emplace(found.next().captured(1), sources.fileName());
    }
    return names;
}

TEST(SymbolTest, eachNameThatTheSourcesSpellHasADrawing) {
    const auto names = symbolsInSources();
    for (const char* const known : {"eye", "eye.slash", "plus", "lock", "keyboard", "record.circle.fill", "car.fill"})
        EXPECT_TRUE(names.contains(known)) << known << " is not found, so that the search finds too little";
    const auto drawn = Symbol::names();
    for (const auto& [name, file] : names)
        EXPECT_TRUE(drawn.contains(name)) << qPrintable(name) << " in " << qPrintable(file);
}

TEST(SymbolTest, eachDrawingPaintsSomethingInTheColourAskedForAndWithinItsArea) {
    ASSERT_FALSE(Symbol::names().isEmpty());
    for (const auto& name : Symbol::names()) {
        QImage image(32, 32, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Symbol::paint(painter, QRectF(8, 8, 16, 16), name, Palette::accent);
        painter.end();
        bool isPainted = false;
        for (int y = 0; y < 32; ++y)
            for (int x = 0; x < 32; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                isPainted = isPainted || pixel.alpha() > 100;
                EXPECT_TRUE(pixel.alpha() == 0 || QRect(8, 8, 16, 16).contains(x, y)) << qPrintable(name);
                EXPECT_TRUE(pixel.alpha() < 255 || hex(pixel) == hex(Palette::accent)) << qPrintable(name);
            }
        EXPECT_TRUE(isPainted) << qPrintable(name);
    }
}

class StrengthMeterTest : public ::testing::Test {
protected:
    StrengthMeter meter;

    StrengthMeterTest() {
        meter.resize(300, meter.sizeHint().height());
        meter.show();
    }

    /// The colour of the bar at its beginning, once it stands still.
    QColor barColour() {
        QTest::qWait(260);
        return meter.grab().toImage().pixelColor(3, 2);
    }
};

TEST_F(StrengthMeterTest, eachScoreHasItsWordAndItsColour) {
    struct Row {
        const char* password;
        std::int64_t score;
        const char* label;
        QColor colour;
    };
    const Row rows[] = {{"AzecDs", 24, "Çok zayıf", Palette::danger},
                        {"mzdtkt", 25, "Zayıf", Palette::warn},
                        {"Db*#$gH#H", 49, "Zayıf", Palette::warn},
                        {"3H#4gc4T3", 50, "İyi", Palette::info},
                        {"JQfK84=332H9", 74, "İyi", Palette::info},
                        {"vacenuypoaaklrthxl", 75, "Güçlü", Palette::success},
                        {"&4TQKWH#bQ8L2H$", 89, "Güçlü", Palette::success},
                        {"zm2R5QWma2v7LHgLJ", 90, "Çok güçlü", Palette::success},
                        {"5Kc=WR4!aD7HT9%&", 100, "Çok güçlü", Palette::success}};
    for (const auto& row : rows) {
        ASSERT_EQ(PasswordGenerator::strength(row.password).score, row.score);
        meter.showStrengthOf(row.password);
        auto* const label = find<QLabel>(meter, row.label);
        ASSERT_NE(label, nullptr) << row.label;
        EXPECT_EQ(label->palette().color(QPalette::WindowText), row.colour);
        EXPECT_EQ(hex(barColour()), hex(row.colour));
    }
}

TEST_F(StrengthMeterTest, showsBitsInWholeNumbersAndCharactersAsAPersonCountsThem) {
    meter.showStrengthOf("AzecDs");  // 23.94 bits
    EXPECT_TRUE(shows(meter, "24 bit entropi"));
    EXPECT_TRUE(shows(meter, "6 karakter"));
    meter.showStrengthOf("mzdtkt");  // 25.15 bits
    EXPECT_TRUE(shows(meter, "25 bit entropi"));
    meter.showStrengthOf("şifre👨‍👩‍👧");
    EXPECT_TRUE(shows(meter, "6 karakter"));
}

TEST_F(StrengthMeterTest, anEmptyPasswordHasNoStrengthAndAnEmptyBar) {
    meter.showStrengthOf("");
    EXPECT_TRUE(shows(meter, "Çok zayıf"));
    EXPECT_TRUE(shows(meter, "0 bit entropi"));
    EXPECT_TRUE(shows(meter, "0 karakter"));
    EXPECT_EQ(hex(barColour()), hex(Palette::line)) << "the track alone";
}

TEST_F(StrengthMeterTest, aFullBarReachesTheEnd) {
    meter.showStrengthOf("5Kc=WR4!aD7HT9%&");
    QTest::qWait(260);
    EXPECT_EQ(hex(meter.grab().toImage().pixelColor(296, 2)), hex(Palette::success));
    meter.showStrengthOf("3H#4gc4T3");
    QTest::qWait(260);
    const QImage half = meter.grab().toImage();
    EXPECT_EQ(hex(half.pixelColor(145, 2)), hex(Palette::info));
    EXPECT_EQ(hex(half.pixelColor(156, 2)), hex(Palette::line));
}

}  // namespace
