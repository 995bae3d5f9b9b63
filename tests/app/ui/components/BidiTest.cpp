// SPDX-License-Identifier: MIT
#include "app/ui/components/Bidi.h"

#include <gtest/gtest.h>

namespace {

const QString fsi(QChar(0x2068));
const QString pdi(QChar(0x2069));
const QString arabic = QStringLiteral("ملاحظات");

TEST(BidiTest, aTextThatTurnsNothingStaysAsItIs) {
    for (const auto* const text : {"", "GitHub", "Ekşi Sözlük — 12 (ş)", "🗓️ takvim"})
        EXPECT_EQ(Bidi::isolated(QString::fromUtf8(text)), QString::fromUtf8(text));
}

TEST(BidiTest, aTextFromRightToLeftStandsBetweenMarks) {
    EXPECT_EQ(Bidi::isolated(arabic), fsi + arabic + pdi);
    EXPECT_EQ(Bidi::isolated(QStringLiteral("𐤀")), fsi + QStringLiteral("𐤀") + pdi) << "beyond the first plane too";
}

TEST(BidiTest, whatATextOpensEndsWithIt) {
    const QString override = QStringLiteral("a\u202Eb");
    EXPECT_EQ(Bidi::isolated(override), fsi + override + pdi) << "an isolate's end ends overrides in it";
    const QString opened = QStringLiteral("a\u2067b");
    EXPECT_EQ(Bidi::isolated(opened), fsi + opened + pdi + pdi);
}

TEST(BidiTest, noMarkInATextEndsItsIsolation) {
    EXPECT_EQ(Bidi::isolated(QStringLiteral("a\u2069\u202Eb")), fsi + QStringLiteral("a\u202Eb") + pdi);
    EXPECT_EQ(Bidi::isolated(QStringLiteral("a\u2067b\u2069\u2069c")), fsi + QStringLiteral("a\u2067b\u2069c") + pdi);
}

TEST(BidiTest, eachQuotedNameOfASentenceIsIsolated) {
    const QString evil = QStringLiteral("a\u202Eb");
    EXPECT_EQ(Bidi::withQuotesIsolated(QStringLiteral("“") + evil + QStringLiteral("” zaten var.")),
              QStringLiteral("“") + fsi + evil + pdi + QStringLiteral("” zaten var."));
    EXPECT_EQ(Bidi::withQuotesIsolated(QStringLiteral("“") + arabic + QStringLiteral("” ile “b” ve “ açık")),
              QStringLiteral("“") + fsi + arabic + pdi + QStringLiteral("” ile “b” ve “ açık"));
    EXPECT_EQ(Bidi::withQuotesIsolated(QStringLiteral("“b” zaten var.")), QStringLiteral("“b” zaten var."));
}

}  // namespace
