// SPDX-License-Identifier: MIT
#include "core/autotype/AutoTypeSequence.h"

#include <gmock/gmock.h>

#include <ostream>

using testing::ElementsAre;
using testing::IsEmpty;

using Action = AutoTypeAction;

std::ostream& operator<<(std::ostream& out, const AutoTypeAction& action) {
    if (const auto* text = std::get_if<Action::Text>(&action.action))
        return out << "text \"" << text->view() << '"';
    if (const auto* key = std::get_if<Action::Key>(&action.action))
        return out << "key " << keyCode(key->key);
    if (const auto* delay = std::get_if<Action::Delay>(&action.action))
        return out << "delay " << delay->milliseconds;
    return out << "clearField";
}

namespace {

KdbxEntry bank() {
    KdbxEntry entry;
    entry.title = "Banka";
    entry.username = "ayşe";
    entry.password = SecureString("g{TAB}ç");
    entry.url = "https://banka.com.tr/giriş";
    entry.notes = "iki\nsatır";
    entry.customFields["PIN"] = "1234";
    entry.customFields["Şube Kodu"] = "57";
    return entry;
}

std::vector<AutoTypeAction> parse(std::string_view sequence) {
    return AutoTypeSequence::parse(sequence, bank());
}

}  // namespace

TEST(AutoTypeSequenceTest, hasADefault) {
    EXPECT_EQ(AutoTypeSequence::defaultSequence, "{USERNAME}{TAB}{PASSWORD}{ENTER}");
}

TEST(AutoTypeSequenceTest, givesAnEmptyListForAnEmptySequence) {
    EXPECT_THAT(parse(""), IsEmpty());
}

TEST(AutoTypeSequenceTest, typesPlainCharactersAsOneText) {
    EXPECT_THAT(parse("Merhaba dünya"), ElementsAre(Action::text("Merhaba dünya")));
}

TEST(AutoTypeSequenceTest, givesPlusCaretPercentAndTildeNoMeaning) {
    EXPECT_THAT(parse("+a^b%c~d(e)[f]"), ElementsAre(Action::text("+a^b%c~d(e)[f]")));
}

TEST(AutoTypeSequenceTest, typesAnEmptyTokenLiterally) {
    EXPECT_THAT(parse("{}"), ElementsAre(Action::text("{}")));
}

TEST(AutoTypeSequenceTest, typesEscapedBraces) {
    EXPECT_THAT(parse("{{}"), ElementsAre(Action::text("{")));
    EXPECT_THAT(parse("{}}"), ElementsAre(Action::text("}")));
    EXPECT_THAT(parse("{{}{}}"), ElementsAre(Action::text("{}")));
    EXPECT_THAT(parse("a{{}b{}}c"), ElementsAre(Action::text("a{b}c")));
}

TEST(AutoTypeSequenceTest, typesABraceThatNothingClosesAndTheRestLiterally) {
    EXPECT_THAT(parse("a{"), ElementsAre(Action::text("a{")));
    EXPECT_THAT(parse("{abc"), ElementsAre(Action::text("{abc")));
    EXPECT_THAT(parse("{TAB}{ENTER"), ElementsAre(Action::key(AutoTypeKey::tab), Action::text("{ENTER")));
    EXPECT_THAT(parse("{{"), ElementsAre(Action::text("{{")));
}

TEST(AutoTypeSequenceTest, typesAClosingBraceOutsideATokenAsItself) {
    EXPECT_THAT(parse("a}b"), ElementsAre(Action::text("a}b")));
    EXPECT_THAT(parse("}{TAB}}"), ElementsAre(Action::text("}"), Action::key(AutoTypeKey::tab), Action::text("}")));
}

TEST(AutoTypeSequenceTest, closesATokenAtTheFirstClosingBrace) {
    EXPECT_THAT(parse("{a{b}"), ElementsAre(Action::text("{a{b}")));
    EXPECT_THAT(parse("{a{TAB}"), ElementsAre(Action::text("{a{TAB}")));
    EXPECT_THAT(parse("{{TAB}}"), ElementsAre(Action::text("{{TAB}}")));
}

TEST(AutoTypeSequenceTest, typesAnUnknownPlaceholderLiterallyWithinItsText) {
    EXPECT_THAT(parse("{FOO}"), ElementsAre(Action::text("{FOO}")));
    EXPECT_THAT(parse("x{FOO}{USERNAME}y"), ElementsAre(Action::text("x{FOO}ayşey")));
    EXPECT_THAT(parse("{ TAB}"), ElementsAre(Action::text("{ TAB}")));
    EXPECT_THAT(parse("{S}"), ElementsAre(Action::text("{S}")));
}

TEST(AutoTypeSequenceTest, hasNoRepetition) {
    EXPECT_THAT(parse("{TAB 3}"), ElementsAre(Action::text("{TAB 3}")));
}

TEST(AutoTypeSequenceTest, putsInTheEntrysFields) {
    EXPECT_THAT(parse("{USERNAME}"), ElementsAre(Action::text("ayşe")));
    EXPECT_THAT(parse("{URL}"), ElementsAre(Action::text("https://banka.com.tr/giriş")));
    EXPECT_THAT(parse("{TITLE}"), ElementsAre(Action::text("Banka")));
    EXPECT_THAT(parse("{NOTES}"), ElementsAre(Action::text("iki\nsatır")));
}

TEST(AutoTypeSequenceTest, doesNotReadTokensInWhatItPutsIn) {
    EXPECT_THAT(parse("{PASSWORD}"), ElementsAre(Action::text("g{TAB}ç")));
}

TEST(AutoTypeSequenceTest, joinsAFieldWithTheTextAroundIt) {
    EXPECT_THAT(parse("x{USERNAME}y"), ElementsAre(Action::text("xayşey")));
}

TEST(AutoTypeSequenceTest, namesTwelveKeys) {
    EXPECT_THAT(
        parse("{TAB}{ENTER}{ESC}{SPACE}{BACKSPACE}{DELETE}{HOME}{END}{UP}{DOWN}{LEFT}{RIGHT}"),
        ElementsAre(Action::key(AutoTypeKey::tab), Action::key(AutoTypeKey::enter), Action::key(AutoTypeKey::escape),
                    Action::key(AutoTypeKey::space), Action::key(AutoTypeKey::backspace),
                    Action::key(AutoTypeKey::forwardDelete), Action::key(AutoTypeKey::home),
                    Action::key(AutoTypeKey::end), Action::key(AutoTypeKey::up), Action::key(AutoTypeKey::down),
                    Action::key(AutoTypeKey::left), Action::key(AutoTypeKey::right)));
}

TEST(AutoTypeSequenceTest, clearsTheField) {
    EXPECT_THAT(parse("a{CLEARFIELD}b"), ElementsAre(Action::text("a"), Action::clearField(), Action::text("b")));
}

TEST(AutoTypeSequenceTest, givesFourActionsForTheDefault) {
    EXPECT_THAT(parse("{USERNAME}{TAB}{PASSWORD}{ENTER}"),
                ElementsAre(Action::text("ayşe"), Action::key(AutoTypeKey::tab), Action::text("g{TAB}ç"),
                            Action::key(AutoTypeKey::enter)));
}

TEST(AutoTypeSequenceTest, givesNoTextForAnEmptyField) {
    KdbxEntry entry;
    entry.password = SecureString("p");

    EXPECT_THAT(AutoTypeSequence::parse("{USERNAME}{TAB}{PASSWORD}{ENTER}", entry),
                ElementsAre(Action::key(AutoTypeKey::tab), Action::text("p"), Action::key(AutoTypeKey::enter)));
    EXPECT_THAT(AutoTypeSequence::parse("{USERNAME}", entry), IsEmpty());
}

TEST(AutoTypeSequenceTest, ignoresLetterCaseInPlaceholders) {
    EXPECT_EQ(parse("{username}"), parse("{USERNAME}"));
    EXPECT_EQ(parse("{UserName}"), parse("{USERNAME}"));
    EXPECT_EQ(parse("{clearField}{esc}{s:PIN}{delay 5}"), parse("{CLEARFIELD}{ESC}{S:PIN}{DELAY 5}"));
}

TEST(AutoTypeSequenceTest, raisesLettersWithNoLanguagesExceptions) {
    EXPECT_EQ(parse("{title}"), parse("{TITLE}"));
    EXPECT_EQ(parse("{tıtle}"), parse("{TITLE}"));
    EXPECT_THAT(parse("{TİTLE}"), ElementsAre(Action::text("{TİTLE}")));
}

TEST(AutoTypeSequenceTest, putsInACustomField) {
    EXPECT_THAT(parse("{S:PIN}"), ElementsAre(Action::text("1234")));
    EXPECT_THAT(parse("{S:Şube Kodu}"), ElementsAre(Action::text("57")));
    EXPECT_THAT(parse("a{S:PIN}b"), ElementsAre(Action::text("a1234b")));
}

TEST(AutoTypeSequenceTest, findsACustomFieldInAnotherSpellingOfItsName) {
    EXPECT_THAT(parse("{S:S\xCC\xA7ube Kodu}"), ElementsAre(Action::text("57")));
}

TEST(AutoTypeSequenceTest, findsACustomFieldWithoutRegardToLetterCase) {
    EXPECT_THAT(parse("{S:pin}"), ElementsAre(Action::text("1234")));
    EXPECT_THAT(parse("{S:şube kodu}"), ElementsAre(Action::text("57")));
    EXPECT_THAT(parse("{S:s\xCC\xA7UBE kODU}"), ElementsAre(Action::text("57")));
}

TEST(AutoTypeSequenceTest, prefersTheCustomFieldOfTheExactName) {
    auto entry = bank();
    entry.customFields["pin"] = "tam";

    EXPECT_THAT(AutoTypeSequence::parse("{S:pin}", entry), ElementsAre(Action::text("tam")));
    EXPECT_THAT(AutoTypeSequence::parse("{S:PIN}", entry), ElementsAre(Action::text("1234")));
}

TEST(AutoTypeSequenceTest, typesNothingForAnUnknownCustomField) {
    EXPECT_THAT(parse("{S:NoSuchField}"), IsEmpty());
    EXPECT_THAT(parse("a{S:NoSuchField}b"), ElementsAre(Action::text("ab")));
    EXPECT_THAT(parse("{S:}"), IsEmpty());
    EXPECT_THAT(parse("{S: PIN}"), IsEmpty());
}

TEST(AutoTypeSequenceTest, looksForCustomFieldsAmongCustomFieldsAlone) {
    EXPECT_THAT(parse("{S:Title}"), IsEmpty());
    EXPECT_THAT(parse("{S:UserName}"), IsEmpty());
}

TEST(AutoTypeSequenceTest, pausesForMilliseconds) {
    for (const auto* sequence :
         {"{DELAY 500}", "{delay=500}", "{DELAY = 500}", "{DELAY500}", "{DELAY == 500}", "{DELAY +500}", "{DELAY 0500}",
          "{DELAY 500 }", "{DELAY=\t500\t}", "{DELAY 500\u00A0}"})
        EXPECT_THAT(parse(sequence), ElementsAre(Action::delay(500))) << sequence;
}

TEST(AutoTypeSequenceTest, pausesForNoTimeAndForAllTime) {
    EXPECT_THAT(parse("{DELAY 0}"), ElementsAre(Action::delay(0)));
    EXPECT_THAT(parse("{DELAY -0}"), ElementsAre(Action::delay(0)));
    EXPECT_THAT(parse("{DELAY 9223372036854775807}"), ElementsAre(Action::delay(9223372036854775807)));
}

TEST(AutoTypeSequenceTest, typesAPauseWithoutANumberLiterally) {
    for (const std::string sequence :
         {"{DELAY}",   "{DELAY }",    "{DELAY=}",    "{DELAY = = }", "{DELAY \t}",  "{DELAY x}",
          "{DELAYED}", "{DELAY -5}",  "{DELAY 5x}",  "{DELAY 5 0}",  "{DELAY 0x5}", "{DELAY 1.5}",
          "{DELAY +}", "{DELAY -}",   "{DELAY +-5}", "{DELAY --5}",  "{DELAY ++5}", "{DELAY 9223372036854775808}",
          "{DELAY ٥}", "{DELAY 5\n}", "{DELAY\t= 5}"})
        EXPECT_THAT(parse(sequence), ElementsAre(Action::text(sequence))) << sequence;
}

TEST(AutoTypeSequenceTest, takesABraceWithACombiningMarkForNoBrace) {
    EXPECT_THAT(parse("{\xCC\x81TAB}"), ElementsAre(Action::text("{\xCC\x81TAB}")));
    EXPECT_THAT(parse("{TAB}\xCC\x81"), ElementsAre(Action::text("{TAB}\xCC\x81")));
}

TEST(AutoTypeSequenceTest, takesAColonWithACombiningMarkForNoColon) {
    EXPECT_THAT(parse("{S:\xCC\x81PIN}"), ElementsAre(Action::text("{S:\xCC\x81PIN}")));
}

TEST(AutoTypeSequenceTest, parsesALongSequenceOfOpenBracesOnce) {
    const std::string braces(200'000, '{');

    EXPECT_THAT(parse(braces), ElementsAre(Action::text(braces)));
}

TEST(AutoTypeActionTest, comparesTextsByCanonicalEquivalence) {
    EXPECT_EQ(Action::text("ş"), Action::text("s\xCC\xA7"));
    EXPECT_NE(Action::text("ş"), Action::text("s"));
    EXPECT_NE(Action::text("a"), Action::clearField());
    EXPECT_NE(Action::delay(1), Action::delay(2));
    EXPECT_NE(Action::key(AutoTypeKey::tab), Action::key(AutoTypeKey::up));
    EXPECT_EQ(Action::clearField(), Action::clearField());
}

TEST(AutoTypeKeyTest, hasACode) {
    const std::vector<std::pair<AutoTypeKey, int>> cases{
        {AutoTypeKey::tab, 48},   {AutoTypeKey::enter, 36},     {AutoTypeKey::escape, 53},
        {AutoTypeKey::space, 49}, {AutoTypeKey::backspace, 51}, {AutoTypeKey::forwardDelete, 117},
        {AutoTypeKey::home, 115}, {AutoTypeKey::end, 119},      {AutoTypeKey::up, 126},
        {AutoTypeKey::down, 125}, {AutoTypeKey::left, 123},     {AutoTypeKey::right, 124}};
    for (const auto& [key, code] : cases)
        EXPECT_EQ(keyCode(key), code);
}
