// SPDX-License-Identifier: MIT
// How the text of a profile file is read and changed. profilefile_test.cpp has locks, links and permissions.

#include "platform/files/profilefixture.h"
#include "support/strings.h"

namespace sixtrace::test {
namespace {

TEST_F(ProfileFile, MissingFileSectionOrKeyGivesTheFallback) {
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    put("[A]\nk=1\n");
    EXPECT_EQ(get(u"B"_s, u"k"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
}

TEST_F(ProfileFile, AnEmptyValueGivesTheFallback) {
    put("[A]\nk=\nj=   \nq=\"\"\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
    EXPECT_EQ(get(u"A"_s, u"q"_s), u"fallback"_s);
}

TEST_F(ProfileFile, SectionsAndKeysCompareWithoutCase) {
    put("[LineColor]\nCh1=255\n");
    EXPECT_EQ(get(u"LINECOLOR"_s, u"cH1"_s), u"255"_s);
}

TEST_F(ProfileFile, BlanksAroundEverythingAreDropped) {
    put("  [ A ]  \n \t key one \t = \t two words \t\n");
    EXPECT_EQ(get(u"A"_s, u"key one"_s), u"two words"_s);
}

TEST_F(ProfileFile, OnePairOfQuotesAroundAValueIsDropped) {
    put("[A]\na=\"  x  \"\nb='y'\nc=\"\"z\"\"\nd=\"half\ne=\"mixed'\nf=\"\n");
    EXPECT_EQ(get(u"A"_s, u"a"_s), u"  x  "_s);
    EXPECT_EQ(get(u"A"_s, u"b"_s), u"y"_s);
    EXPECT_EQ(get(u"A"_s, u"c"_s), u"\"z\""_s);
    EXPECT_EQ(get(u"A"_s, u"d"_s), u"\"half"_s);
    EXPECT_EQ(get(u"A"_s, u"e"_s), u"\"mixed'"_s);
    EXPECT_EQ(get(u"A"_s, u"f"_s), u"\""_s);
}

TEST_F(ProfileFile, CommentsAreNoKeys) {
    put("[A]\n;k=1\n  ; k=2\nk=3 ; still the value\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"3 ; still the value"_s);
    EXPECT_EQ(get(u"A"_s, u";k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, TheFirstKeyOfTheFirstSectionOfThatNameCounts) {
    put("[A]\nk=1\nk=2\n[B]\nk=3\n[A]\nk=4\nj=5\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"fallback"_s);
}

TEST_F(ProfileFile, KeysBeforeAnySectionBelongToNone) {
    put("k=1\n[A]\nj=2\n");
    EXPECT_EQ(get(u""_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, ValuesMayHoldEqualSignsAndBackslashes) {
    put("[A]\nk=a=b\\c, d%20\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"a=b\\c, d%20"_s);
}

TEST_F(ProfileFile, DosLineEndsAndALastLineWithoutEndAreRead) {
    put("[A]\r\nk=1\r\nj=2");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"2"_s);
}

TEST_F(ProfileFile, AByteOrderMarkIsTolerated) {
    put("\xEF\xBB\xBF[A]\nk=\xE4\xB8\xAD\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"\u4E2D"_s);
}

TEST_F(ProfileFile, ValueOfExactly127CharactersSurvives) {
    const QString value(127, u'x');
    put("[A]\nk=" + value.toUtf8() + "\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), value);
}

TEST_F(ProfileFile, ValueOf128CharactersIsCutTo127) {
    put("[A]\nk=" + QByteArray(127, 'x') + "y\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(127, u'x'));
}

TEST_F(ProfileFile, CharactersAreCountedNotBytes) {
    put("[A]\nk=" + QString(130, u'\u4E2D').toUtf8() + "\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(127, u'\u4E2D'));
}

TEST_F(ProfileFile, BytesOfAnyKindAreRead) {
    put(QByteArray("[A\n\x00\xFF\xFE=\n]\n[]\n=\n[A]\nk=\xFF\n", 24));
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(QChar(QChar::ReplacementCharacter)));
}

TEST_F(ProfileFile, AValueIsNotCutInsideACharacter) {
    // 126 characters, then a character of two UTF-16 units, the first of which would be number 127.
    put("[A]\nk=" + QByteArray(126, 'x') + "\xF0\x9F\x98\x80\nj=" + QByteArray(125, 'x') + "\xF0\x9F\x98\x80z\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), QString(126, u'x'));
    EXPECT_EQ(get(u"A"_s, u"j"_s), QString(125, u'x') + u"\U0001F600"_s);
}

TEST_F(ProfileFile, ReadingAndWritingSeeTheSameSections) {
    // A no-break space, an ideographic space, and a byte-order mark after blanks.
    for (const QByteArray start : {"\xC2\xA0", "\xE3\x80\x80", " \xEF\xBB\xBF", "\xEF\xBB\xBF"}) {
        put("[B]\ni=0\n" + start + "[A]\nk=1\n" + start + ";j=2\n");
        ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
        EXPECT_EQ(get(u"A"_s, u"k"_s), u"2"_s) << start.toHex().toStdString();
        ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
        EXPECT_EQ(get(u"A"_s, u"j"_s), u"3"_s) << start.toHex().toStdString();
        ASSERT_TRUE(set(u"B"_s, u"k"_s, u"4"_s));
        EXPECT_EQ(get(u"B"_s, u"k"_s), u"4"_s) << start.toHex().toStdString();
    }
}

TEST_F(ProfileFile, TheLineThatTheLimitCutsIsNotRead) {
    // 4 + 1048560 bytes and the 12 bytes up to "k=1" are 1 MiB, so "k=12" is cut after "k=1".
    put("[A]\n;" + QByteArray(1048560 - 1, 'x') + "\nj=8\nabc\nk=12\n");
    EXPECT_EQ(get(u"A"_s, u"j"_s), u"8"_s);
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, AFirstWriteMakesTheFile) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"1"_s));
    EXPECT_EQ(content(), "[A]\nk=1\n");
}

TEST_F(ProfileFile, CommentsOrderAndForeignLinesAreKept) {
    put("; head\n\n[A]\n; about k\nk = 1\njunk\nj=2\n\n[B]\nk=3\n; tail\n");
    ASSERT_TRUE(set(u"a"_s, u"K"_s, u"9"_s));
    EXPECT_EQ(content(), "; head\n\n[A]\n; about k\nK=9\njunk\nj=2\n\n[B]\nk=3\n; tail\n");
}

TEST_F(ProfileFile, ANewKeyGoesBehindTheLastLineOfItsSection) {
    put("[A]\nk=1\n\n[B]\nk=2\n");
    ASSERT_TRUE(set(u"A"_s, u"new"_s, u"x"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nnew=x\n\n[B]\nk=2\n");
    ASSERT_TRUE(set(u"B"_s, u"last"_s, u"y"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nnew=x\n\n[B]\nk=2\nlast=y\n");
}

TEST_F(ProfileFile, ANewSectionGoesToTheEndOnALineOfItsOwn) {
    put("[A]\nk=1");
    ASSERT_TRUE(set(u"B"_s, u"j"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nk=1\n[B]\nj=2\n");
}

TEST_F(ProfileFile, ANewKeyBehindALastLineWithoutEndGetsALineOfItsOwn) {
    put("[A]\nk=1");
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nk=1\nj=2\n");
}

TEST_F(ProfileFile, DosLineEndsAreKept) {
    put("[A]\r\nk=1\r\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
    ASSERT_TRUE(set(u"B"_s, u"i"_s, u"4"_s));
    EXPECT_EQ(content(), "[A]\r\nk=2\r\nj=3\r\n[B]\r\ni=4\r\n");
}

TEST_F(ProfileFile, ALastLineWithoutAnEndOfADosFileIsReplacedWithoutALoneCarriageReturn) {
    put("[A]\r\nj=1\r\nk=1");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\r\nj=1\r\nk=2");
    ASSERT_TRUE(set(u"A"_s, u"j"_s, u"3"_s));
    EXPECT_EQ(content(), "[A]\r\nj=3\r\nk=2");
    ASSERT_TRUE(set(u"A"_s, u"i"_s, u"4"_s));
    EXPECT_EQ(content(), "[A]\r\nj=3\r\nk=2\r\ni=4\r\n");
}

TEST_F(ProfileFile, ACarriageReturnAtTheVeryEndBecomesALineEndOnce) {
    put("[A]\nj=1\r");
    ASSERT_TRUE(set(u"B"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\n[B]\r\nk=2\r\n");
    ASSERT_TRUE(set(u"B"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\n[B]\r\nk=2\r\n");
    put("[A]\nj=1\r");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "[A]\nj=1\r\nk=2\r\n");
}

TEST_F(ProfileFile, TheByteOrderMarkIsKept) {
    put("\xEF\xBB\xBF[A]\nk=1\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"2"_s));
    EXPECT_EQ(content(), "\xEF\xBB\xBF[A]\nk=2\n");
}

TEST_F(ProfileFile, OnlyTheFirstOfTwoEqualKeysIsReplaced) {
    put("[A]\nk=1\nk=2\n[A]\nk=3\n");
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"9"_s));
    EXPECT_EQ(content(), "[A]\nk=9\nk=2\n[A]\nk=3\n");
}

TEST_F(ProfileFile, LineEndsInAValueAreWrittenAsBlanks) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"1\n[B]\r\nk=2"_s));
    EXPECT_EQ(content(), "[A]\nk=1 [B]  k=2\n");
    EXPECT_EQ(get(u"B"_s, u"k"_s), u"fallback"_s);
}

TEST_F(ProfileFile, WhatIsWrittenIsReadBack) {
    for (const QString& value : {u"16776960"_s, u"\u4E2D\u6587"_s, u"C:\\a\\b.bin"_s, u"-1"_s, u"a=b;c"_s}) {
        ASSERT_TRUE(set(u"Some section"_s, u"key"_s, value));
        EXPECT_EQ(get(u"Some section"_s, u"key"_s), value);
    }
}

TEST_F(ProfileFile, QuotesAroundAValueAreWrittenAndLostOnReading) {
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"\"quoted\""_s));
    EXPECT_EQ(content(), "[A]\nk=\"quoted\"\n");
    EXPECT_EQ(get(u"A"_s, u"k"_s), u"quoted"_s);
}

} // namespace
} // namespace sixtrace::test
